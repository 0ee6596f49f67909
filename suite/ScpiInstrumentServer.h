// ScpiInstrumentServer: the instrument server over a transport, speaking the generator's SCPI
// commands.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "ports/suite/InstrumentServer.h"
#include "suite/Transport.h"

namespace krv::server {

class ScpiInstrumentServer final : public suite::InstrumentServer {
 public:
    explicit ScpiInstrumentServer(TransportRegistry transports, TimeOuts timeOuts = {});
    ~ScpiInstrumentServer() override;

    // Opens a session and identifies the instrument. Throws Error; the server is then unconnected.
    void Connect(const std::string& address);
    void Disconnect() noexcept;

    // Unconnected, the instrument's IO is null and everything that needs a session throws Error.
    std::shared_ptr<suite::ConnectedInstrument> Instrument() override;
    std::shared_ptr<suite::ArbWaveform> Arb() override;
    std::vector<std::string> InstalledOptions() override;

 private:
    class Session;
    TransportRegistry m_transports;
    TimeOuts m_timeOuts;
    std::shared_ptr<Session> m_session;
};

}  // namespace krv::server
