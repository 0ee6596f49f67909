// AddInRibbon: the part of the ribbon that one connected add-in describes, with what its callbacks
// say. As in an Office application, one fault drops all of it: a description that isn't valid, a
// callback that is missing, fails or gives something of another kind. The user-interface thread's.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <comdef.h>
#include <ocidl.h>
#include <wrl/client.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "bench/shared/RibbonText.h"
#include "bench/shared/windows/OfficeAutomation.h"
#include "bench/shared/windows/RibbonBand.h"

namespace krv::bench {

class AddInRibbon {
 public:
    // Asks the add-in for its ribbon, and loads that. `invalidated` is called when the add-in wants
    // to be asked again; it outlives this. Throws Error for a fault. An add-in without a ribbon has
    // no tabs.
    AddInRibbon(IUnknown* addIn, std::shared_ptr<OfficeAutomation> automation,
                std::function<void()> invalidated);
    AddInRibbon(const AddInRibbon&) = delete;
    AddInRibbon& operator=(const AddInRibbon&) = delete;
    ~AddInRibbon();

    // The first tab's label; empty without one.
    [[nodiscard]] std::string Tab() const;
    // Asks the callbacks. The pictures are there until the next call. Throws Error for a fault.
    [[nodiscard]] std::vector<BandGroup> Groups();

 private:
    class RibbonUi;

    [[nodiscard]] BandButton Shown(const RibbonButton& button);
    // A result of the kind; the attribute's own value where there is no callback for it.
    [[nodiscard]] std::string TextOf(const RibbonButton& button, const std::string& attribute,
                                     const std::string& callback) const;
    [[nodiscard]] bool FlagOf(const RibbonButton& button, const std::string& attribute,
                              const std::string& callback) const;
    void TakePicture(const RibbonButton& button, BandButton& shown);
    [[nodiscard]] _variant_t Call(const std::string& callback, IDispatch* argument,
                                  VARTYPE kind) const;
    [[nodiscard]] OfficeAutomation::Object ControlOf(const RibbonButton& button) const;
    void Click(const RibbonButton& button) const;

    Microsoft::WRL::ComPtr<IDispatch> m_addIn;
    std::shared_ptr<OfficeAutomation> m_automation;
    RibbonDescription m_description;
    Microsoft::WRL::ComPtr<RibbonUi> m_ui;
    std::vector<Microsoft::WRL::ComPtr<IPicture>> m_pictures;
};

}  // namespace krv::bench
