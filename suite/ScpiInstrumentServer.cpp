#include "suite/ScpiInstrumentServer.h"

#include <utility>

#include "suite/ScpiInstrument.h"

namespace krv::server {

ScpiInstrumentServer::ScpiInstrumentServer(TransportRegistry transports, TimeOuts timeOuts)
    : m_transports(std::move(transports)),
      m_timeOuts(timeOuts),
      m_instrument(std::make_shared<ScpiInstrument>()) {}

ScpiInstrumentServer::~ScpiInstrumentServer() {
    Disconnect();
}

void ScpiInstrumentServer::Connect(const std::string& address) {
    Disconnect();
    const auto instrument = std::make_shared<ScpiInstrument>(
        ScpiConnection(m_transports.Open(address, m_timeOuts), address, m_timeOuts));
    instrument->Identify();
    m_instrument = instrument;
}

void ScpiInstrumentServer::Disconnect() noexcept {
    m_instrument->Disconnect();
}

std::shared_ptr<suite::ConnectedInstrument> ScpiInstrumentServer::Instrument() {
    return m_instrument;
}

std::shared_ptr<suite::ArbWaveform> ScpiInstrumentServer::Arb() {
    return m_instrument;
}

std::vector<std::string> ScpiInstrumentServer::InstalledOptions() {
    return m_instrument->InstalledOptions();
}

}  // namespace krv::server
