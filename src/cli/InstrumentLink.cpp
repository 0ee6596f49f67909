#include "cli/InstrumentLink.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <string_view>
#include <utility>

#include "cli/Files.h"
#include "common/Error.h"
#include "common/ErrorTrap.h"
#include "hosts/OfficeProcedures.h"
#include "simulator/server/SimulatedTransport.h"
#include "suite/discovery/NetworkServices.h"
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

// Of a number of version 6; behind a percent sign stands a network's name.
bool IsOfIp6Number(char character) {
    return std::isxdigit(static_cast<unsigned char>(character)) != 0 || character == ':' ||
           character == '.';
}

// Only a number of version 6 has several colons, and those with a port have brackets.
bool IsBareIp6Number(const std::string& text) {
    if (text.front() == '[' || std::ranges::count(text, ':') < 2) {
        return false;
    }
    if (!std::ranges::all_of(text.substr(0, text.find('%')), &IsOfIp6Number)) {
        throw Error(ErrorNumber::InvalidCall,
                    "The address " + text +
                        " is no name of a resource that krv knows: these begin with GPIB, USB, "
                        "TCPIP or ASRL. A name that VISA knows stands behind visa://.");
    }
    return true;
}

// What names no scheme, and isn't the name of a resource, is a computer, with or without a port.
std::string FullAddress(const std::string& given) {
    if (given.empty() || given.find("://") != std::string::npos || suite::IsResourceName(given)) {
        return given;
    }
    if (given.find(',') != std::string::npos) {
        throw Error(ErrorNumber::InvalidCall, "The address " + given +
                                                  " holds a comma. Each instrument has an "
                                                  "--address of its own.");
    }
    const std::string computer = IsBareIp6Number(given) ? '[' + given + ']' : given;
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

std::string AddressWithScheme(const std::string& given) {
    const std::string address = FullAddress(given);
    return suite::IsResourceName(address) ? suite::AddressOfResource(address) : address;
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
