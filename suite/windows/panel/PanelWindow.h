// PanelWindow: the window of one of the suite's controls: children of the system's classes, laid
// out anew for each size and resolution, and the keyboard between them.
//
// A derived class says which children there are and where, and ends the window in its destructor.
// The apartment's thread.
#pragma once

#include <windows.h>

#include <span>
#include <string>

#include "windows/base/Handles.h"
#include "windows/base/WindowClass.h"

namespace krv::suite {

struct PanelChild {
    int id;
    const wchar_t* windowClass;
    const wchar_t* text;
    DWORD style;
    DWORD extendedStyle;
};

class PanelWindow : public windows::WindowClass<PanelWindow> {
 public:
    // Null when the system refuses it.
    HWND Create(HWND parent, const RECT& place);
    // Does nothing without a window.
    void Relayout();
    // Enter and Tab of the keyboard, as far as they stay in the window, and what else the panel
    // takes.
    bool TakesKey(const MSG& message);

 protected:
    // Both static; the children in tab order.
    PanelWindow(const wchar_t* className, std::span<const PanelChild> children)
        : m_className(className), m_children(children) {}
    virtual ~PanelWindow() = default;

    [[nodiscard]] HWND ChildWindow(int id) const { return GetDlgItem(Handle(), id); }
    void SetText(int id, const std::string& text);
    [[nodiscard]] std::string TextIn(int id) const;

    // In pixels of the window; empty for a child that isn't shown.
    [[nodiscard]] virtual RECT PlaceOf(int child, SIZE size, int dotsPerInch) const = 0;
    // The window and its children are there.
    virtual void Created() = 0;
    // The user sees it for the first time.
    virtual void Shown() {}
    virtual void LaidOut() {}
    virtual void Command(int id, UINT notification) = 0;
    virtual LRESULT Notify(const NMHDR& /*notification*/) { return 0; }
    // A message of the panel's own, from WM_APP on.
    virtual void Posted(UINT /*message*/) {}
    // The child that the window hands the focus to.
    [[nodiscard]] virtual int FirstFocus() const = 0;
    // What Enter does when the focus is on a child that is no button: the button's id.
    [[nodiscard]] virtual int EnterButton(int focusedChild) const = 0;
    // A key besides Enter and Tab.
    virtual bool TakesOtherKey(const MSG& /*message*/) { return false; }

 private:
    friend WindowClass<PanelWindow>;

    LRESULT HandleMessage(UINT message, WPARAM wide, LPARAM low);
    bool MoveFocus(bool backward);

    const wchar_t* const m_className;
    const std::span<const PanelChild> m_children;
    windows::Font m_font;
    bool m_isShown = false;
};

}  // namespace krv::suite
