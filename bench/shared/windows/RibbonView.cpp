#include "bench/shared/windows/RibbonView.h"

#include <algorithm>
#include <utility>

#include "common/ErrorTrap.h"
#include "windows/base/WideText.h"

namespace krv::bench {

RibbonView::RibbonView(OfficeAutomation& automation, RibbonBand& band,
                       std::function<void()> invalidated,
                       std::function<void(const std::string&)> report)
    : m_automation(automation),
      m_band(band),
      m_invalidated(std::move(invalidated)),
      m_report(std::move(report)) {}

void RibbonView::LoadRibbons() {
    const auto& addIns = m_automation.AddIns();
    std::erase_if(m_ribbons, [&](const auto& entry) {
        return std::none_of(addIns.begin(), addIns.end(), [&](const auto& addIn) {
            return addIn.get() == entry.first && addIn->IsConnected();
        });
    });
    for (const auto& addIn : addIns) {
        if (!addIn->IsConnected() || m_ribbons.count(addIn.get()) != 0) {
            continue;
        }
        auto& ribbon = m_ribbons[addIn.get()];
        const auto failure = FailureOf([&] {
            ribbon = std::make_unique<AddInRibbon>(addIn->Instance(),
                                                   m_automation.shared_from_this(), m_invalidated);
        });
        if (failure) {
            m_report(windows::ToUtf8(addIn->Registered().progId) + ": " + failure->Description());
        }
    }
}

void RibbonView::Refresh() {
    LoadRibbons();
    std::string tab;
    std::vector<BandGroup> groups;
    for (auto& [addIn, ribbon] : m_ribbons) {
        if (!ribbon || ribbon->Tab().empty()) {
            continue;
        }
        tab = ribbon->Tab();
        std::vector<BandGroup> own;
        if (const auto failure = FailureOf([&] { own = ribbon->Groups(); })) {
            m_report(failure->Description());
            // Its windows use it still.
            m_band.Show({}, {});
            ribbon.reset();
        }
        std::move(own.begin(), own.end(), std::back_inserter(groups));
    }
    if (auto bars = BarGroups(); groups.empty() && !bars.empty()) {
        tab = "Add-Ins";
        groups = std::move(bars);
    }
    m_band.Show(tab, std::move(groups));
}

std::vector<BandGroup> RibbonView::BarGroups() const {
    std::vector<BandGroup> groups;
    for (const auto& bar : m_automation.Application().CommandBars()) {
        if (!bar->IsVisible()) {
            continue;
        }
        BandGroup& group = groups.emplace_back(BandGroup{bar->Name(), {}});
        for (std::int32_t position = 1; position <= bar->Count(); ++position) {
            const CommandBarButton& button = bar->At(position);
            group.buttons.push_back({button.caption, button.caption, button.tooltipText,
                                     button.isEnabled, button.isVisible, nullptr,
                                     [bar, position] { (void)bar->Click(position); }});
        }
    }
    return groups;
}

}  // namespace krv::bench
