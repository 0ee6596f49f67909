#include "suite/windows/panel/PanelWindow.h"

#include <utility>

#include "windows/base/DialogFont.h"
#include "windows/base/DotsPerInch.h"
#include "windows/base/Module.h"
#include "windows/base/WideText.h"
#include "windows/com/ThemedScope.h"

namespace krv::suite {

HWND PanelWindow::Create(HWND parent, const RECT& place) {
    const windows::ThemedScope themed;
    WindowClass::Create({m_className}, {.style = WS_CHILD | WS_CLIPCHILDREN | WS_CLIPSIBLINGS,
                                        .extendedStyle = WS_EX_CONTROLPARENT,
                                        .parent = parent,
                                        .left = place.left,
                                        .top = place.top,
                                        .width = place.right - place.left,
                                        .height = place.bottom - place.top});
    m_isShown = false;
    if (Handle() != nullptr) {
        for (const PanelChild& child : m_children) {
            CreateWindowExW(child.extendedStyle, child.windowClass, child.text,
                            WS_CHILD | WS_VISIBLE | child.style, 0, 0, 0, 0, Handle(),
                            reinterpret_cast<HMENU>(static_cast<INT_PTR>(child.id)),
                            windows::ThisModule(), nullptr);
        }
        Relayout();
        Created();
    }
    return Handle();
}

LRESULT PanelWindow::HandleMessage(UINT message, WPARAM wide, LPARAM low) {
    switch (message) {
        case WM_COMMAND:
            Command(LOWORD(wide), HIWORD(wide));
            return 0;
        case WM_NOTIFY:
            return Notify(*reinterpret_cast<const NMHDR*>(low));
        case WM_SIZE:
        case WM_DPICHANGED_AFTERPARENT:
            Relayout();
            return 0;
        case WM_PAINT:
            // No window is painted before all around it are visible, too.
            if (!std::exchange(m_isShown, true)) {
                Shown();
            }
            break;
        case WM_SETFOCUS:
            SetFocus(ChildWindow(FirstFocus()));
            return 0;
        default:
            break;
    }
    if (message >= WM_APP && message < 0xC000) {
        Posted(message);
        return 0;
    }
    return DefaultMessage(message, wide, low);
}

void PanelWindow::Relayout() {
    if (Handle() == nullptr) {
        return;
    }
    RECT area{};
    GetClientRect(Handle(), &area);
    const int dotsPerInch = static_cast<int>(windows::DotsPerInch(Handle()));
    // The children have the former font until they are given this one.
    const windows::Font former = std::exchange(m_font, windows::NewDialogFont(dotsPerInch));
    for (const PanelChild& child : m_children) {
        const RECT place = PlaceOf(child.id, {area.right, area.bottom}, dotsPerInch);
        const HWND window = ChildWindow(child.id);
        SetWindowPos(window, nullptr, place.left, place.top, place.right - place.left,
                     place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
        SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(m_font.get()), TRUE);
        ShowWindow(window, IsRectEmpty(&place) != 0 ? SW_HIDE : SW_SHOWNA);
    }
    LaidOut();
}

std::string PanelWindow::TextIn(int id) const {
    const HWND child = ChildWindow(id);
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(child)) + 1, L'\0');
    const int length = GetWindowTextW(child, text.data(), static_cast<int>(text.size()));
    text.resize(static_cast<std::size_t>(length));
    return windows::ToUtf8(text);
}

void PanelWindow::SetText(int id, const std::string& text) {
    if (TextIn(id) != text) {
        SetWindowTextW(ChildWindow(id), windows::ToWide(text).c_str());
    }
}

bool PanelWindow::TakesKey(const MSG& message) {
    const HWND focus = GetFocus();
    if (message.message != WM_KEYDOWN || Handle() == nullptr || IsChild(Handle(), focus) == 0) {
        return false;
    }
    if (TakesOtherKey(message)) {
        return true;
    }
    if (message.wParam == VK_TAB) {
        return MoveFocus(GetKeyState(VK_SHIFT) < 0);
    }
    if (message.wParam != VK_RETURN) {
        return false;
    }
    const int id = GetDlgCtrlID(focus);
    const bool isButton =
        (SendMessageW(focus, WM_GETDLGCODE, 0, 0) & (DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON)) != 0;
    Command(isButton ? id : EnterButton(id), BN_CLICKED);
    return true;
}

// At either end the container gets the key.
bool PanelWindow::MoveFocus(bool backward) {
    const HWND focus = GetFocus();
    const HWND first = GetNextDlgTabItem(Handle(), nullptr, FALSE);
    const HWND next = GetNextDlgTabItem(Handle(), focus, backward ? TRUE : FALSE);
    if (next == nullptr || (backward ? focus == first : next == first)) {
        return false;
    }
    SetFocus(next);
    return true;
}

}  // namespace krv::suite
