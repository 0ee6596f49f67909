// InstrumentSearch: which instruments answer, out of the addresses where one may be.
//
// Searching takes as long as the slowest address takes to refuse; it may run on a thread of its
// own.
#pragma once

#include <atomic>
#include <string>
#include <string_view>
#include <vector>

#include "suite/discovery/Announcement.h"
#include "suite/transport/Transport.h"

namespace krv::suite {

// What the host name of an instrument is that this computer itself reaches.
inline constexpr const char* LocalHostName = "My Computer";

struct FoundInstrument {
    std::string address;
    std::string model;
    std::string serialNumber;
};

// The addresses worth a try: the customary port of SCPI instruments on this computer and on the
// host (unless it is this computer), the simulated instruments that have announced themselves, and
// one in process of each model.
[[nodiscard]] std::vector<std::string> CandidateAddresses(
    const std::string& hostName, const std::vector<std::string>& announced = AnnouncedAddresses());

// Asks each address what is there, and leaves out where nothing answers. Setting `cancelled` ends
// the search before the next address.
[[nodiscard]] std::vector<FoundInstrument> FindInstruments(
    const TransportRegistry& transports, const std::vector<std::string>& addresses,
    const TimeOuts& timeOuts, const std::atomic<bool>& cancelled);

// The computer that an address leads to: LocalHostName or the host's name.
[[nodiscard]] std::string HostNameOf(const std::string& address);

}  // namespace krv::suite
