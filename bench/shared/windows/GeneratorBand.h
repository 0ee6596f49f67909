// GeneratorBand: the strip of the main window that shows the command bar "TQL/KRV Signal
// Generator": the toolbar control, and the command bar's own buttons as the control's
// adapter has set them. A click on one of those calls the control, as the add-in's macros do.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <commctrl.h>

#include <functional>
#include <memory>
#include <string>

#include "bench/shared/CommandBarModel.h"
#include "windows/base/Handles.h"
#include "windows/base/WindowClass.h"
#include "windows/container/ControlContainer.h"

namespace krv::bench {

class GeneratorBand : public windows::WindowClass<GeneratorBand> {
 public:
    // The bar outlives the band. Problems are reported as UTF-8 texts for the user.
    GeneratorBand(HWND parent, const CommandBarModel& bar,
                  std::function<void(const std::string& problem)> report);

    [[nodiscard]] int Height() const;
    // Creates the control, in place of the one that there was, and hands it the application; a
    // control that isn't registered is named in the band. `saved` as for ControlContainer.
    void PutControl(IDispatch* application, IDispatch* document, PropertyBag* saved = nullptr);
    // Null when there is none.
    [[nodiscard]] windows::ControlContainer* Control() const { return m_control.get(); }
    // Before the application ends.
    void ReleaseControl() { m_control.reset(); }
    [[nodiscard]] bool TakesMessage(MSG& message) const {
        return m_control != nullptr && m_control->TakesMessage(message);
    }
    void ShowButtons();
    void Move(const RECT& place);

 private:
    friend WindowClass<GeneratorBand>;
    LRESULT HandleMessage(UINT message, WPARAM wide, LPARAM low);
    void Paint();
    void Arrange();
    void Click(int position);
    void GiveToolTip(NMTTDISPINFOW& request);
    [[nodiscard]] int Scaled(int pixels) const;

    const CommandBarModel& m_bar;
    std::function<void(const std::string&)> m_report;
    HWND m_buttons = nullptr;
    windows::Font m_font;
    std::unique_ptr<windows::ControlContainer> m_control;
    // What stands in the control's place when there is none.
    std::string m_notice;
    std::wstring m_toolTip;
};

}  // namespace krv::bench
