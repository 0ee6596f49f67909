#include "cli/InstrumentLink.h"

#include "cli/Files.h"
#include "common/Error.h"
#include "simulator/server/SimulatedTransport.h"

namespace krv::cli {
namespace {

suite::TransportRegistry TransportsInto(const std::shared_ptr<suite::ConversationLog>& log) {
    suite::TransportRegistry transports = KnownTransports();
    if (log != nullptr) {
        suite::LogConversations(transports, log);
    }
    return transports;
}

std::shared_ptr<suite::ConversationLog> OpenLog(const ConnectionArguments& arguments) {
    if (!arguments.logFile) {
        return nullptr;
    }
    return std::make_shared<suite::ConversationLog>(PathOf(*arguments.logFile));
}

}  // namespace

suite::TransportRegistry KnownTransports() {
    suite::TransportRegistry transports;
    suite::AddTcpTransport(transports);
    suite::AddSerialTransport(transports);
    simulator::AddSimulatedTransport(transports);
    return transports;
}

InstrumentLink::InstrumentLink(const ConnectionArguments& arguments)
    : m_logFile(arguments.logFile.value_or("")),
      m_log(OpenLog(arguments)),
      m_server(std::make_shared<suite::ScpiInstrumentServer>(TransportsInto(m_log))) {
    m_server->Connect(arguments.address);
}

InstrumentLink::~InstrumentLink() {
    ReturnToLocal();
}

void InstrumentLink::Finish() {
    ReturnToLocal();
    if (m_log != nullptr && !m_log->IsComplete()) {
        throw Error(ErrorNumber::PathFileAccess,
                    "Can't write " + m_logFile + ": The device is full or has failed.");
    }
}

void InstrumentLink::ReturnToLocal() noexcept {
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
