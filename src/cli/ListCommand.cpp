#include <algorithm>
#include <iomanip>
#include <ostream>

#include "cli/Commands.h"
#include "cli/EndOnInterruption.h"
#include "cli/ExitCode.h"
#include "cli/InstrumentLink.h"
#include "suite/discovery/InstrumentSearch.h"

namespace krv::cli {
namespace {

// An instrument in reach answers well within it.
constexpr suite::TimeOuts Patience{std::chrono::milliseconds(1000),
                                   std::chrono::milliseconds(1000)};

}  // namespace

int RunList(const ListArguments& arguments, Console& console) {
    const EndOnInterruption end(console.interruptions);
    auto found = suite::FindInstruments(
        KnownTransports(), suite::CandidateAddresses(arguments.computer), Patience, false);
    found.insert(found.begin(), {"ADDRESS", "MODEL", "SERIAL NUMBER"});
    std::size_t addressWidth = 0;
    std::size_t modelWidth = 0;
    for (const suite::FoundInstrument& instrument : found) {
        addressWidth = std::max(addressWidth, instrument.address.size());
        modelWidth = std::max(modelWidth, instrument.model.size());
    }
    for (const suite::FoundInstrument& instrument : found) {
        console.out << std::left << std::setw(static_cast<int>(addressWidth) + 2)
                    << instrument.address << std::setw(static_cast<int>(modelWidth) + 2)
                    << instrument.model << instrument.serialNumber << '\n';
    }
    return ExitCode::Done;
}

}  // namespace krv::cli
