#include "simulator/device/Faults.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <stdexcept>
#include <utility>

#include "common/Joined.h"
#include "common/NearMiss.h"

namespace krv::simulator {
namespace {

constexpr std::string_view Delay = "delay";
constexpr std::string_view Bandwidth = "bandwidth";
constexpr std::string_view Disconnect = "disconnect";
constexpr std::string_view TruncateReply = "truncate-reply";
constexpr std::string_view NeverAnswer = "never-answer";
constexpr std::string_view InjectedError = "error";
constexpr std::string_view MemoryFull = "memory-full";
constexpr std::string_view CorruptData = "corrupt-data";
constexpr std::array FaultNames{Delay,       Bandwidth,     Disconnect, TruncateReply,
                                NeverAnswer, InjectedError, MemoryFull, CorruptData};

// Data is taken in twenty times a second when the bandwidth is limited.
constexpr std::uint64_t PiecesPerSecond = 20;
constexpr std::uint64_t MaxValue = 1'000'000'000'000;

std::invalid_argument BadValue(std::string_view name, std::string_view needs) {
    return std::invalid_argument("The fault \"" + std::string(name) + "\" needs " +
                                 std::string(needs) + '.');
}

std::uint64_t ParseCount(std::string_view name, std::string_view value, std::uint64_t least,
                         std::string_view needs) {
    std::uint64_t count = 0;
    const char* const end = value.data() + value.size();
    const auto [stop, failure] = std::from_chars(value.data(), end, count);
    if (failure != std::errc() || stop != end || count < least || count > MaxValue) {
        throw BadValue(name, needs);
    }
    return count;
}

QueuedError ParseError(std::string_view value) {
    constexpr std::string_view Needs = "a number other than 0 and a text, as error=-222,Some text";
    QueuedError error;
    const char* const end = value.data() + value.size();
    const auto [stop, failure] = std::from_chars(value.data(), end, error.number);
    if (failure != std::errc() || stop == end || *stop != ',' || error.number == 0) {
        throw BadValue(InjectedError, Needs);
    }
    error.text.assign(stop + 1, end);
    return error;
}

}  // namespace

std::span<const std::string_view> Faults::Names() noexcept {
    return FaultNames;
}

void Faults::Switch(std::string_view fault) {
    const auto equals = fault.find('=');
    const std::string_view name = fault.substr(0, equals);
    const bool hasValue = equals != std::string_view::npos;
    if (std::find(FaultNames.begin(), FaultNames.end(), name) == FaultNames.end()) {
        throw std::invalid_argument("The fault \"" + std::string(name) +
                                    "\" is not known. Known faults: " + Joined(FaultNames) + '.' +
                                    NearMissHint(name, {FaultNames.begin(), FaultNames.end()}));
    }
    const std::lock_guard lock(m_mutex);
    SwitchByName(name, hasValue ? fault.substr(equals + 1) : std::string_view());
}

void Faults::SwitchByName(std::string_view name, std::string_view value) {
    if (name == Delay) {
        m_delayMs = ParseCount(name, value, 0, "milliseconds, as delay=500");
    } else if (name == Bandwidth) {
        m_bytesPerSecond = ParseCount(name, value, 1, "bytes a second, as bandwidth=100000");
    } else if (name == Disconnect) {
        m_bytesToDisconnect = ParseCount(name, value, 0, "a number of bytes, as disconnect=5000");
    } else if (name == InjectedError) {
        m_injected = ParseError(value);
    } else if (!value.empty()) {
        throw BadValue(name, "no value");
    } else if (name == TruncateReply) {
        m_truncateReply = true;
    } else if (name == NeverAnswer) {
        m_neverAnswer = true;
    } else if (name == MemoryFull) {
        m_memoryFull = true;
    } else {
        m_corruptData = true;
    }
}

void Faults::Clear() {
    const std::lock_guard lock(m_mutex);
    m_delayMs.reset();
    m_bytesPerSecond.reset();
    m_bytesToDisconnect.reset();
    m_truncateReply = m_neverAnswer = m_memoryFull = m_corruptData = false;
    m_injected.reset();
}

std::vector<std::string> Faults::Active() const {
    const std::lock_guard lock(m_mutex);
    std::vector<std::string> active;
    const auto add = [&active](bool isActive, std::string_view name) {
        if (isActive) {
            active.emplace_back(name);
        }
    };
    const auto addCount = [&active](const std::optional<std::uint64_t>& value,
                                    std::string_view name) {
        if (value) {
            active.push_back(std::string(name) + '=' + std::to_string(*value));
        }
    };
    addCount(m_delayMs, Delay);
    addCount(m_bytesPerSecond, Bandwidth);
    addCount(m_bytesToDisconnect, Disconnect);
    add(m_truncateReply, TruncateReply);
    add(m_neverAnswer, NeverAnswer);
    if (m_injected) {
        active.push_back(std::string(InjectedError) + '=' + std::to_string(m_injected->number) +
                         ',' + m_injected->text);
    }
    add(m_memoryFull, MemoryFull);
    add(m_corruptData, CorruptData);
    return active;
}

std::size_t Faults::PieceSize(std::size_t capacity) const {
    const std::lock_guard lock(m_mutex);
    if (!m_bytesPerSecond) {
        return capacity;
    }
    const std::uint64_t piece = std::max<std::uint64_t>(1, *m_bytesPerSecond / PiecesPerSecond);
    return static_cast<std::size_t>(std::min<std::uint64_t>(capacity, piece));
}

Faults::Intake Faults::TakeIn(std::size_t bytes) {
    const std::lock_guard lock(m_mutex);
    Intake intake;
    intake.bytes = bytes;
    if (m_bytesToDisconnect) {
        intake.disconnect = bytes >= *m_bytesToDisconnect;
        intake.bytes =
            static_cast<std::size_t>(std::min<std::uint64_t>(bytes, *m_bytesToDisconnect));
        *m_bytesToDisconnect -= intake.bytes;
        if (intake.disconnect) {
            m_bytesToDisconnect.reset();
        }
    }
    if (m_bytesPerSecond) {
        intake.pause = std::chrono::microseconds(bytes * 1'000'000 / *m_bytesPerSecond);
    }
    return intake;
}

std::optional<Faults::Outgoing> Faults::Answer(std::string reply) const {
    const std::lock_guard lock(m_mutex);
    if (m_neverAnswer) {
        return std::nullopt;
    }
    if (m_truncateReply) {
        reply.resize(reply.size() / 2);
    }
    return Outgoing{std::move(reply), std::chrono::milliseconds(m_delayMs.value_or(0))};
}

bool Faults::RefusesData() const {
    const std::lock_guard lock(m_mutex);
    return m_memoryFull;
}

std::optional<QueuedError> Faults::TakeInjectedError() {
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_injected, std::nullopt);
}

bool Faults::TakeCorruption() {
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_corruptData, false);
}

}  // namespace krv::simulator
