#include <algorithm>
#include <chrono>
#include <iomanip>
#include <iterator>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "cli/Commands.h"
#include "cli/EndOnInterruption.h"
#include "cli/ExitCode.h"
#include "cli/InstrumentLink.h"
#include "cli/JsonOutput.h"
#include "cli/Messages.h"
#include "common/ErrorTrap.h"
#include "suite/discovery/InstrumentSearch.h"
#include "suite/discovery/VisaAddresses.h"
#include "suite/transport/TcpAddress.h"

namespace krv::cli {
namespace {

// An instrument in reach answers well within it.
constexpr suite::TimeOuts Patience{std::chrono::milliseconds(1000),
                                   std::chrono::milliseconds(1000)};

// VISA libraries are large, and look for what is connected.
constexpr std::chrono::seconds VisaLimit{5};

// The address of an instrument at the computer; empty for none. Throws UsageError.
std::string AddressAt(const std::optional<std::string>& computer) {
    if (!computer) {
        return {};
    }
    std::string address = suite::TcpAddress{*computer, suite::UsualPort}.Text();
    const bool hasPort = std::ranges::count(*computer, ':') == 1;
    const auto fault = FailureOf(
        [&] { static_cast<void>(suite::ParseTcpAddress(address.substr(address.find("//") + 2))); });
    if (hasPort || fault) {
        throw UsageError("--host takes the name or the number of a computer, without a port.");
    }
    return address;
}

void PrintTable(std::vector<suite::FoundInstrument> found, std::ostream& out) {
    found.insert(found.begin(), {"ADDRESS", "MODEL", "SERIAL NUMBER", "FIRMWARE"});
    std::size_t addressWidth = 0;
    std::size_t modelWidth = 0;
    std::size_t numberWidth = 0;
    for (const suite::FoundInstrument& instrument : found) {
        addressWidth = std::max(addressWidth, instrument.address.size());
        modelWidth = std::max(modelWidth, instrument.model.size());
        numberWidth = std::max(numberWidth, instrument.serialNumber.size());
    }
    for (const suite::FoundInstrument& instrument : found) {
        out << std::left << std::setw(static_cast<int>(addressWidth) + 2) << instrument.address
            << std::setw(static_cast<int>(modelWidth) + 2) << instrument.model
            << std::setw(static_cast<int>(numberWidth) + 2) << instrument.serialNumber
            << instrument.firmwareRevision << '\n';
    }
}

OutputJson InstrumentsJson(const std::vector<suite::FoundInstrument>& found) {
    OutputJson instruments = OutputJson::array();
    for (const suite::FoundInstrument& instrument : found) {
        instruments.push_back({{"address", instrument.address},
                               {"model", instrument.model},
                               {"serialNumber", instrument.serialNumber},
                               {"firmwareRevision", instrument.firmwareRevision}});
    }
    return instruments;
}

}  // namespace

int RunList(const ListArguments& arguments, Console& console) {
    const std::string wanted = AddressAt(arguments.computer);
    const EndOnInterruption end(console.interruptions);
    const auto onFailure = [&](const std::string& address, const Error& failure) {
        if (address == wanted) {
            PrintWarning(console.err, failure.Description());
        }
    };
    const std::string visaLibrary = arguments.visaLibrary.value_or("");
    std::vector<std::string> known = suite::AnnouncedAddresses();
    std::ranges::move(suite::VisaAddresses(visaLibrary, VisaLimit), std::back_inserter(known));
    std::ranges::move(suite::NetworkAddresses(), std::back_inserter(known));
    auto found =
        suite::FindInstruments(KnownTransports(visaLibrary),
                               suite::CandidateAddresses(arguments.computer.value_or(""), known),
                               Patience, false, onFailure);
    if (arguments.json) {
        PrintJson({{"instruments", InstrumentsJson(found)}}, console.out);
    } else {
        PrintTable(std::move(found), console.out);
    }
    return ExitCode::Done;
}

}  // namespace krv::cli
