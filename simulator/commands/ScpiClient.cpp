#include "simulator/commands/ScpiClient.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <new>

#include "simulator/scpi/AsciiCase.h"

namespace krv::simulator {
namespace {

// The longest block that isn't a waveform.
constexpr std::uint32_t MaxBlockBytes = 65536;

struct Unit {
    std::string_view name;
    double factor;
};

constexpr std::array<Unit, 5> FrequencyUnits{
    {{"", 1}, {"HZ", 1}, {"KHZ", 1e3}, {"MHZ", 1e6}, {"GHZ", 1e9}}};
constexpr std::array<Unit, 2> LevelUnits{{{"", 1}, {"DBM", 1}}};
constexpr std::array<Unit, 1> NoUnits{{{"", 1}}};

std::optional<double> ParseNumber(std::string_view text, std::span<const Unit> units) {
    text.remove_prefix(text.starts_with('+') ? 1 : 0);
    double value = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, failure] = std::from_chars(text.data(), end, value);
    if (failure != std::errc() || !std::isfinite(value)) {
        return std::nullopt;
    }
    std::string_view rest(stop, static_cast<std::size_t>(end - stop));
    rest.remove_prefix(rest.starts_with(' ') ? 1 : 0);
    for (const Unit& unit : units) {
        if (EqualAnyCase(unit.name, rest)) {
            return value * unit.factor;
        }
    }
    return std::nullopt;
}

// Numbers may be written with a fraction or an exponent wherever they stand. What is beyond 32 bit
// is beyond the range of any parameter, too.
std::optional<std::int32_t> ParseInteger(std::string_view text) {
    const auto number = ParseNumber(text, NoUnits);
    if (!number) {
        return std::nullopt;
    }
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(
        std::clamp<double>(std::nearbyint(*number), Limits::min(), Limits::max()));
}

std::optional<bool> ParseBoolean(std::string_view text) {
    if (EqualAnyCase(text, "ON") || EqualAnyCase(text, "OFF")) {
        return text.size() == 2;
    }
    const auto number = ParseInteger(text);
    return number ? std::optional(*number != 0) : std::nullopt;
}

std::optional<Argument> ParseText(ParameterKind kind, std::string_view text) {
    if (kind == ParameterKind::Name || kind == ParameterKind::Word) {
        return Argument(std::string(text));
    }
    if (kind == ParameterKind::Integer) {
        if (const auto value = ParseInteger(text)) {
            return Argument(*value);
        }
    } else if (kind == ParameterKind::Boolean) {
        if (const auto value = ParseBoolean(text)) {
            return Argument(*value);
        }
    } else if (kind == ParameterKind::Frequency || kind == ParameterKind::Level) {
        const auto units = kind == ParameterKind::Level ? std::span<const Unit>(LevelUnits)
                                                        : std::span<const Unit>(FrequencyUnits);
        if (const auto value = ParseNumber(text, units)) {
            return Argument(*value);
        }
    }
    return std::nullopt;
}

}  // namespace

std::optional<Faults::Outgoing> ScpiClient::TakeReply() {
    if (m_replies.empty()) {
        return std::nullopt;
    }
    Faults::Outgoing reply = std::move(m_replies.front());
    m_replies.pop_front();
    m_waitingBytes -= reply.text.size();
    return reply;
}

void ScpiClient::Clear() {
    m_parser.Clear();
    ClearUnit();
    m_path.clear();
    m_reply.reset();
    m_isDeadlocked = false;
    m_replies.clear();
    m_waitingBytes = 0;
}

bool ScpiClient::OnHeader(std::string_view header) {
    ClearUnit();
    m_command = FindCommand(ResolveHeader(header));
    if (m_command == nullptr) {
        Report(CommandFailure(ScpiError::UndefinedHeader, std::string(header)));
    }
    return m_command != nullptr;
}

std::string ScpiClient::ResolveHeader(std::string_view header) {
    if (header.starts_with('*')) {
        return std::string(header);
    }
    std::string full =
        header.starts_with(':') ? std::string(header.substr(1)) : m_path + std::string(header);
    const auto lastColon = full.rfind(':');
    m_path = lastColon == std::string::npos ? std::string() : full.substr(0, lastColon + 1);
    return full;
}

std::optional<ParameterKind> ScpiClient::NextKind() {
    if (m_failure) {
        return std::nullopt;
    }
    if (m_arguments.size() == m_command->parameters.size()) {
        NoteFailure(ScpiError::ParameterNotAllowed);
        return std::nullopt;
    }
    return m_command->parameters[m_arguments.size()].kind;
}

void ScpiClient::OnText(std::string_view text) {
    const auto kind = NextKind();
    if (!kind) {
        return;
    }
    if (*kind == ParameterKind::Name && text.find(' ') != std::string_view::npos) {
        NoteFailure(ScpiError::InvalidSeparator);
    } else if (auto argument = ParseText(*kind, text)) {
        m_arguments.push_back(std::move(*argument));
    } else {
        NoteFailure(ScpiError::DataTypeError, std::string(text));
    }
}

