#include "suite/windows/discovery/DiscoveryWindow.h"

#include <windowsx.h>

#include <algorithm>
#include <exception>

#include "suite/windows/discovery/DiscoveryLayout.h"
#include "windows/automation/Module.h"
#include "windows/com/ThemedScope.h"
#include "windows/display/DotsPerInch.h"
#include "windows/text/WideText.h"

namespace krv::suitecom {
namespace {

using windows::ToUtf8;
using windows::ToWide;

constexpr const wchar_t* ClassName = L"CvnDiscoveryWindow";
constexpr UINT SearchDone = WM_APP + 1;
constexpr int PointsOfFont = 8;
constexpr int PointsPerInch = 72;

struct ChildSpec {
    int id;
    const wchar_t* windowClass;
    const wchar_t* text;
    DWORD style;
    DWORD extendedStyle;
};

// In tab order.
constexpr ChildSpec Children[] = {
    {DiscoveryWindow::SupportedLabel, L"STATIC", L"", SS_LEFT | SS_NOPREFIX, 0},
    {DiscoveryWindow::FoundLabel, L"STATIC", L"Instruments &found:", SS_LEFT, 0},
    {DiscoveryWindow::FoundList, L"LISTBOX", L"",
     WS_TABSTOP | WS_VSCROLL | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT, WS_EX_CLIENTEDGE},
    {DiscoveryWindow::SearchButton, L"BUTTON", L"&Search", WS_TABSTOP | BS_PUSHBUTTON, 0},
    {DiscoveryWindow::AddressLabel, L"STATIC", L"&Address:", SS_LEFT | SS_CENTERIMAGE, 0},
    {DiscoveryWindow::AddressBox, L"EDIT", L"", WS_TABSTOP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE},
    {DiscoveryWindow::ConnectButton, L"BUTTON", L"&Connect", WS_TABSTOP | BS_PUSHBUTTON, 0},
    {DiscoveryWindow::DisconnectButton, L"BUTTON", L"&Disconnect", WS_TABSTOP | BS_PUSHBUTTON, 0},
    {DiscoveryWindow::StatusLabel, L"STATIC", L"", SS_LEFT | SS_NOPREFIX, 0},
};

void RegisterWindowClass(WNDPROC procedure) {
    WNDCLASSEXW definition{};
    definition.cbSize = sizeof definition;
    definition.lpfnWndProc = procedure;
    definition.hInstance = windows::ThisModule();
    definition.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    definition.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    definition.lpszClassName = ClassName;
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

std::string TextIn(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    const int length = GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
    text.resize(static_cast<std::size_t>(length));
    return ToUtf8(text);
}

std::string Joined(const std::vector<std::string>& texts) {
    std::string joined;
    for (const std::string& text : texts) {
        joined += (joined.empty() ? "" : ", ") + text;
    }
    return joined;
}

}  // namespace

DiscoveryWindow::~DiscoveryWindow() {
    if (m_window != nullptr) {
        DestroyWindow(m_window);
    }
    if (m_font != nullptr) {
        DeleteObject(m_font);
    }
}

HWND DiscoveryWindow::Create(HWND parent, const RECT& place) {
    const windows::ThemedScope themed;
    RegisterWindowClass(Procedure);
    CreateWindowExW(WS_EX_CONTROLPARENT, ClassName, L"",
                    WS_CHILD | WS_CLIPCHILDREN | WS_CLIPSIBLINGS, place.left, place.top,
                    place.right - place.left, place.bottom - place.top, parent, nullptr,
                    windows::ThisModule(), this);
    if (m_window != nullptr) {
        CreateChildren();
        Relayout();
        Update();
        Search();
    }
    return m_window;
}

void DiscoveryWindow::CreateChildren() {
    for (const ChildSpec& child : Children) {
        CreateWindowExW(child.extendedStyle, child.windowClass, child.text,
                        WS_CHILD | WS_VISIBLE | child.style, 0, 0, 0, 0, m_window,
                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(child.id)),
                        windows::ThisModule(), nullptr);
    }
}

LRESULT CALLBACK DiscoveryWindow::Procedure(HWND window, UINT message, WPARAM wide, LPARAM low) {
    if (message == WM_NCCREATE) {
        auto* const creation = reinterpret_cast<CREATESTRUCTW*>(low);
        auto* const created = static_cast<DiscoveryWindow*>(creation->lpCreateParams);
        created->m_window = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created));
    }
    auto* const self = reinterpret_cast<DiscoveryWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
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

LRESULT DiscoveryWindow::Handle(UINT message, WPARAM wide, LPARAM low) {
    switch (message) {
        case WM_COMMAND:
            Command(LOWORD(wide), HIWORD(wide));
            return 0;
        case WM_SIZE:
        case WM_DPICHANGED_AFTERPARENT:
            Relayout();
            return 0;
        case SearchDone:
            ShowFound();
            return 0;
        case WM_SETFOCUS:
            SetFocus(Child(AddressBox));
            return 0;
        default:
            return DefWindowProcW(m_window, message, wide, low);
    }
}

