// ScpiInstrument: an identified instrument at the other end of a connection, in all its roles.
//
// Those who hold it in one of its roles share it, also when the server has let go of it. Once its
// connection is closed every call throws Error and IO is null.
#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "ports/suite/InstrumentServer.h"
#include "ports/suite/WaveformReadback.h"
#include "suite/scpi/ScpiConnection.h"
#include "suite/scpi/ScpiReply.h"
#include "suite/transport/Transport.h"

namespace krv::suite {

// The arrays of a stored waveform, by the numbers that the instrument has for them.
enum class StoredKind : std::uint8_t { Codes = 1, QCodes = 2, Markers = 3 };

class ScpiInstrument final : public ports::ConnectedInstrument,
                             public ports::ArbWaveform,
                             public ports::IoSession,
                             public ports::WaveformReadback,
                             public std::enable_shared_from_this<ScpiInstrument> {
 public:
    // Not connected.
    ScpiInstrument() = default;
    explicit ScpiInstrument(ScpiConnection connection) : m_connection(std::move(connection)) {}

    // Asks the instrument what it is, and what options it has. Throws Error; the connection is then
    // closed.
    void Identify();
    // The same without the options, for instruments that may be of any kind.
    void AskIdentity();
    std::vector<std::string> InstalledOptions();
    void Disconnect() noexcept { m_connection.Disconnect(); }
    void SetTimeOuts(const TimeOuts& timeOuts) { m_connection.SetTimeOuts(timeOuts); }

    std::string Model() override;
    std::string FirmwareRevision() override;
    std::string SerialNumber() override;
    std::shared_ptr<ports::IoSession> IO() override;
    bool FileExists(const std::string& name) override;
    ports::InstrumentError ReadError() override;
    // The state is one block of the instrument's own, as a byte array.
    Value CaptureState() override;
    void RestoreState(const Value& state) override;

    // Sends a message of the caller's own that has no reply, e.g. "OUTPut ON". Throws Error with
    // the errors that the instrument reports of it, or when it can't be sent.
    void Command(const std::string& message);
    // Sends a query of the caller's own and returns its reply, which is text and no block. Throws
    // Error as above.
    [[nodiscard]] std::string Ask(const std::string& query);

    // What the instrument's catalogue lists. An instrument that knows no catalogue is asked without
    // waiting for a reply that never comes, and gives nothing.
    [[nodiscard]] std::optional<MemoryContent> Catalog();

    // The bytes of a file that is there.
    [[nodiscard]] std::string ReadFile(const std::string& name);
    void DeleteFile(const std::string& name);
    // Lets the instrument capture its screen; a refusal is in its error queue.
    void CaptureScreen();

    bool HasDualArbOption() override;
    bool ArbFileSelected() override;
    std::string SelectedArbFile() override;
    // A download returns when the instrument has taken everything in and its error queue has been
    // read; ReadError then gives those errors, oldest first.
    void DownloadIQ(const std::string& name, std::span<const std::int16_t> iCodes,
                    std::span<const std::int16_t> qCodes, std::int32_t flags) override;
    void DownloadInterleaved(const std::string& name, std::span<const std::int16_t> iqCodes,
                             std::int32_t flags) override;
    void DownloadMarkers(const std::string& name, std::span<const std::int16_t> markers,
                         std::int32_t flags) override;

    ports::StoredWaveform ReadBack(const std::string& name) override;
    // Whether the instrument sends the codes of a waveform back that is there.
    [[nodiscard]] bool SendsCodes(const std::string& name);
    // As many codes as the span has, from a first one on, of a stored waveform's array: its codes,
    // its Q codes or its markers.
    void ReadCodes(const std::string& name, StoredKind kind, std::uint64_t first,
                   std::span<std::int16_t> codes);

    std::string Address() override;
    bool IsAlive() override { return m_connection.IsOpen(); }
    std::string ConnectionKind() override;
    ports::SerialSession* Serial() override { return m_connection.Serial(); }
    void ReturnToLocal() override;

 private:
    [[nodiscard]] ports::InstrumentError AskForError();
    void DrainErrors();
    std::nullopt_t DropErrors();
    // To the query, which was written, where replies wait in their order.
    [[nodiscard]] std::string ReplyOrError(const std::string& query);
    // Throws Error for a block, of which a part may still be on its way: the connection is closed.
    void RequireText(const std::string& query, const std::string& reply);
    // Throws Error with this error and those behind it in the instrument's queue, if it is one.
    void RequireNoErrors(ports::InstrumentError error);
    void Complete();
    void Download(std::string_view header, const std::string& name,
                  std::span<const std::span<const std::int16_t>> blocks);

    ScpiConnection m_connection;
    Identity m_identity;
    std::vector<std::string> m_options;
    // Taken out of the instrument's queue, and not yet read; oldest first.
    std::deque<ports::InstrumentError> m_errors;
};

// Opens a connection to the address and identifies what is there. Throws Error.
[[nodiscard]] std::shared_ptr<ScpiInstrument> OpenInstrument(const TransportRegistry& transports,
                                                             const std::string& address,
                                                             const TimeOuts& timeOuts);

// Opens the connection that a document names, while the user waits for the document: allows two
// seconds for connecting and for each answer, and the usual times afterwards. Throws Error.
[[nodiscard]] std::shared_ptr<ScpiInstrument> ReopenInstrument(const TransportRegistry& transports,
                                                               const std::string& address);

}  // namespace krv::suite
