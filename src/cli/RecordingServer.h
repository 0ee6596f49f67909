// RecordingServer: passes everything on to an instrument server. It tells a meter of the arrays
// that it is given to send, and notes them where a report is to list what the instrument should now
// hold. What the instrument has no room for isn't sent at all.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "cli/TransferMeter.h"
#include "ports/suite/InstrumentServer.h"

namespace krv::cli {

struct SentArray {
    // "i", "q", "iq" or "markers".
    std::string channel;
    std::string name;
    std::size_t count = 0;
    std::uint32_t crc32 = 0;
};

// The place in the instrument that a download goes to.
struct Destination {
    // For the waveform in the instrument's memory; nothing where the instrument doesn't say so.
    std::optional<std::uint64_t> roomPoints;
    // Called before the rules of the destination look at what is selected; may be empty.
    std::function<void()> release;
};

class RecordingServer final : public ports::InstrumentServer {
 public:
    // The meter outlives this. Noting takes the arrays' checksums.
    RecordingServer(std::shared_ptr<ports::InstrumentServer> server, TransferMeter& meter,
                    bool notes)
        : m_server(std::move(server)), m_meter(meter), m_notes(notes) {}

    std::shared_ptr<ports::ConnectedInstrument> Instrument() override {
        return m_server->Instrument();
    }
    std::shared_ptr<ports::ArbWaveform> Arb() override;
    std::vector<std::string> InstalledOptions() override { return m_server->InstalledOptions(); }

    // Holds for the downloads from now on.
    void SetDestination(Destination destination) { *m_destination = std::move(destination); }

    // In order; not the one that was cut short.
    [[nodiscard]] const std::vector<SentArray>& Sent() const noexcept { return *m_sent; }

 private:
    class RecordingArb;

    std::shared_ptr<ports::InstrumentServer> m_server;
    TransferMeter& m_meter;
    bool m_notes;
    std::shared_ptr<Destination> m_destination = std::make_shared<Destination>();
    std::shared_ptr<std::vector<SentArray>> m_sent = std::make_shared<std::vector<SentArray>>();
};

}  // namespace krv::cli
