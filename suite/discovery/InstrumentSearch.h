// InstrumentSearch: finds the instruments that answer in a list of places.
//
// A search looks into all places at once and tries each address as soon as it knows it, each on a
// thread of its own, so that one at which nothing answers delays no other. It takes as long as the
// slowest look and the time-outs of one try at most, and may itself run on any thread.
#pragma once

#include <atomic>
#include <functional>
#include <string>
#include <vector>

#include "common/Error.h"
#include "suite/discovery/FoundInstrument.h"
#include "suite/discovery/SearchPlaces.h"
#include "suite/transport/Transport.h"

namespace krv::suite {

// What is told of a search while it runs, by the thread that runs it.
struct SearchReports {
    // As soon as the instrument has answered.
    std::function<void(const FoundInstrument&)> onFound{};
    // Why there is none at an address, when all is over; without an address, why a place couldn't
    // be looked into.
    std::function<void(const std::string& address, const Error& reason)> onFailure{};
};

// The instruments that answer, in their order. Setting `cancelled` ends the search soon, with
// nothing found; what the watcher of the time-outs throws ends it, too.
std::vector<FoundInstrument> FindInstruments(const TransportRegistry& transports,
                                             const std::vector<SearchPlace>& places,
                                             const TimeOuts& timeOuts,
                                             const std::atomic<bool>& cancelled,
                                             const SearchReports& reports = {});

}  // namespace krv::suite
