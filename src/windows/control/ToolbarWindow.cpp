#include "windows/control/ToolbarWindow.h"

#include <commctrl.h>

#include <utility>

#include "windows/base/DotsPerInch.h"
#include "windows/base/Module.h"
#include "windows/base/WideText.h"
#include "windows/base/WindowHook.h"
#include "windows/base/WindowName.h"
#include "windows/com/ThemedScope.h"

namespace krv::windows {
namespace {

constexpr WindowKind Kind{L"KRVToolbar"};
constexpr int FirstButtonId = 1;
// A child window's resolution has changed with its parent's; not known to the headers' version.
constexpr UINT DpiChangedAfterParentMessage = 0x02E3;

TTTOOLINFOW ToolOf(HWND window, HWND button, std::wstring& text) {
    TTTOOLINFOW tool{};
    tool.cbSize = sizeof tool;
    tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    tool.hwnd = window;
    tool.uId = reinterpret_cast<UINT_PTR>(button);
    tool.lpszText = text.data();
    return tool;
}

}  // namespace

HWND ToolbarWindow::Create(HWND parent, const RECT& place) {
    const ThemedScope themed;
    WindowClass::Create(Kind, {.style = WS_CHILD | WS_CLIPCHILDREN,
                               .extendedStyle = WS_EX_CONTROLPARENT,
                               .parent = parent,
                               .left = place.left,
                               .top = place.top,
                               .width = place.right - place.left,
                               .height = place.bottom - place.top});
    if (Handle() != nullptr) {
        CreateButtons();
        Relayout();
    }
    return Handle();
}

void ToolbarWindow::CreateButtons() {
    m_toolTips =
        CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                        WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP, CW_USEDEFAULT, CW_USEDEFAULT,
                        CW_USEDEFAULT, CW_USEDEFAULT, Handle(), nullptr, ThisModule(), nullptr);
    for (std::size_t index = 0; index < m_toolbar.ButtonCount(); ++index) {
        const auto id = static_cast<INT_PTR>(index) + FirstButtonId;
        const HWND button =
            CreateWindowExW(0, WC_BUTTONW, L"", WS_CHILD | WS_TABSTOP | BS_OWNERDRAW, 0, 0, 0, 0,
                            Handle(), reinterpret_cast<HMENU>(id), ThisModule(), nullptr);
        WindowHook<&ToolbarWindow::HandleButtonMessage>::Attach(button, *this);
        AddWindowName(button, m_toolbar.Button(index).Key);
        std::wstring text;
        const TTTOOLINFOW tool = ToolOf(Handle(), button, text);
        SendMessageW(m_toolTips, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
        Update(index);
    }
}

void ToolbarWindow::Update(std::size_t index) {
    const HWND button = ButtonAt(index);
    if (button == nullptr) {
        return;
    }
    const control::ToolbarButton& state = m_toolbar.Button(index);
    // What a screen reader reads out is what the tool tip says.
    std::wstring text = ToWide(state.ToolTipText);
    SetWindowTextW(button, text.c_str());
    const TTTOOLINFOW tool = ToolOf(Handle(), button, text);
    SendMessageW(m_toolTips, TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&tool));
    if (GetFocus() == button && !(state.Enabled && state.Visible)) {
        SetFocus(Handle());
    }
    EnableWindow(button, state.Enabled);
    Relayout();
    InvalidateRect(button, nullptr, TRUE);
}

void ToolbarWindow::Relayout() {
    RECT place{};
    GetClientRect(Handle(), &place);
    const auto places = PlaceButtons(m_toolbar, place, static_cast<int>(DotsPerInch(Handle())));
    for (std::size_t index = 0; index < places.size(); ++index) {
        const HWND button = ButtonAt(index);
        if (places[index]) {
            const RECT& own = *places[index];
            SetWindowPos(button, nullptr, own.left, own.top, own.right - own.left,
                         own.bottom - own.top, SWP_NOZORDER | SWP_NOACTIVATE | SWP_SHOWWINDOW);
        } else {
            ShowWindow(button, SW_HIDE);
        }
    }
}

void ToolbarWindow::SetBusyPointer(bool isBusy) {
    m_isBusy = isBusy;
    POINT position{};
    if (Handle() == nullptr || GetCursorPos(&position) == 0) {
        return;
    }
    const HWND under = WindowFromPoint(position);
    if (under == Handle() || IsChild(Handle(), under) != 0) {
        SetCursor(LoadCursorW(nullptr, isBusy ? IDC_WAIT : IDC_ARROW));
    }
}

