// RibbonView: what the band of the main window shows: the ribbon of the add-ins, or else the
// buttons of the visible command bars, as an Office application shows those. The user-interface
// thread's.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "bench/shared/windows/AddInRibbon.h"
#include "bench/shared/windows/ComAddIn.h"
#include "bench/shared/windows/OfficeAutomation.h"
#include "bench/shared/windows/RibbonBand.h"

namespace krv::bench {

class RibbonView {
 public:
    // Band and automation outlive this. `invalidated` asks for a Refresh when the program has time;
    // faults are reported as text.
    RibbonView(OfficeAutomation& automation, RibbonBand& band, std::function<void()> invalidated,
               std::function<void(const std::string&)> report);
    RibbonView(const RibbonView&) = delete;
    RibbonView& operator=(const RibbonView&) = delete;

    // Loads the ribbons of add-ins that have been connected, and shows all as it is now.
    void Refresh();

 private:
    void LoadRibbons();
    [[nodiscard]] std::vector<BandGroup> BarGroups() const;

    OfficeAutomation& m_automation;
    RibbonBand& m_band;
    std::function<void()> m_invalidated;
    std::function<void(const std::string&)> m_report;
    // Null for a ribbon that was dropped.
    std::map<const ComAddIn*, std::unique_ptr<AddInRibbon>> m_ribbons;
};

}  // namespace krv::bench
