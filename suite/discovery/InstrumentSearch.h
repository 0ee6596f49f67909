// InstrumentSearch: finds the instruments that answer at a list of addresses.
//
// A search tries all addresses at once, each on a thread of its own, so that one at which nothing
// answers delays no other. It takes the time-outs of one try at most, and may itself run on any
// thread.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "common/Error.h"
#include "suite/discovery/Announcement.h"
#include "suite/discovery/NetworkServices.h"
#include "suite/transport/Transport.h"

namespace krv::suite {

// Stands for this computer where settings name the computer that an instrument is attached to.
inline constexpr const char* LocalComputer = "My Computer";

struct FoundInstrument {
    std::string address;
    std::string model;
    std::string serialNumber;
    std::string firmwareRevision;
};

// The addresses worth a try: the usual port of SCPI instruments on this computer and on the given
// one (unless that is the same), those where instruments have announced themselves or are listed
// otherwise, and one in process of each model.
[[nodiscard]] std::vector<std::string> CandidateAddresses(
    const std::string& computer, const std::vector<std::string>& announced = AnnouncedAddresses());

// The instruments that answer, in the addresses' order. Setting `cancelled` ends the search soon,
// with nothing found; what the watcher of the time-outs throws ends it, too. `onFailure` is told
// why there is none at an address, when all is over.
using SearchFailure = std::function<void(const std::string& address, const Error& reason)>;
[[nodiscard]] std::vector<FoundInstrument> FindInstruments(
    const TransportRegistry& transports, const std::vector<std::string>& addresses,
    const TimeOuts& timeOuts, const std::atomic<bool>& cancelled,
    const SearchFailure& onFailure = {});

// The computer that an address leads to: its name or number, or LocalComputer.
[[nodiscard]] std::string ComputerOf(const std::string& address);

}  // namespace krv::suite
