// FormToolTips: the tool tips of a form's controls. Owned by the form's window, whose end ends the
// tips' window.
#pragma once

#include <windows.h>

#include "windows/forms/ControlWindow.h"

namespace krv::windows {

class FormToolTips {
 public:
    void Create(HWND form);
    // Each does nothing for a control without a window.
    void Add(const ControlWindow& control) const;
    void Update(const ControlWindow& control) const;
    // In pixels; longer texts are broken.
    void SetWidth(int width) const;

 private:
    void Send(UINT message, const ControlWindow& control) const;

    HWND m_form = nullptr;
    HWND m_tips = nullptr;
};

}  // namespace krv::windows
