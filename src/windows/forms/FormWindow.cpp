#include "windows/forms/FormWindow.h"

#include <commctrl.h>

#include <algorithm>
#include <utility>

#include "common/Error.h"
#include "windows/base/DialogFont.h"
#include "windows/base/WideText.h"
#include "windows/com/ThemedScope.h"
#include "windows/forms/ForeignControlContainer.h"
#include "windows/forms/Pictures.h"

namespace krv::windows {
namespace {

using forms::ControlKind;
using forms::PropertyId;

constexpr WindowKind Kind{L"KRVForm"};
// Children aren't clipped: group boxes leave their inside to the form's background.
constexpr DWORD Style = WS_POPUP | WS_CAPTION | WS_SYSMENU;
constexpr DWORD ExtendedStyle = WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT;
// Activation reaches the form after the messages that caused it, never inside them.
constexpr UINT ActivatedMessage = WM_APP + 1;
// Identifiers of child windows start above those that IsDialogMessage uses for itself.
constexpr int FirstControlId = 100;
constexpr int ToolTipWidthTwips = 4500;
// Before per-monitor scaling the message isn't known to the headers' default version.
constexpr UINT DpiChangedMessage = 0x02E0;

bool IsDown(int key) {
    return GetKeyState(key) < 0;
}

}  // namespace

FormWindow::FormWindow(forms::Form& form, FormInput& input) : m_form(form), m_input(input) {
    const ThemedScope themed;
    const std::wstring title = ToWide(form.Caption.Get());
    if (Create(Kind, {.title = title.c_str(), .style = Style, .extendedStyle = ExtendedStyle}) ==
        nullptr) {
        throw Error(ErrorNumber::Unspecified, "The window for " + form.Name() +
                                                  " can't be created: the system is out of window "
                                                  "resources.");
    }
    CreateControls();
    Relayout();
}

void FormWindow::CreateControls() {
    m_toolTips.Create(Handle());
    int id = FirstControlId;
    for (forms::Control* control : m_form.Controls()) {
        m_controls.push_back(std::make_unique<ControlWindow>(*control, Handle(), id++));
        ControlWindow& window = *m_controls.back();
        window.UpdateAll();
        m_toolTips.Add(window);
        if (control->Kind() == ControlKind::Timer) {
            RestartTimer(static_cast<forms::Timer&>(*control));
        }
    }
    GroupOptionButtons();
}

// The arrow keys move within a run of option buttons; each run starts a group, and so does whatever
// follows it.
void FormWindow::GroupOptionButtons() {
    bool inRun = false;
    for (const auto& window : m_controls) {
        if (window->Handle() == nullptr || window->Model().Kind() == ControlKind::Label) {
            continue;
        }
        const bool option = window->Model().Kind() == ControlKind::OptionButton;
        if (option != inRun || !option) {
            const LONG_PTR style = GetWindowLongPtrW(window->Handle(), GWL_STYLE);
            SetWindowLongPtrW(window->Handle(), GWL_STYLE, style | WS_GROUP);
        }
        inRun = option;
    }
}

void FormWindow::Relayout() {
    const Scale scale(DotsPerInch(Handle()));
    // The controls have the former font until they are given this one.
    const Font former = std::exchange(m_font, NewDialogFont(scale.DotsPerInch()));
    const SIZE size = OuterSize();
    SetWindowPos(Handle(), nullptr, 0, 0, size.cx, size.cy,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    for (const auto& window : m_controls) {
        window->Layout(scale, m_font.get());
    }
    m_toolTips.SetWidth(scale.Pixels(ToolTipWidthTwips));
}

SIZE FormWindow::OuterSize() const {
    const Scale scale(DotsPerInch(Handle()));
    RECT outer = scale.Rectangle(m_form.Place, 0, 0);
    AdjustWindowRectEx(&outer, Style, FALSE, ExtendedStyle);
    return {outer.right - outer.left, outer.bottom - outer.top};
}

void FormWindow::Center(HWND owner) {
    const HMONITOR monitor =
        MonitorFromWindow(owner != nullptr ? owner : Handle(), MONITOR_DEFAULTTOPRIMARY);
    MONITORINFO screen{};
    screen.cbSize = sizeof screen;
    GetMonitorInfoW(monitor, &screen);
    RECT around = screen.rcWork;
    if (owner != nullptr && IsIconic(owner) == 0) {
        GetWindowRect(owner, &around);
    }
    const SIZE size = OuterSize();
    const RECT& work = screen.rcWork;
    const LONG left = around.left + (around.right - around.left - size.cx) / 2;
    const LONG top = around.top + (around.bottom - around.top - size.cy) / 2;
    // The title bar stays reachable, also where the form is larger than the screen.
    SetWindowPos(Handle(), nullptr, std::max(work.left, std::min(left, work.right - size.cx)),
                 std::max(work.top, std::min(top, work.bottom - size.cy)), 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void FormWindow::Show(HWND owner) {
    SetWindowLongPtrW(Handle(), GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(owner));
    if (IsWindowVisible(Handle()) == 0) {
        Center(owner);
    }
    if (IsWindowEnabled(Handle()) == 0) {
        // It comes up below a modal window, which keeps the focus.
        ShowWindow(Handle(), SW_SHOWNOACTIVATE);
        return;
    }
    ShowWindow(Handle(), SW_SHOW);
    SetForegroundWindow(Handle());
    if (IsChild(Handle(), GetFocus()) == 0) {
        FocusAChild();
    }
}

// After a message box or another program the focus returns to the control that had it.
void FormWindow::FocusAChild() {
    const bool isLeft = IsChild(Handle(), m_lastFocus) != 0 && IsWindowVisible(m_lastFocus) != 0 &&
                        IsWindowEnabled(m_lastFocus) != 0;
    const HWND child = isLeft ? m_lastFocus : GetNextDlgTabItem(Handle(), nullptr, FALSE);
    if (child != nullptr) {
        SetFocus(child);
    }
}

HWND FormWindow::WindowOf(const forms::Control& control) {
    const ControlWindow* const window = Find(control);
    return window != nullptr ? window->Handle() : nullptr;
}

void FormWindow::Hide() {
    ShowWindow(Handle(), SW_HIDE);
    m_lastFocus = nullptr;
}

void FormWindow::Update(PropertyId property) {
    if (property == PropertyId::Caption) {
        SetWindowTextW(Handle(), ToWide(m_form.Caption.Get()).c_str());
    } else if (property == PropertyId::Place) {
        Relayout();
    }
}

void FormWindow::Update(forms::Control& control, PropertyId property) {
    ControlWindow* const window = Find(control);
    if (control.Kind() == ControlKind::Timer) {
        RestartTimer(static_cast<forms::Timer&>(control));
    } else if (window == nullptr) {
        return;
    } else if (property == PropertyId::Visible || property == PropertyId::Enabled) {
        for (const auto& each : m_controls) {
            each->UpdateReach();
        }
    } else if (property == PropertyId::ToolTipText) {
        m_toolTips.Update(*window);
    } else if (property == PropertyId::Place) {
        Relayout();
    } else {
        window->Update(property);
    }
}

void FormWindow::Repaint() {
    RedrawWindow(Handle(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

void FormWindow::Repaint(forms::Control& control) {
    if (ControlWindow* const window = Find(control); window != nullptr) {
        RedrawWindow(window->Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    }
}

bool FormWindow::TakesMessage(MSG& message) {
    if (message.hwnd != Handle() && IsChild(Handle(), message.hwnd) == 0) {
        return false;
    }
    if ((message.message == WM_KEYDOWN || message.message == WM_SYSKEYDOWN) &&
        m_input.KeyPressed(m_form, static_cast<int>(message.wParam), IsDown(VK_SHIFT),
                           IsDown(VK_CONTROL), IsDown(VK_MENU))) {
        return true;
    }
    return ForeignControlTakes(message) || IsDialogMessageW(Handle(), &message) != 0;
}

// Tab within a control of another maker, Enter in one of its boxes, and whatever else it does with
// keys.
bool FormWindow::ForeignControlTakes(MSG& message) {
    if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST) {
        return false;
    }
    for (const auto& window : m_controls) {
        if (window->Model().Kind() == ControlKind::ForeignControl &&
            IsChild(window->Handle(), message.hwnd) != 0) {
            const auto hosted = static_cast<forms::ForeignControl&>(window->Model()).Object();
            auto* const keys = dynamic_cast<KeyTaker*>(hosted.get());
            return keys != nullptr && keys->TakesKey(message);
        }
    }
    return false;
}

LRESULT FormWindow::HandleMessage(UINT message, WPARAM wide, LPARAM low) {
    switch (message) {
        case WM_ACTIVATE:
            if (LOWORD(wide) != WA_INACTIVE) {
                PostMessageW(Handle(), ActivatedMessage, 0, 0);
            } else if (IsChild(Handle(), GetFocus()) != 0) {
                m_lastFocus = GetFocus();
            }
            break;
        case WM_SETFOCUS:
            FocusAChild();
            return 0;
        case ActivatedMessage:
            m_input.Activated(m_form);
            return 0;
        case WM_CLOSE:
            m_input.Closed(m_form);
            return 0;
        case WM_COMMAND:
            Command(LOWORD(wide), HIWORD(wide));
            return 0;
        case WM_TIMER:
            Fire(wide);
            return 0;
        case WM_CTLCOLORSTATIC:
        case WM_CTLCOLOREDIT:
        case WM_CTLCOLORBTN:
            return ColorOf(reinterpret_cast<HDC>(wide), reinterpret_cast<HWND>(low));
        case WM_DRAWITEM:
            Draw(*reinterpret_cast<const DRAWITEMSTRUCT*>(low));
            return TRUE;
        case DM_GETDEFID:
            return DefaultButton();
        case DpiChangedMessage:
            Relayout();
            return 0;
        case WM_DESTROY:
            // The owner window is being destroyed: ends a modal wait for the form.
            m_form.Hide();
            return 0;
        default:
            break;
    }
    return DefaultMessage(message, wide, low);
}

void FormWindow::RestartTimer(forms::Timer& timer) {
    // A window that went with its owner; the next one starts the timer.
    if (Handle() == nullptr) {
        return;
    }
    const auto id = reinterpret_cast<UINT_PTR>(&timer);
    KillTimer(Handle(), id);
    if (timer.Running()) {
        SetTimer(Handle(), id, static_cast<UINT>(timer.Interval()), nullptr);
    }
}

void FormWindow::Fire(UINT_PTR id) {
    for (forms::Control* control : m_form.Controls()) {
        if (control->Kind() == ControlKind::Timer && reinterpret_cast<UINT_PTR>(control) == id) {
            m_input.Waited(static_cast<forms::Timer&>(*control));
            return;
        }
    }
}

void FormWindow::Command(int id, UINT notification) {
    if (id == IDOK || id == IDCANCEL) {
        PressButton(id == IDCANCEL);
        return;
    }
    const auto index = static_cast<std::size_t>(id - FirstControlId);
    if (id >= FirstControlId && index < m_controls.size()) {
        m_input.Notified(*m_controls[index], notification);
    }
}

// Enter on a form whose focus is on no button presses the default button, Escape the cancel button.
void FormWindow::PressButton(bool cancel) {
    for (const auto& window : m_controls) {
        if (window->Model().Kind() != ControlKind::CommandButton) {
            continue;
        }
        const auto& button = static_cast<const forms::CommandButton&>(window->Model());
        if (cancel ? button.IsCancel : button.IsDefault) {
            m_input.Notified(*window, BN_CLICKED);
            return;
        }
    }
}

LRESULT FormWindow::DefaultButton() const {
    for (std::size_t index = 0; index < m_controls.size(); ++index) {
        const forms::Control& control = m_controls[index]->Model();
        if (control.Kind() == ControlKind::CommandButton &&
            static_cast<const forms::CommandButton&>(control).IsDefault) {
            return MAKELRESULT(FirstControlId + static_cast<int>(index), DC_HASDEFID);
        }
    }
    return 0;
}

LRESULT FormWindow::ColorOf(HDC context, HWND child) {
    const ControlWindow* const window = Find(child);
    if (window == nullptr) {
        return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_BTNFACE));
    }
    const forms::Control& control = window->Model();
    SetTextColor(context, ToColorRef(control.ForeColor));
    SetBkColor(context, ToColorRef(control.BackColor));
    return reinterpret_cast<LRESULT>(m_palette.BrushOf(control.BackColor));
}

void FormWindow::Draw(const DRAWITEMSTRUCT& item) {
    const ControlWindow* const window = Find(item.hwndItem);
    if (window == nullptr) {
        return;
    }
    const bool pressed = (item.itemState & ODS_SELECTED) != 0;
    const bool enabled = (item.itemState & ODS_DISABLED) == 0;
    RECT place = item.rcItem;
    DrawFrameControl(item.hDC, &place, DFC_BUTTON,
                     DFCS_BUTTONPUSH | (pressed ? UINT{DFCS_PUSHED} : 0U));
    const int inset = std::max<int>(3, (place.bottom - place.top) / 6);
    InflateRect(&place, -inset, -inset);
    OffsetRect(&place, pressed ? 1 : 0, pressed ? 1 : 0);
    const auto& button = static_cast<const forms::CommandButton&>(window->Model());
    DrawPicture(item.hDC, place, button.Picture, enabled);
    if ((item.itemState & ODS_FOCUS) != 0) {
        InflateRect(&place, inset - 3, inset - 3);
        DrawFocusRect(item.hDC, &place);
    }
}

ControlWindow* FormWindow::Find(const forms::Control& control) {
    for (const auto& window : m_controls) {
        if (&window->Model() == &control && window->Handle() != nullptr) {
            return window.get();
        }
    }
    return nullptr;
}

ControlWindow* FormWindow::Find(HWND child) {
    for (const auto& window : m_controls) {
        if (window->Handle() == child && child != nullptr) {
            return window.get();
        }
    }
    return nullptr;
}

}  // namespace krv::windows
