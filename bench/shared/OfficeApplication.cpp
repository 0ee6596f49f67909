#include "bench/shared/OfficeApplication.h"

#include <utility>

namespace krv::bench {
namespace {

// As the add-in's command bar has them, in its order.
const std::vector<std::string> GeneratorCaptions{
    "Corvane TQL/KRV", "Connect", "Connected", "Settings", "PutData", "GetImage", "Help"};

}  // namespace

OfficeApplication::OfficeApplication()
    : m_generatorBar(GeneratorBarName, GeneratorCaptions, [this] { OnCommandBarsChanged(); }) {}

void OfficeApplication::SetStatus(std::optional<std::string> text) {
    if (m_status != text) {
        m_status = std::move(text);
        OnStatusBarChanged();
    }
}

void OfficeApplication::DisplayStatusBar(bool isDisplayed) {
    if (m_isStatusBarDisplayed != isDisplayed) {
        m_isStatusBarDisplayed = isDisplayed;
        OnStatusBarChanged();
    }
}

}  // namespace krv::bench
