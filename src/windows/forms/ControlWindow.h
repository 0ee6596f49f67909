// ControlWindow: the child window of one control, and the mapping of its properties and events both
// ways. It knows the kinds of control, no dialog.
#pragma once

#include <windows.h>

#include "common/forms/Controls.h"
#include "windows/forms/Scale.h"

namespace krv::windows {

class ControlWindow {
 public:
    // Creates the child window; a kind that has nothing to show gets none.
    ControlWindow(forms::Control& control, HWND form, int id);
    ControlWindow(const ControlWindow&) = delete;
    ControlWindow& operator=(const ControlWindow&) = delete;
    // Before the form's window goes, which takes the child windows with it.
    ~ControlWindow();

    [[nodiscard]] HWND Handle() const { return m_handle; }
    [[nodiscard]] forms::Control& Model() const { return m_control; }

    // Brings the window in step with the control's property.
    void Update(forms::PropertyId property);
    void UpdateAll();
    void Layout(const Scale& scale, HFONT font);
    // Visible and enabled follow the control and everything it lies in.
    void UpdateReach();

    // A notification code of WM_COMMAND as the user's input to the control.
    void Deliver(ports::UserInput input, UINT notification);

 private:
    void UpdateText(const std::string& text);
    void UpdateTabStop();
    void UpdateItems();
    void UpdateRange();
    void UpdateProgress(const forms::ProgressBar& bar);
    void DeliverText(ports::UserInput input);

    forms::Control& m_control;
    HWND m_handle = nullptr;
    // The window is being brought in step: what it reports meanwhile is not the user's input.
    bool m_updating = false;
    // Of a progress bar, how many pixels of it are filled; -1 for none that are known.
    long m_drawn = -1;
};

}  // namespace krv::windows
