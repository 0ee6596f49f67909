#include "windows/control/ToolbarWindow.h"

#include <commctrl.h>

#include <utility>

#include "windows/automation/Module.h"
#include "windows/base/DotsPerInch.h"
#include "windows/base/WideText.h"
#include "windows/base/WindowName.h"
#include "windows/com/ThemedScope.h"

namespace krv::windows {
namespace {

constexpr const wchar_t* ClassName = L"KRVToolbar";
constexpr int FirstButtonId = 1;
// A child window's resolution has changed with its parent's; not known to the headers' version.
constexpr UINT DpiChangedAfterParentMessage = 0x02E3;

void RegisterToolbarClass(WNDPROC procedure) {
    WNDCLASSEXW definition{};
    definition.cbSize = sizeof definition;
    definition.lpfnWndProc = procedure;
    definition.hInstance = ThisModule();
    definition.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    definition.lpszClassName = ClassName;
    // Fails harmlessly from the second toolbar on.
    RegisterClassExW(&definition);
}

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

ToolbarWindow::~ToolbarWindow() {
    if (m_handle != nullptr) {
        DestroyWindow(m_handle);
    }
}

HWND ToolbarWindow::Create(HWND parent, const RECT& place) {
    const ThemedScope themed;
    RegisterToolbarClass(WindowProcedure);
    CreateWindowExW(WS_EX_CONTROLPARENT, ClassName, L"", WS_CHILD | WS_CLIPCHILDREN, place.left,
                    place.top, place.right - place.left, place.bottom - place.top, parent, nullptr,
                    ThisModule(), this);
    if (m_handle != nullptr) {
        CreateButtons();
        Relayout();
    }
    return m_handle;
}

void ToolbarWindow::CreateButtons() {
    m_toolTips =
        CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                        WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP, CW_USEDEFAULT, CW_USEDEFAULT,
                        CW_USEDEFAULT, CW_USEDEFAULT, m_handle, nullptr, ThisModule(), nullptr);
    for (std::size_t index = 0; index < m_toolbar.ButtonCount(); ++index) {
        const auto id = static_cast<INT_PTR>(index) + FirstButtonId;
        const HWND button =
            CreateWindowExW(0, WC_BUTTONW, L"", WS_CHILD | WS_TABSTOP | BS_OWNERDRAW, 0, 0, 0, 0,
                            m_handle, reinterpret_cast<HMENU>(id), ThisModule(), nullptr);
        SetWindowSubclass(button, ButtonProcedure, 0, reinterpret_cast<DWORD_PTR>(this));
        AddWindowName(button, m_toolbar.Button(index).Key);
        std::wstring text;
        const TTTOOLINFOW tool = ToolOf(m_handle, button, text);
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
    const TTTOOLINFOW tool = ToolOf(m_handle, button, text);
    SendMessageW(m_toolTips, TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&tool));
    if (GetFocus() == button && !(state.Enabled && state.Visible)) {
        SetFocus(m_handle);
    }
    EnableWindow(button, state.Enabled);
    Relayout();
    InvalidateRect(button, nullptr, TRUE);
}

void ToolbarWindow::Relayout() {
    RECT place{};
    GetClientRect(m_handle, &place);
    const auto places = PlaceButtons(m_toolbar, place, static_cast<int>(DotsPerInch(m_handle)));
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
    if (m_handle == nullptr || GetCursorPos(&position) == 0) {
        return;
    }
    const HWND under = WindowFromPoint(position);
    if (under == m_handle || IsChild(m_handle, under) != 0) {
        SetCursor(LoadCursorW(nullptr, isBusy ? IDC_WAIT : IDC_ARROW));
    }
}

LRESULT CALLBACK ToolbarWindow::WindowProcedure(HWND window, UINT message, WPARAM wide,
                                                LPARAM low) {
    if (message == WM_NCCREATE) {
        const auto* creation = reinterpret_cast<const CREATESTRUCTW*>(low);
        auto* created = static_cast<ToolbarWindow*>(creation->lpCreateParams);
        created->m_handle = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created));
    }
    auto* const self = reinterpret_cast<ToolbarWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self == nullptr) {
        return DefWindowProcW(window, message, wide, low);
    }
    if (message == WM_NCDESTROY) {
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        self->m_handle = nullptr;
        self->m_hot = nullptr;
        return DefWindowProcW(window, message, wide, low);
    }
    return self->Handle(message, wide, low);
}

LRESULT ToolbarWindow::Handle(UINT message, WPARAM wide, LPARAM low) {
    switch (message) {
        case WM_DESTROY:
            for (std::size_t index = 0; index < m_toolbar.ButtonCount(); ++index) {
                RemoveWindowName(ButtonAt(index), m_toolbar.Button(index).Key);
            }
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
            InvalidateRect(m_handle, nullptr, TRUE);
            return 0;
        default:
            return DefWindowProcW(m_handle, message, wide, low);
    }
}

LRESULT CALLBACK ToolbarWindow::ButtonProcedure(HWND button, UINT message, WPARAM wide, LPARAM low,
                                                UINT_PTR id, DWORD_PTR data) {
    auto* const self = reinterpret_cast<ToolbarWindow*>(data);
    switch (message) {
        case WM_MOUSEMOVE:
            self->TrackMouse(button, true);
            break;
        case WM_MOUSELEAVE:
            self->TrackMouse(button, false);
            break;
        case WM_GETDLGCODE:
            return DefSubclassProc(button, message, wide, low) | DLGC_WANTARROWS;
        case WM_KEYDOWN:
            if (wide != VK_TAB && self->PressKey(wide, false)) {
                return 0;
            }
            break;
        case WM_NCDESTROY:
            RemoveWindowSubclass(button, ButtonProcedure, id);
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
            if (const HWND button = GetFocus(); GetParent(button) == m_handle) {
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
        GetParent(focus) == m_handle ? GetDlgCtrlID(focus) - FirstButtonId : (forward ? -1 : count);
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
    return m_handle == nullptr ? nullptr
                               : GetDlgItem(m_handle, static_cast<int>(index) + FirstButtonId);
}

bool ToolbarWindow::CanFocus(std::size_t index) const {
    return m_toolbar.Button(index).Enabled && m_toolbar.Button(index).Visible;
}

}  // namespace krv::windows
