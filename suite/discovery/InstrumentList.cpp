#include "suite/discovery/InstrumentList.h"

#include <algorithm>

namespace krv::suite {

void InstrumentList::Add(const FoundInstrument& found) {
    m_seen.insert(found.address);
    std::erase_if(m_instruments,
                  [&](const FoundInstrument& each) { return each.address == found.address; });
    m_instruments.insert(std::ranges::upper_bound(m_instruments, found, &ComesBefore), found);
}

void InstrumentList::EndSearch() {
    std::erase_if(m_instruments,
                  [this](const FoundInstrument& each) { return !m_seen.contains(each.address); });
}

}  // namespace krv::suite