void DiscoveryWindow::Relayout() {
    if (m_window == nullptr) {
        return;
    }
    RECT area{};
    GetClientRect(m_window, &area);
    const int dotsPerInch = static_cast<int>(windows::DotsPerInch(m_window));
    const HFONT previous = m_font;
    m_font = MakeFont(dotsPerInch);
    const DiscoveryLayout layout({area.right, area.bottom}, dotsPerInch, m_view.buttonsVisible,
                                 m_view.supportedVisible);
    for (const ChildSpec& child : Children) {
        const RECT place = layout.PlaceOf(child.id);
        const HWND window = Child(child.id);
        SetWindowPos(window, nullptr, place.left, place.top, place.right - place.left,
                     place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
        SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(m_font), TRUE);
        ShowWindow(window, IsRectEmpty(&place) != 0 ? SW_HIDE : SW_SHOWNA);
    }
    if (previous != nullptr) {
        DeleteObject(previous);
    }
}

void DiscoveryWindow::Update() {
    if (m_window == nullptr) {
        return;
    }
    m_updating = true;
    SetText(SupportedLabel, m_view.supportedModels.empty()
                                ? std::string()
                                : "Supported instruments: " + Joined(m_view.supportedModels));
    SetText(AddressBox, m_view.address);
    SetText(StatusLabel, m_view.status);
    // A disabled window would keep the focus from the keyboard.
    if (!m_view.connected && GetFocus() == Child(DisconnectButton)) {
        SetFocus(Child(AddressBox));
    }
    EnableWindow(Child(ConnectButton), m_view.address.empty() ? FALSE : TRUE);
    EnableWindow(Child(DisconnectButton), m_view.connected ? TRUE : FALSE);
    UpdateWindow(m_window);
    m_updating = false;
}

void DiscoveryWindow::SetText(int id, const std::string& text) {
    if (TextIn(Child(id)) != text) {
        SetWindowTextW(Child(id), ToWide(text).c_str());
    }
}

void DiscoveryWindow::Command(int id, UINT notification) {
    if (id == ConnectButton && notification == BN_CLICKED) {
        m_actions.ConnectClicked();
    } else if (id == DisconnectButton && notification == BN_CLICKED) {
        m_actions.DisconnectClicked();
    } else if (id == SearchButton && notification == BN_CLICKED) {
        Search();
    } else if (id == AddressBox && notification == EN_CHANGE && !m_updating) {
        m_actions.AddressEntered(TextIn(Child(AddressBox)));
    } else if (id == FoundList && notification == LBN_SELCHANGE) {
        TakeSelectedAddress();
    } else if (id == FoundList && notification == LBN_DBLCLK) {
        TakeSelectedAddress();
        m_actions.ConnectClicked();
    }
}

void DiscoveryWindow::Search() {
    SetText(FoundLabel, "Looking for instruments...");
    m_search.Start(server::CandidateAddresses(m_view.hostName), m_window, SearchDone);
}

void DiscoveryWindow::ShowFound() {
    m_found = m_search.TakeResult();
    const HWND list = Child(FoundList);
    ListBox_ResetContent(list);
    for (const server::FoundInstrument& instrument : m_found) {
        ListBox_AddString(list, ToWide(Entry(instrument)).c_str());
    }
    SetText(FoundLabel, "Instruments &found:");
}

std::string DiscoveryWindow::Entry(const server::FoundInstrument& instrument) const {
    const auto& models = m_view.supportedModels;
    const bool isSupported =
        models.empty() || std::find(models.begin(), models.end(), instrument.model) != models.end();
    return instrument.address + "  (" + instrument.model + (isSupported ? ")" : ", not supported)");
}

void DiscoveryWindow::TakeSelectedAddress() {
    const int selected = ListBox_GetCurSel(Child(FoundList));
    if (selected >= 0 && static_cast<std::size_t>(selected) < m_found.size()) {
        m_actions.AddressEntered(m_found[static_cast<std::size_t>(selected)].address);
    }
}

bool DiscoveryWindow::TakesKey(const MSG& message) {
    const HWND focus = GetFocus();
    if (message.message != WM_KEYDOWN || m_window == nullptr || IsChild(m_window, focus) == 0) {
        return false;
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
    Command(isButton ? id : static_cast<int>(ConnectButton), BN_CLICKED);
    return true;
}

// At either end the key is the container's.
bool DiscoveryWindow::MoveFocus(bool backward) {
    const HWND focus = GetFocus();
    const HWND first = GetNextDlgTabItem(m_window, nullptr, FALSE);
    const HWND next = GetNextDlgTabItem(m_window, focus, backward ? TRUE : FALSE);
    if (next == nullptr || (backward ? focus == first : next == first)) {
        return false;
    }
    SetFocus(next);
    return true;
}

}  // namespace krv::suitecom
