#include "cli/Connection.h"

#include "bench/instrument/GeneratorServer.h"
#include "common/Error.h"

namespace krv::cli {
namespace {

server::TransportRegistry KnownTransports() {
    server::TransportRegistry transports;
    server::AddTcpTransport(transports);
    bench::AddSimulatedTransport(transports);
    return transports;
}

}  // namespace

Connection::Connection(const std::string& address)
    : m_server(std::make_shared<server::ScpiInstrumentServer>(KnownTransports())) {
    m_server->Connect(address);
}

Connection::~Connection() {
    try {
        if (const auto session = m_server->Instrument()->IO()) {
            session->ReturnToLocal();
        }
    } catch (const Error&) {
        // The session may be gone by now, or offer no such thing.
    }
    m_server->Disconnect();
}

}  // namespace krv::cli