LRESULT ToolbarWindow::HandleMessage(UINT message, WPARAM wide, LPARAM low) {
    switch (message) {
        case WM_DESTROY:
            for (std::size_t index = 0; index < m_toolbar.ButtonCount(); ++index) {
                RemoveWindowName(ButtonAt(index), m_toolbar.Button(index).Key);
            }
            m_hot = nullptr;
            return 0;
        case WM_COMMAND:
            if (HIWORD(wide) == BN_CLICKED && LOWORD(wide) >= FirstButtonId) {
                // Last, since the click may end the window and what it belongs to.
                const auto click = OnClick;
                click(static_cast<std::size_t>(LOWORD(wide) - FirstButtonId));
            }
            return 0;
        case WM_DRAWITEM:
            Draw(*reinterpret_cast<const DRAWITEMSTRUCT*>(low));
            return TRUE;
        case WM_SETCURSOR:
            SetCursor(LoadCursorW(nullptr, m_isBusy ? IDC_WAIT : IDC_ARROW));
            return TRUE;
        case WM_SETFOCUS:
            MoveFocus(true, false);
            return 0;
        case WM_SIZE:
        case DpiChangedAfterParentMessage:
            Relayout();
            InvalidateRect(Handle(), nullptr, TRUE);
            return 0;
        default:
            return DefaultMessage(message, wide, low);
    }
}

LRESULT ToolbarWindow::HandleButtonMessage(HWND button, UINT message, WPARAM wide, LPARAM low) {
    switch (message) {
        case WM_MOUSEMOVE:
            TrackMouse(button, true);
            break;
        case WM_MOUSELEAVE:
            TrackMouse(button, false);
            break;
        case WM_GETDLGCODE:
            return DefSubclassProc(button, message, wide, low) | DLGC_WANTARROWS;
        case WM_KEYDOWN:
            if (wide != VK_TAB && PressKey(wide, false)) {
                return 0;
            }
            break;
        default:
            break;
    }
    return DefSubclassProc(button, message, wide, low);
}

void ToolbarWindow::TrackMouse(HWND button, bool over) {
    const HWND hot = over ? button : nullptr;
    if (m_hot == hot) {
        return;
    }
    const HWND cold = std::exchange(m_hot, hot);
    InvalidateRect(cold != nullptr ? cold : button, nullptr, FALSE);
    if (over) {
        InvalidateRect(button, nullptr, FALSE);
        TRACKMOUSEEVENT leaving{sizeof leaving, TME_LEAVE, button, 0};
        TrackMouseEvent(&leaving);
    }
}

void ToolbarWindow::Draw(const DRAWITEMSTRUCT& item) const {
    const auto index = static_cast<std::size_t>(item.CtlID - FirstButtonId);
    if (index < m_toolbar.ButtonCount()) {
        DrawButton(item.hDC, item.rcItem, m_toolbar.Button(index),
                   {m_hot == item.hwndItem, (item.itemState & ODS_SELECTED) != 0,
                    (item.itemState & ODS_FOCUS) != 0});
    }
}

bool ToolbarWindow::TakesKey(const MSG& message) {
    return message.message == WM_KEYDOWN && PressKey(message.wParam, GetKeyState(VK_SHIFT) < 0);
}

bool ToolbarWindow::PressKey(WPARAM key, bool shift) {
    switch (key) {
        case VK_RIGHT:
        case VK_DOWN:
            return MoveFocus(true, true);
        case VK_LEFT:
        case VK_UP:
            return MoveFocus(false, true);
        case VK_TAB:
            return MoveFocus(!shift, false);
        case VK_RETURN:
            if (const HWND button = GetFocus(); GetParent(button) == Handle()) {
                SendMessageW(button, BM_CLICK, 0, 0);
                return true;
            }
            return false;
        default:
            return false;
    }
}

bool ToolbarWindow::MoveFocus(bool forward, bool around) {
    const int count = static_cast<int>(m_toolbar.ButtonCount());
    const HWND focus = GetFocus();
    int index =
        GetParent(focus) == Handle() ? GetDlgCtrlID(focus) - FirstButtonId : (forward ? -1 : count);
    for (int step = 0; step < count; ++step) {
        index += forward ? 1 : -1;
        if (around) {
            index = (index + count) % count;
        }
        if (index < 0 || index >= count) {
            return false;
        }
        if (CanFocus(static_cast<std::size_t>(index))) {
            SetFocus(ButtonAt(static_cast<std::size_t>(index)));
            return true;
        }
    }
    return false;
}

HWND ToolbarWindow::ButtonAt(std::size_t index) const {
    return Handle() == nullptr ? nullptr
                               : GetDlgItem(Handle(), static_cast<int>(index) + FirstButtonId);
}

bool ToolbarWindow::CanFocus(std::size_t index) const {
    return m_toolbar.Button(index).Enabled && m_toolbar.Button(index).Visible;
}

}  // namespace krv::windows
