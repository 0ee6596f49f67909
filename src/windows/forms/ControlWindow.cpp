#include "windows/forms/ControlWindow.h"

#include <commctrl.h>

#include <cmath>

#include "windows/base/Module.h"
#include "windows/base/WideText.h"
#include "windows/base/WindowName.h"
#include "windows/forms/ListViewWindow.h"

namespace krv::windows {
namespace {

using forms::ControlKind;
using forms::PropertyId;

struct NativeControl {
    const wchar_t* className;
    DWORD style;
    DWORD extendedStyle;
};

DWORD TextBoxStyle(const forms::TextBox& box) {
    if (box.MultiLine) {
        return ES_LEFT | ES_MULTILINE | ES_AUTOVSCROLL;
    }
    return ES_LEFT | ES_AUTOHSCROLL;
}

NativeControl KindOf(const forms::Control& control) {
    switch (control.Kind()) {
        case ControlKind::Label:
            return {WC_STATICW, SS_LEFT | SS_NOPREFIX | SS_NOTIFY, 0};
        case ControlKind::Frame:
            return {WC_BUTTONW, BS_GROUPBOX, 0};
        case ControlKind::TextBox: {
            const auto& box = static_cast<const forms::TextBox&>(control);
            return {WC_EDITW, TextBoxStyle(box), box.HasBorder ? DWORD{WS_EX_CLIENTEDGE} : 0U};
        }
        case ControlKind::CommandButton:
            return {WC_BUTTONW, BS_PUSHBUTTON, 0};
        case ControlKind::PictureButton:
            return {WC_BUTTONW, BS_OWNERDRAW, 0};
        case ControlKind::CheckBox:
            return {WC_BUTTONW, BS_CHECKBOX | BS_NOTIFY, 0};
        case ControlKind::OptionButton:
            return {WC_BUTTONW, BS_RADIOBUTTON | BS_NOTIFY, 0};
        case ControlKind::ComboBox:
            return {WC_COMBOBOXW, CBS_DROPDOWNLIST | WS_VSCROLL, 0};
        case ControlKind::ProgressBar:
            return {PROGRESS_CLASSW, PBS_SMOOTH, 0};
        case ControlKind::ListView:
            return {WC_LISTVIEWW, LVS_REPORT | LVS_SHOWSELALWAYS | LVS_SINGLESEL | LVS_NOSORTHEADER,
                    WS_EX_CLIENTEDGE};
        case ControlKind::ForeignControl:
            // The tab key reaches what lies inside.
            return {WC_STATICW, WS_CLIPCHILDREN, WS_EX_CONTROLPARENT};
        default:
            return {nullptr, 0, 0};
    }
}

// The list of a drop-down is part of its window's height.
constexpr int DropDownTwips = 1500;

template <class Kind>
Kind& As(forms::Control& control) {
    return static_cast<Kind&>(control);
}

// How the control is found from outside: elements of a control array have their index behind.
std::string NameOf(const forms::Control& control) {
    return control.Index() == forms::Control::NoIndex
               ? control.Name()
               : control.Name() + "(" + std::to_string(control.Index()) + ")";
}

std::wstring WindowText(HWND window) {
    const int length = GetWindowTextLengthW(window);
    std::wstring text(static_cast<std::size_t>(length), L'\0');
    GetWindowTextW(window, text.data(), length + 1);
    return text;
}

}  // namespace

ControlWindow::ControlWindow(forms::Control& control, HWND form, int id) : m_control(control) {
    const NativeControl kind = KindOf(control);
    if (kind.className == nullptr) {
        return;
    }
    m_handle = CreateWindowExW(kind.extendedStyle, kind.className, L"", WS_CHILD | kind.style, 0, 0,
                               0, 0, form, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                               ThisModule(), nullptr);
    AddWindowName(m_handle, NameOf(control));
}

ControlWindow::~ControlWindow() {
    if (m_handle != nullptr) {
        RemoveWindowName(m_handle, NameOf(m_control));
    }
}

void ControlWindow::UpdateAll() {
    for (const PropertyId property :
         {PropertyId::Items, PropertyId::Text, PropertyId::Caption, PropertyId::ListIndex,
          PropertyId::Min, PropertyId::Value, PropertyId::Locked, PropertyId::TabStop}) {
        Update(property);
    }
    UpdateReach();
}

void ControlWindow::Update(PropertyId property) {
    if (m_handle == nullptr) {
        return;
    }
    m_updating = true;
    const ControlKind kind = m_control.Kind();
    switch (property) {
        case PropertyId::Text:
            if (kind == ControlKind::TextBox) {
                UpdateText(As<forms::TextBox>(m_control).Text);
            }
            break;
        case PropertyId::Caption:
            if (const auto* const captioned =
                    dynamic_cast<const forms::CaptionedControl*>(&m_control)) {
                UpdateText(captioned->Caption);
            }
            break;
        case PropertyId::Items:
            UpdateItems();
            break;
        case PropertyId::ListIndex:
            if (kind == ControlKind::ComboBox) {
                const int index = As<forms::ComboBox>(m_control).ListIndex;
                SendMessageW(m_handle, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
            }
            break;
        case PropertyId::Min:
        case PropertyId::Max:
        case PropertyId::Value:
            UpdateRange();
            break;
        case PropertyId::Locked:
            if (kind == ControlKind::TextBox) {
                SendMessageW(m_handle, EM_SETREADONLY, As<forms::TextBox>(m_control).Locked, 0);
            }
            break;
        case PropertyId::TabStop:
            UpdateTabStop();
            break;
        default:
            InvalidateRect(m_handle, nullptr, TRUE);
            break;
    }
    m_updating = false;
}

// Of a group of option buttons the tab key reaches the one that is set; the arrow keys reach the
// rest.
void ControlWindow::UpdateTabStop() {
    const bool reached = m_control.Kind() == ControlKind::OptionButton
                             ? As<forms::OptionButton>(m_control).Value.Get()
                             : m_control.Kind() != ControlKind::ForeignControl;
    const LONG_PTR style = GetWindowLongPtrW(m_handle, GWL_STYLE) & ~LONG_PTR{WS_TABSTOP};
    SetWindowLongPtrW(m_handle, GWL_STYLE,
                      m_control.TabStop && reached ? style | WS_TABSTOP : style);
}

void ControlWindow::UpdateText(const std::string& text) {
    const std::wstring wide = ToWide(text);
    if (WindowText(m_handle) != wide) {
        SetWindowTextW(m_handle, wide.c_str());
    }
}

void ControlWindow::UpdateItems() {
    if (m_control.Kind() == ControlKind::ListView) {
        FillListView(m_handle, As<forms::ListView>(m_control));
        return;
    }
    if (m_control.Kind() != ControlKind::ComboBox) {
        return;
    }
    SendMessageW(m_handle, CB_RESETCONTENT, 0, 0);
    for (const std::string& item : As<forms::ComboBox>(m_control).Items.Get()) {
        SendMessageW(m_handle, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(ToWide(item).c_str()));
    }
    Update(PropertyId::ListIndex);
}

void ControlWindow::UpdateRange() {
    if (m_control.Kind() == ControlKind::CheckBox ||
        m_control.Kind() == ControlKind::OptionButton) {
        const bool set = m_control.Kind() == ControlKind::CheckBox
                             ? As<forms::CheckBox>(m_control).Value.Get()
                             : As<forms::OptionButton>(m_control).Value.Get();
        SendMessageW(m_handle, BM_SETCHECK, set ? BST_CHECKED : BST_UNCHECKED, 0);
        UpdateTabStop();
    } else if (m_control.Kind() == ControlKind::ProgressBar) {
        UpdateProgress(As<forms::ProgressBar>(m_control));
    }
}

// Work that reports a thousand times is not held up by drawing the same bar again.
void ControlWindow::UpdateProgress(const forms::ProgressBar& bar) {
    RECT inside{};
    GetClientRect(m_handle, &inside);
    const auto minimum = static_cast<double>(bar.Min);
    const auto maximum = static_cast<double>(bar.Max);
    const auto done = static_cast<double>(bar.Value) - minimum;
    const long drawn =
        maximum > minimum ? std::lround(done / (maximum - minimum) * (inside.right - 1)) : -1;
    if (drawn == m_drawn && drawn != 0 && drawn != inside.right - 1) {
        return;
    }
    m_drawn = drawn;
    SendMessageW(m_handle, PBM_SETRANGE32, static_cast<WPARAM>(std::lround(minimum)),
                 static_cast<LPARAM>(std::lround(maximum)));
    SendMessageW(m_handle, PBM_SETPOS, static_cast<WPARAM>(std::lround(bar.Value.Get())), 0);
}

void ControlWindow::Layout(const Scale& scale, HFONT font) {
    if (m_handle == nullptr) {
        return;
    }
    SendMessageW(m_handle, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    int left = 0;
    int top = 0;
    for (const forms::Control* outer = m_control.Container(); outer != nullptr;
         outer = outer->Container()) {
        left += outer->Place.Get().left;
        top += outer->Place.Get().top;
    }
    RECT place = scale.Rectangle(m_control.Place, left, top);
    if (m_control.Kind() == ControlKind::ComboBox) {
        place.bottom += scale.Pixels(DropDownTwips);
    }
    SetWindowPos(m_handle, nullptr, place.left, place.top, place.right - place.left,
                 place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
    if (m_control.Kind() == ControlKind::ComboBox) {
        // By itself it would be as high as its text.
        const int borders = 2 * (GetSystemMetrics(SM_CYEDGE) + 1);
        SendMessageW(m_handle, CB_SETITEMHEIGHT, static_cast<WPARAM>(-1),
                     scale.Pixels(m_control.Place.Get().height) - borders);
    }
    if (m_control.Kind() == ControlKind::ListView) {
        LayOutColumns(m_handle, As<forms::ListView>(m_control), scale);
    }
}

void ControlWindow::UpdateReach() {
    if (m_handle == nullptr) {
        return;
    }
    bool visible = true;
    bool enabled = true;
    for (const forms::Control* control = &m_control; control != nullptr;
         control = control->Container()) {
        visible = visible && control->Visible;
        enabled = enabled && control->Enabled;
    }
    EnableWindow(m_handle, enabled);
    ShowWindow(m_handle, visible ? SW_SHOWNA : SW_HIDE);
}

void ControlWindow::Deliver(ports::UserInput input, UINT notification) {
    if (m_updating) {
        return;
    }
    switch (m_control.Kind()) {
        case ControlKind::TextBox:
            if (notification == EN_CHANGE) {
                DeliverText(input);
            }
            break;
        case ControlKind::CommandButton:
        case ControlKind::PictureButton:
            if (notification == BN_CLICKED) {
                As<forms::CommandButton>(m_control).UserClicks(input);
            }
            break;
        case ControlKind::CheckBox:
            if (notification == BN_CLICKED) {
                As<forms::CheckBox>(m_control).UserClicks(input);
            }
            break;
        case ControlKind::OptionButton:
            if (notification == BN_CLICKED) {
                As<forms::OptionButton>(m_control).UserClicks(input);
            }
            break;
        case ControlKind::ComboBox:
            if (notification == CBN_SELCHANGE) {
                const auto index = static_cast<int>(SendMessageW(m_handle, CB_GETCURSEL, 0, 0));
                As<forms::ComboBox>(m_control).UserSelects(input, index);
                Update(PropertyId::ListIndex);
            }
            break;
        default:
            break;
    }
}

void ControlWindow::DeliverText(ports::UserInput input) {
    auto& box = As<forms::TextBox>(m_control);
    if (!box.UserTypes(input, ToUtf8(WindowText(m_handle)))) {
        Update(PropertyId::Text);
    }
}

}  // namespace krv::windows
