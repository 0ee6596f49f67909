// RecordingServer: passes everything on to an instrument server. It tells a meter of the arrays
// that it is given to send, and notes them where a report is to list what the instrument should now
// hold.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
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

    // In order; also those whose sending failed.
    [[nodiscard]] const std::vector<SentArray>& Sent() const noexcept { return *m_sent; }

 private:
    class RecordingArb;

    std::shared_ptr<ports::InstrumentServer> m_server;
    TransferMeter& m_meter;
    bool m_notes;
    std::shared_ptr<std::vector<SentArray>> m_sent = std::make_shared<std::vector<SentArray>>();
};

}  // namespace krv::cli
