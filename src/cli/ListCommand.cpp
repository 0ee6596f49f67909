#include <algorithm>
#include <chrono>
#include <iomanip>
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
#include "suite/discovery/NetworkServices.h"
#include "suite/transport/TcpAddress.h"

namespace krv::cli {
namespace {

// An instrument in reach answers well within it.
constexpr suite::TimeOuts Patience{std::chrono::milliseconds(1000),
                                   std::chrono::milliseconds(1000)};

// Throws UsageError for what is no computer.
void RequireComputer(const std::string& computer) {
    const std::string address = suite::TcpAddress{computer, suite::UsualPort}.Text();
    const bool hasPort = std::ranges::count(computer, ':') == 1;
    const auto fault = FailureOf(
        [&] { static_cast<void>(suite::ParseTcpAddress(address.substr(address.find("//") + 2))); });
    if (hasPort || fault) {
        throw UsageError("--host takes the name or the number of a computer, without a port.");
    }
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
    if (arguments.computer) {
        RequireComputer(*arguments.computer);
    }
    std::string usual;
    if (const auto fault = FailureOf([&] { usual = AddressWithScheme(arguments.usualAddress); })) {
        PrintWarning(console.err, fault->Description());
    }
    const EndOnInterruption end(console.interruptions);
    const std::string visaLibrary = arguments.visaLibrary.value_or("");
    auto places = suite::UsualPlaces(arguments.computer.value_or(""), visaLibrary);
    const std::string wanted = arguments.computer ? places[suite::GivenComputer].address : "";
    // Whatever else isn't there isn't missed.
    const auto onFailure = [&](const std::string& address, const Error& failure) {
        if (address == wanted || address == usual || address.empty()) {
            PrintWarning(console.err, failure.Description());
        }
    };
    if (!usual.empty()) {
        places.insert(places.begin(), {.address = usual});
    }
    const auto found = suite::FindInstruments(KnownTransports(visaLibrary), places, Patience, false,
                                              {.onFailure = onFailure});
    if (arguments.json) {
        PrintJson({{"instruments", InstrumentsJson(found)}}, console.out);
    } else {
        PrintTable(found, console.out);
    }
    return ExitCode::Done;
}

}  // namespace krv::cli
