// RecordingServer: passes everything on to an instrument server, and notes which arrays it is given
// to send, so that a report can list what the instrument should now hold.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

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
    explicit RecordingServer(std::shared_ptr<ports::InstrumentServer> server)
        : m_server(std::move(server)) {}

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
    std::shared_ptr<std::vector<SentArray>> m_sent = std::make_shared<std::vector<SentArray>>();
};

}  // namespace krv::cli
