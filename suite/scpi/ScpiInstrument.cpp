#include "suite/scpi/ScpiInstrument.h"

#include <algorithm>
#include <array>

#include "common/Text.h"
#include "suite/scpi/ByteOrder.h"
#include "suite/transport/ResourceName.h"
#include "suite/transport/SerialAddress.h"
#include "suite/transport/TransportErrors.h"

namespace krv::suite {
namespace {

constexpr const char* DualArbOption = "R2X";
// The most errors that are read at once, should the queue never get empty.
constexpr std::size_t MaxErrorsKept = 30;

// A line break in a name would end the message in front of its data.
void RequirePrintable(const std::string& text, const char* what = "name") {
    if (HasControlCharacters(text)) {
        throw ServerError(std::string("The ") + what +
                          " holds a control character, which cannot be sent.");
    }
}

// A document may come from anywhere: of the devices of this computer it may name serial ports
// alone, also where VISA leads to them.
void RequireAddressForDocuments(std::string address) {
    constexpr std::string_view Serial = "serial://";
    constexpr std::string_view Visa = "visa://";
    const bool isVisa = address.starts_with(Visa);
    const std::string resource = address.substr(isVisa ? Visa.size() : 0);
    if (IsResourceName(resource)) {
        address = AddressOfResource(resource);
    } else if (isVisa) {
        throw AddressError(address,
                           "a document may name a resource by its whole name only, for example "
                           "visa://GPIB0::19::INSTR");
    }
    if (address.starts_with(Serial) &&
        !IsNumberedPort(ParseSerialAddress(address.substr(Serial.size())).device)) {
        throw AddressError(address,
                           "a document may name a serial port by its number only, for example "
                           "serial://COM3");
    }
}

}  // namespace

void ScpiInstrument::AskIdentity() {
    const std::string query = "*IDN?";
    const std::string reply = m_connection.Query(query);
    const auto identity = ParseIdentity(reply);
    if (!identity) {
        m_connection.RefuseReply(query, reply);
    }
    m_identity = *identity;
}

void ScpiInstrument::Identify() {
    AskIdentity();
    m_options = ParseOptions(m_connection.Query("*OPT?"));
}

std::vector<std::string> ScpiInstrument::InstalledOptions() {
    m_connection.RequireOpen();
    return m_options;
}

std::string ScpiInstrument::Model() {
    m_connection.RequireOpen();
    return m_identity.model;
}

std::string ScpiInstrument::FirmwareRevision() {
    m_connection.RequireOpen();
    return m_identity.firmwareRevision;
}

std::string ScpiInstrument::SerialNumber() {
    m_connection.RequireOpen();
    return m_identity.serialNumber;
}

std::shared_ptr<ports::IoSession> ScpiInstrument::IO() {
    return m_connection.IsOpen() ? shared_from_this() : nullptr;
}

ports::InstrumentError ScpiInstrument::ReadError() {
    m_connection.RequireOpen();
    if (m_errors.empty()) {
        return AskForError();
    }
    ports::InstrumentError oldest = std::move(m_errors.front());
    m_errors.pop_front();
    return oldest;
}

void ScpiInstrument::DrainErrors() {
    while (m_errors.size() < MaxErrorsKept) {
        ports::InstrumentError error = AskForError();
        if (error.number == 0) {
            return;
        }
        m_errors.push_back(std::move(error));
    }
}

ports::InstrumentError ScpiInstrument::AskForError() {
    const std::string query = "SYSTem:ERRor?";
    const std::string reply = m_connection.Query(query);
    auto error = ParseError(reply);
    if (!error) {
        m_connection.RefuseReply(query, reply);
    }
    return std::move(*error);
}

void ScpiInstrument::RequireNoErrors(ports::InstrumentError error) {
    std::string reported;
    for (std::size_t count = 0; error.number != 0 && count < MaxErrorsKept; ++count) {
        reported +=
            (reported.empty() ? "" : ", ") + std::to_string(error.number) + ' ' + error.message;
        error = AskForError();
    }
    if (!reported.empty()) {
        throw ServerError("The instrument reports " + reported + '.');
    }
}

void ScpiInstrument::Command(const std::string& message) {
    RequirePrintable(message, "message");
    DrainErrors();
    m_connection.Write(message);
    Complete();
    RequireNoErrors(AskForError());
}

std::string ScpiInstrument::Ask(const std::string& query) {
    RequirePrintable(query, "message");
    DrainErrors();
    m_connection.Write(query);
    if (const auto isAnswered = m_connection.AwaitReply()) {
        std::string reply = *isAnswered ? m_connection.ReceiveReply() : std::string();
        RequireText(query, reply);
        RequireNoErrors(AskForError());
        return reply;
    }
    return ReplyOrError(query);
}

void ScpiInstrument::RequireText(const std::string& query, const std::string& reply) {
    // A letter behind the sign makes a number, in hexadecimal for example.
    if (reply.size() > 1 && reply[0] == '#' && reply[1] >= '0' && reply[1] <= '9') {
        m_connection.Disconnect();
        throw ServerError("The instrument's reply to " + query +
                          " is a block of data, which can't be shown as text.");
    }
}

// A query that the instrument refuses has an error and no reply. One that asks for errors has a
// reply that looks like one: then the next reply tells whether there were two.
std::string ScpiInstrument::ReplyOrError(const std::string& query) {
    const std::string errorQuery = "SYSTem:ERRor?";
    std::string reply = m_connection.Query(errorQuery);
    RequireText(query, reply);
    std::string errorReply;
    if (auto error = ParseError(reply)) {
        m_connection.Write("*OPC?");
        errorReply = m_connection.ReceiveReply();
        if (errorReply == "1") {
            RequireNoErrors(std::move(*error));
            return {};
        }
        if (m_connection.ReceiveReply() != "1") {
            m_connection.RefuseReply("*OPC?", errorReply);
        }
    } else {
        errorReply = m_connection.ReceiveReply();
    }
    auto error = ParseError(errorReply);
    if (!error) {
        m_connection.RefuseReply(errorQuery, errorReply);
    }
    RequireNoErrors(std::move(*error));
    return reply;
}

std::optional<MemoryContent> ScpiInstrument::Catalog() {
    DrainErrors();
    m_connection.Write("ARBitrary:CATalog?");
    if (const auto isAnswered = m_connection.AwaitReply()) {
        return *isAnswered ? ParseCatalog(m_connection.ReceiveReply()) : DropErrors();
    }
    // Answered in any case. Where it is the first reply there is no other one.
    const std::string reply = m_connection.Query("*OPC?");
    if (reply == "1") {
        return DropErrors();
    }
    if (const std::string end = m_connection.ReceiveReply(); end != "1") {
        m_connection.RefuseReply("*OPC?", end);
    }
    return ParseCatalog(reply);
}

// What the instrument said of a question that it doesn't know is nobody's business.
std::nullopt_t ScpiInstrument::DropErrors() {
    for (std::size_t count = 0; count < MaxErrorsKept && AskForError().number != 0; ++count) {
    }
    return std::nullopt;
}

Value ScpiInstrument::CaptureState() {
    const std::string block = m_connection.QueryBlock("SYSTem:SET?");
    const auto bytes = std::as_bytes(std::span(block));
    return ByteArray{{bytes.begin(), bytes.end()}};
}

void ScpiInstrument::RestoreState(const Value& state) {
    const auto* block = std::get_if<ByteArray>(&state);
    if (block == nullptr || block->bytes.size() > ScpiConnection::MaxBlockBytes) {
        throw ServerError("This is not a state that an instrument has reported.");
    }
    // So that an error that is found afterwards is about the state.
    DrainErrors();
    m_connection.WriteBytes("SYSTem:SET ", block->bytes);
    Complete();
    if (const ports::InstrumentError error = AskForError(); error.number != 0) {
        throw ServerError("The instrument refused the state: " + std::to_string(error.number) +
                          ", \"" + error.message + "\".");
    }
}

bool ScpiInstrument::FileExists(const std::string& name) {
    RequirePrintable(name);
    const std::string query = "MMEMory:EXISts? " + Quoted(name);
    const std::string reply = m_connection.Query(query);
    if (reply != "0" && reply != "1") {
        m_connection.RefuseReply(query, reply);
    }
    return reply == "1";
}

std::string ScpiInstrument::ReadFile(const std::string& name) {
    RequirePrintable(name);
    return m_connection.QueryBlock("MMEMory:DATA? " + Quoted(name));
}

void ScpiInstrument::DeleteFile(const std::string& name) {
    RequirePrintable(name);
    m_connection.Write("MMEMory:DELete " + Quoted(name));
    Complete();
}

void ScpiInstrument::CaptureScreen() {
    m_connection.Write("HCOPy:IMMediate");
    Complete();
}

bool ScpiInstrument::HasDualArbOption() {
    m_connection.RequireOpen();
    return std::find(m_options.begin(), m_options.end(), DualArbOption) != m_options.end();
}

bool ScpiInstrument::ArbFileSelected() {
    return !SelectedArbFile().empty();
}

std::string ScpiInstrument::SelectedArbFile() {
    const std::string query = "ARBitrary:SELect?";
    const std::string reply = m_connection.Query(query);
    auto name = ParseQuoted(reply);
    if (!name) {
        m_connection.RefuseReply(query, reply);
    }
    return std::move(*name);
}

void ScpiInstrument::DownloadIQ(const std::string& name, std::span<const std::int16_t> iCodes,
                                std::span<const std::int16_t> qCodes, std::int32_t) {
    const std::array blocks{iCodes, qCodes};
    Download("ARBitrary:DATA:IQ", name, std::span(blocks).first(qCodes.empty() ? 1 : 2));
}

void ScpiInstrument::DownloadInterleaved(const std::string& name,
                                         std::span<const std::int16_t> iqCodes, std::int32_t) {
    Download("ARBitrary:DATA:INTerleaved", name, std::array{iqCodes});
}

void ScpiInstrument::DownloadMarkers(const std::string& name, std::span<const std::int16_t> markers,
                                     std::int32_t) {
    Download("ARBitrary:DATA:MARKers", name, std::array{markers});
}

void ScpiInstrument::Download(std::string_view header, const std::string& name,
                              std::span<const std::span<const std::int16_t>> blocks) {
    m_connection.RequireOpen();
    RequirePrintable(name);
    m_connection.WriteBlocks(std::string(header) + ' ' + Quoted(name) + ',', blocks);
    Complete();
    DrainErrors();
}

void ScpiInstrument::Complete() {
    // A message of its own: it is answered even when the instrument gave up on the one before.
    const std::string query = "*OPC?";
    if (const std::string reply = m_connection.Query(query); reply != "1") {
        m_connection.RefuseReply(query, reply);
    }
}

ports::StoredWaveform ScpiInstrument::ReadBack(const std::string& name) {
    m_connection.RequireOpen();
    RequirePrintable(name);
    // The last of the queries is answered even when the instrument refuses the others.
    const std::string query =
        "ARBitrary:SIZE? " + Quoted(name) + ";CHECksum? " + Quoted(name) + ";*OPC?";
    const std::string reply = m_connection.Query(query);
    if (reply == "1") {
        const ports::InstrumentError error = AskForError();
        throw ServerError("The instrument does not tell what it holds as \"" + name +
                          "\": " + std::to_string(error.number) + ' ' + error.message + '.');
    }
    const auto stored = ParseStoredWaveform(reply);
    if (!stored) {
        m_connection.RefuseReply(query, reply);
    }
    return *stored;
}

bool ScpiInstrument::SendsCodes(const std::string& name) {
    RequirePrintable(name);
    // The second query is answered even when the instrument refuses the first.
    const bool sends =
        m_connection.Query("ARBitrary:DATA? " + Quoted(name) + ",1,0,0;*OPC?") != "1";
    if (!sends) {
        DrainErrors();
    }
    return sends;
}

void ScpiInstrument::ReadCodes(const std::string& name, StoredKind kind, std::uint64_t first,
                               std::span<std::int16_t> codes) {
    RequirePrintable(name);
    constexpr std::size_t MostCodes = std::size_t{1} << 20U;
    for (std::size_t done = 0; done < codes.size();) {
        const std::size_t count = std::min(MostCodes, codes.size() - done);
        const std::string query = "ARBitrary:DATA? " + Quoted(name) + ',' +
                                  std::to_string(static_cast<int>(kind)) + ',' +
                                  std::to_string(first + done) + ',' + std::to_string(count);
        const std::string block = m_connection.QueryBlock(query);
        if (block.size() != 2 * count) {
            m_connection.RefuseReply(query, std::to_string(block.size()) + " bytes");
        }
        CopyFromWireOrder(std::as_bytes(std::span(block)).data(), codes.subspan(done, count));
        done += count;
    }
}

std::string ScpiInstrument::Address() {
    return m_connection.Address();
}

std::string ScpiInstrument::ConnectionKind() {
    return m_connection.Kind();
}

void ScpiInstrument::ReturnToLocal() {
    m_connection.ReturnToLocal();
}

std::shared_ptr<ScpiInstrument> OpenInstrument(const TransportRegistry& transports,
                                               const std::string& address,
                                               const TimeOuts& timeOuts) {
    auto instrument = std::make_shared<ScpiInstrument>(
        ScpiConnection(transports.Open(address, timeOuts), address, timeOuts));
    instrument->Identify();
    return instrument;
}

std::shared_ptr<ScpiInstrument> ReopenInstrument(const TransportRegistry& transports,
                                                 const std::string& address) {
    RequireAddressForDocuments(address);
    constexpr std::chrono::milliseconds Patience{2000};
    auto instrument = OpenInstrument(transports, address, {Patience, Patience});
    instrument->SetTimeOuts({});
    return instrument;
}

}  // namespace krv::suite
