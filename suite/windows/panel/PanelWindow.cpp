#include "suite/windows/panel/PanelWindow.h"

#include <exception>

#include "windows/automation/Module.h"
#include "windows/base/DotsPerInch.h"
#include "windows/base/WideText.h"
#include "windows/com/ThemedScope.h"

namespace krv::suite {
namespace {

constexpr int PointsOfFont = 8;
constexpr int PointsPerInch = 72;

void RegisterWindowClass(const wchar_t* name, WNDPROC procedure) {
    WNDCLASSEXW definition{};
    definition.cbSize = sizeof definition;
    definition.lpfnWndProc = procedure;
    definition.hInstance = windows::ThisModule();
    definition.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    definition.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    definition.lpszClassName = name;
    // Fails harmlessly from the second window on.
    RegisterClassExW(&definition);
}

HFONT MakeFont(int dotsPerInch) {
    LOGFONTW font{};
    font.lfHeight = -MulDiv(PointsOfFont, dotsPerInch, PointsPerInch);
    font.lfWeight = FW_NORMAL;
    font.lfCharSet = DEFAULT_CHARSET;
    font.lfQuality = CLEARTYPE_QUALITY;
    lstrcpynW(font.lfFaceName, L"MS Shell Dlg 2", LF_FACESIZE);
    return CreateFontIndirectW(&font);
}

}  // namespace

void PanelWindow::Destroy() {
    if (m_window != nullptr) {
        DestroyWindow(m_window);
    }
    if (m_font != nullptr) {
        DeleteObject(m_font);
    }
}

HWND PanelWindow::Create(HWND parent, const RECT& place) {
    const windows::ThemedScope themed;
    RegisterWindowClass(m_className, Procedure);
    CreateWindowExW(WS_EX_CONTROLPARENT, m_className, L"",
                    WS_CHILD | WS_CLIPCHILDREN | WS_CLIPSIBLINGS, place.left, place.top,
                    place.right - place.left, place.bottom - place.top, parent, nullptr,
                    windows::ThisModule(), this);
    if (m_window != nullptr) {
        for (const PanelChild& child : m_children) {
            CreateWindowExW(child.extendedStyle, child.windowClass, child.text,
                            WS_CHILD | WS_VISIBLE | child.style, 0, 0, 0, 0, m_window,
                            reinterpret_cast<HMENU>(static_cast<INT_PTR>(child.id)),
                            windows::ThisModule(), nullptr);
        }
        Relayout();
        Created();
    }
    return m_window;
}

LRESULT CALLBACK PanelWindow::Procedure(HWND window, UINT message, WPARAM wide, LPARAM low) {
    if (message == WM_NCCREATE) {
        auto* const creation = reinterpret_cast<CREATESTRUCTW*>(low);
        auto* const created = static_cast<PanelWindow*>(creation->lpCreateParams);
        created->m_window = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created));
    }
    auto* const self = reinterpret_cast<PanelWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self == nullptr) {
        return DefWindowProcW(window, message, wide, low);
    }
    if (message == WM_NCDESTROY) {
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        self->m_window = nullptr;
        return DefWindowProcW(window, message, wide, low);
    }
    try {
        return self->Handle(message, wide, low);
    } catch (const std::exception&) {
        // Out of memory or threads: the window stays as it was, and nothing may leave a procedure.
        return 0;
    }
}

LRESULT PanelWindow::Handle(UINT message, WPARAM wide, LPARAM low) {
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
    return DefWindowProcW(m_window, message, wide, low);
}

void PanelWindow::Relayout() {
    if (m_window == nullptr) {
        return;
    }
    RECT area{};
    GetClientRect(m_window, &area);
    const int dotsPerInch = static_cast<int>(windows::DotsPerInch(m_window));
    const HFONT previous = m_font;
    m_font = MakeFont(dotsPerInch);
    for (const PanelChild& child : m_children) {
        const RECT place = PlaceOf(child.id, {area.right, area.bottom}, dotsPerInch);
        const HWND window = ChildWindow(child.id);
        SetWindowPos(window, nullptr, place.left, place.top, place.right - place.left,
                     place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
        SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(m_font), TRUE);
        ShowWindow(window, IsRectEmpty(&place) != 0 ? SW_HIDE : SW_SHOWNA);
    }
    LaidOut();
    if (previous != nullptr) {
        DeleteObject(previous);
    }
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
    if (message.message != WM_KEYDOWN || m_window == nullptr || IsChild(m_window, focus) == 0) {
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

// At either end the key is the container's.
bool PanelWindow::MoveFocus(bool backward) {
    const HWND focus = GetFocus();
    const HWND first = GetNextDlgTabItem(m_window, nullptr, FALSE);
    const HWND next = GetNextDlgTabItem(m_window, focus, backward ? TRUE : FALSE);
    if (next == nullptr || (backward ? focus == first : next == first)) {
        return false;
    }
    SetFocus(next);
    return true;
}

}  // namespace krv::suite