void ScpiClient::OnString(std::string_view text) {
    const auto kind = NextKind();
    if (!kind) {
        return;
    }
    if (*kind == ParameterKind::Name || *kind == ParameterKind::String) {
        m_arguments.emplace_back(std::string(text));
    } else {
        NoteFailure(ScpiError::DataTypeError, std::string(text));
    }
}

void ScpiClient::OnBlockStart(std::uint32_t length) {
    const auto kind = NextKind();
    if (!kind) {
        return;
    }
    if (*kind == ParameterKind::Block) {
        BeginBytes(length);
    } else if (*kind != ParameterKind::Codes) {
        NoteFailure(ScpiError::DataTypeError, "block data");
    } else if (length % sizeof(std::int16_t) != 0) {
        NoteFailure(ScpiError::InvalidBlockData, "a code has two bytes");
    } else {
        ReserveBlock(length);
    }
}

void ScpiClient::ReserveBlock(std::uint32_t length) {
    const std::uint64_t codes = length / sizeof(std::int16_t);
    const auto& name = std::get<std::string>(m_arguments.front());
    const std::lock_guard lock(m_generator->Mutex());
    std::uint64_t codesPerPoint = m_command->codesPerPoint;
    if (codesPerPoint == 0) {
        const Waveform* const waveform = m_generator->Memory().Find(name);
        codesPerPoint = waveform != nullptr ? waveform->CodesPerPoint() : 1;
    }
    const std::uint64_t points = (codes + codesPerPoint - 1) / codesPerPoint;
    if (m_generator->ActiveFaults().RefusesData() ||
        !m_generator->Memory().Reserve(m_reservation, name, points)) {
        NoteFailure(ScpiError::OutOfMemory);
        return;
    }
    try {
        m_block.emplace(length);
    } catch (const std::bad_alloc&) {
        NoteFailure(ScpiError::OutOfMemory);
    }
}

void ScpiClient::BeginBytes(std::uint32_t length) {
    if (length > MaxBlockBytes) {
        NoteFailure(ScpiError::TooMuchData, "at most 65536 bytes");
    } else {
        m_bytes.emplace();
    }
}

void ScpiClient::OnBlockData(std::span<const std::byte> bytes) {
    if (m_bytes) {
        m_bytes->append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    }
    if (!m_block) {
        return;
    }
    try {
        m_block->Append(bytes);
    } catch (const std::bad_alloc&) {
        m_block.reset();
        NoteFailure(ScpiError::OutOfMemory);
    }
}

void ScpiClient::OnBlockEnd() {
    if (m_bytes) {
        m_arguments.emplace_back(std::move(*m_bytes));
        m_bytes.reset();
    }
    if (m_block) {
        m_arguments.emplace_back(m_block->TakeCodes());
        m_block.reset();
    }
}

void ScpiClient::OnUnitEnd() {
    const auto given = m_arguments.size();
    const auto& parameters = m_command->parameters;
    if (!m_failure && given < parameters.size() && !parameters[given].optional) {
        NoteFailure(ScpiError::MissingParameter);
    }
    if (m_failure) {
        Report(*m_failure);
    } else {
        RunCommand();
    }
    ClearUnit();
}

void ScpiClient::RunCommand() {
    CommandContext context(*m_generator, m_arguments, m_reply.has_value());
    try {
        const std::lock_guard lock(m_generator->Mutex());
        if (!m_command->keepsLocal) {
            m_generator->SetRemote(true);
        }
        m_command->run(context);
    } catch (const CommandFailure& failure) {
        Report(failure);
    } catch (const std::bad_alloc&) {
        Report(CommandFailure(ScpiError::OutOfMemory));
    }
    if (const auto& reply = context.GivenReply(); reply && !m_isDeadlocked) {
        AddReply(*reply);
    }
}

void ScpiClient::AddReply(const std::string& reply) {
    const std::size_t before = m_reply ? m_reply->size() + 1 : 0;
    if (m_waitingBytes + before + reply.size() >= MaxWaitingBytes) {
        m_isDeadlocked = true;
        m_reply.reset();
        Report(CommandFailure(ScpiError::QueryDeadlocked));
    } else if (m_reply) {
        *m_reply += ';';
        *m_reply += reply;
    } else {
        m_reply = reply;
    }
}

void ScpiClient::OnSyntaxError(ScpiError error) {
    Report(m_failure ? *m_failure : CommandFailure(error));
    ClearUnit();
}

void ScpiClient::OnMessageEnd() {
    m_path.clear();
    m_isDeadlocked = false;
    if (m_reply) {
        if (auto outgoing = m_generator->ActiveFaults().Answer(*m_reply + '\n')) {
            m_waitingBytes += outgoing->text.size();
            m_replies.push_back(std::move(*outgoing));
        }
        m_reply.reset();
    }
}

void ScpiClient::NoteFailure(ScpiError error, std::string detail) {
    if (!m_failure) {
        m_failure.emplace(error, std::move(detail));
    }
}

void ScpiClient::Report(const CommandFailure& failure) {
    const std::lock_guard lock(m_generator->Mutex());
    m_generator->Report(failure.Code(), failure.Detail());
}

void ScpiClient::ClearUnit() {
    m_command = nullptr;
    m_arguments.clear();
    m_failure.reset();
    m_block.reset();
    m_bytes.reset();
    m_reservation = {};
}

}  // namespace krv::simulator
