// ToolbarWindow: the window of the toolbar control: a push button a toolbar button, so that screen
// readers and other programs find them. The buttons' identifiers are their positions, from 1 on.
//
// Owned by its control; lives with it, with or without a window. The apartment's thread.
#pragma once

#include <windows.h>

#include <functional>
#include <vector>

#include "control/Toolbar.h"
#include "ports/desktop/ControlSurface.h"
#include "windows/base/WindowClass.h"
#include "windows/control/ToolbarPainter.h"

namespace krv::windows {

class ToolbarWindow final : public WindowClass<ToolbarWindow> {
 public:
    // The toolbar outlives this.
    explicit ToolbarWindow(const control::Toolbar& toolbar) : m_toolbar(toolbar) {}
    ~ToolbarWindow() { Destroy(); }

    // The user has pressed a button; it may end the window.
    std::function<void(std::size_t index)> OnClick;

    // Null when the system refuses the window.
    HWND Create(HWND parent, const RECT& place);
    // Brings a button in step with the toolbar.
    void Update(std::size_t index);
    void SetBusyPointer(bool isBusy);
    // The arrow keys and the tab key move between the buttons, Enter presses one. False for keys
    // that lead out of the toolbar and for others.
    bool TakesKey(const MSG& message);

 private:
    friend WindowClass<ToolbarWindow>;

    LRESULT HandleMessage(UINT message, WPARAM wide, LPARAM low);
    LRESULT HandleButtonMessage(HWND button, UINT message, WPARAM wide, LPARAM low);
    void CreateButtons();
    void Relayout();
    void Draw(const DRAWITEMSTRUCT& item) const;
    void TrackMouse(HWND button, bool over);
    bool PressKey(WPARAM key, bool shift);
    bool MoveFocus(bool forward, bool around);
    [[nodiscard]] HWND ButtonAt(std::size_t index) const;
    [[nodiscard]] bool CanFocus(std::size_t index) const;

    const control::Toolbar& m_toolbar;
    HWND m_toolTips = nullptr;
    // The button under the mouse pointer.
    HWND m_hot = nullptr;
    bool m_isBusy = false;
};

}  // namespace krv::windows
