// SearchPlaces: where instruments may be, in the order in which they are listed.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "suite/discovery/AddressTaker.h"
#include "suite/transport/Transport.h"

namespace krv::suite {

// Stands for this computer where settings name the computer that an instrument is attached to.
inline constexpr const char* LocalComputer = "My Computer";

// The computer that an address leads to: its name or number, or LocalComputer.
[[nodiscard]] std::string ComputerOf(const std::string& address);

// An address to try, or a way to come by some.
struct SearchPlace {
    // Runs on any thread, and hands over each address as soon as it has it. It may take seconds,
    // and ends soon when the watcher throws.
    using Look = std::function<void(const AddressTaker& take, WaitWatcher& watcher)>;

    std::string address{};
    // Counts instead of the address where there is one.
    Look look{};
};

[[nodiscard]] std::vector<SearchPlace> PlacesAt(const std::vector<std::string>& addresses);

// Those worth a try: the usual port of SCPI instruments on this computer and on the given one, what
// has announced itself on this computer, what the VISA library of this file or name lists (the
// installed one where the name is empty), what announces itself in the network, and one in process
// of each model. The given one has the place GivenComputer.
inline constexpr std::size_t GivenComputer = 1;
[[nodiscard]] std::vector<SearchPlace> UsualPlaces(const std::string& computer,
                                                   const std::string& visaLibrary);

}  // namespace krv::suite
