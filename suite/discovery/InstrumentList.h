// InstrumentList: the lines of a list that one search after the other fills, in their order.
//
// A line comes when its instrument has answered. What an earlier search has found stays until the
// end of the next one tells that it is gone, so that the list doesn't jump while the user reads it.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "suite/discovery/FoundInstrument.h"

namespace krv::suite {

class InstrumentList {
 public:
    // A search that is under way counts no more.
    void BeginSearch() { m_seen.clear(); }
    void Add(const FoundInstrument& found);
    void EndSearch();

    [[nodiscard]] const std::vector<FoundInstrument>& Instruments() const noexcept {
        return m_instruments;
    }

 private:
    std::vector<FoundInstrument> m_instruments;
    // The addresses that the search has found so far.
    std::set<std::string> m_seen;
};

}  // namespace krv::suite
