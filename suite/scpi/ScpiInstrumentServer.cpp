#include "suite/scpi/ScpiInstrumentServer.h"

#include <utility>

#include "suite/scpi/ScpiInstrument.h"

namespace krv::suite {

ScpiInstrumentServer::ScpiInstrumentServer(TransportRegistry transports, TimeOuts timeOuts)
    : m_transports(std::move(transports)),
      m_timeOuts(timeOuts),
      m_instrument(std::make_shared<ScpiInstrument>()) {}

ScpiInstrumentServer::~ScpiInstrumentServer() {
    Disconnect();
}

void ScpiInstrumentServer::Connect(const std::string& address) {
    Disconnect();
    m_instrument = OpenInstrument(m_transports, address, m_timeOuts);
}

void ScpiInstrumentServer::Disconnect() noexcept {
    if (!m_adopted) {
        m_instrument->Disconnect();
        return;
    }
    m_instrument = std::make_shared<ScpiInstrument>();
    m_adopted = false;
}

void ScpiInstrumentServer::Adopt(std::shared_ptr<ScpiInstrument> instrument) noexcept {
    Disconnect();
    m_instrument = std::move(instrument);
    m_adopted = true;
}

std::shared_ptr<ports::ConnectedInstrument> ScpiInstrumentServer::Instrument() {
    return m_instrument;
}

std::shared_ptr<ports::ArbWaveform> ScpiInstrumentServer::Arb() {
    return m_instrument;
}

std::vector<std::string> ScpiInstrumentServer::InstalledOptions() {
    return m_instrument->InstalledOptions();
}

std::shared_ptr<ports::WaveformReadback> ScpiInstrumentServer::Readback() {
    return m_instrument;
}

}  // namespace krv::suite
