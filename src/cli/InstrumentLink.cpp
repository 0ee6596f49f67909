#include "cli/InstrumentLink.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

#include "cli/Files.h"
#include "common/Error.h"
#include "common/ErrorTrap.h"
#include "hosts/OfficeProcedures.h"
#include "simulator/server/SimulatedTransport.h"
#include "suite/discovery/InstrumentSearch.h"
#include "suite/transport/ResourceName.h"
#include "suite/transport/TcpAddress.h"
#include "suite/transport/visa/VisaTransport.h"

namespace krv::cli {
namespace {

suite::TransportRegistry TransportsInto(const std::string& visaLibrary,
                                        const std::shared_ptr<suite::ConversationLog>& log,
                                        TransferMeter* meter) {
    suite::TransportRegistry transports = KnownTransports(visaLibrary);
    if (log != nullptr) {
        suite::LogConversations(transports, log);
    }
    if (meter != nullptr) {
        MeterTransports(transports, *meter);
    }
    return transports;
}

// Throws Error in the words of a user who has left out the scheme.
void RequireTcpAddress(const std::string& text) {
    const auto failure = FailureOf([&] { static_cast<void>(suite::ParseTcpAddress(text)); });
    if (!failure) {
        return;
    }
    constexpr std::string_view Scheme = "tcp://";
    std::string reason = failure->Description();
    for (std::size_t at = reason.find(Scheme); at != std::string::npos; at = reason.find(Scheme)) {
        reason.erase(at, Scheme.size());
    }
    throw Error(failure->Number(), reason, failure->Source());
}

// What names no scheme, and isn't the name of a resource, is a computer, with or without a port.
std::string FullAddress(const std::string& given) {
    if (given.empty() || given.find("://") != std::string::npos || suite::IsResourceName(given)) {
        return given;
    }
    // Only an IP address of version 6 has several colons, and those with a port have brackets.
    const bool isBareNumber = given.front() != '[' && std::ranges::count(given, ':') > 1;
    const std::string computer = isBareNumber ? '[' + given + ']' : given;
    const std::size_t colon = computer.rfind(':');
    const bool hasPort =
        colon != std::string::npos && computer.find(']', colon) == std::string::npos;
    const std::string full = computer + (hasPort ? "" : ':' + std::to_string(suite::UsualPort));
    RequireTcpAddress(full);
    return "tcp://" + full;
}

}  // namespace

suite::TransportRegistry KnownTransports(const std::string& visaLibrary) {
    suite::TransportRegistry transports;
    suite::AddTcpTransport(transports);
    suite::AddSerialTransport(transports);
    suite::AddVisaTransport(transports, visaLibrary);
    simulator::AddSimulatedTransport(transports);
    return transports;
}

std::shared_ptr<suite::ConversationLog> OpenLog(const ConnectionArguments& arguments) {
    if (!arguments.logFile) {
        return nullptr;
    }
    return std::make_shared<suite::ConversationLog>(PathOf(*arguments.logFile));
}

InstrumentLink::InstrumentLink(const ConnectionArguments& arguments, TransferMeter* meter,
                               suite::WaitWatcher* watcher,
                               std::shared_ptr<suite::ConversationLog> log)
    : m_logFile(arguments.logFile.value_or("")),
      m_log(log != nullptr ? std::move(log) : OpenLog(arguments)),
      m_server(std::make_shared<suite::ScpiInstrumentServer>(
          TransportsInto(arguments.visaLibrary.value_or(""), m_log, meter),
          suite::TimeOuts{.watcher = watcher})) {
    m_server->Connect(FullAddress(arguments.address.value_or("")));
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
    hosts::ReturnInstrumentToLocal(*m_server);
    m_server->Disconnect();
}

}  // namespace krv::cli
