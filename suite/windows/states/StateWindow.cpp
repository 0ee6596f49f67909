#include "suite/windows/states/StateWindow.h"

#include <comdef.h>
#include <windowsx.h>
#include <wrl/client.h>

#include <algorithm>
#include <utility>

#include "windows/base/DotsPerInch.h"
#include "windows/base/LastColumn.h"
#include "windows/base/WideText.h"

namespace krv::suite {
namespace {

using Microsoft::WRL::ComPtr;
using windows::ToUtf8;
using windows::ToWide;

constexpr UINT RenameEntered = WM_APP + 1;
// In pixels at 96 dots per inch.
constexpr int Gap = 6;
constexpr int LineHeight = 15;
constexpr int ButtonWidth = 84;
constexpr int ButtonHeight = 24;
constexpr int LabelWidth = 48;

constexpr PanelChild Children[] = {
    {StateWindow::NameLabel, L"STATIC", L"&Name:", SS_LEFT | SS_CENTERIMAGE, 0},
    {StateWindow::NameBox, L"EDIT", L"", WS_TABSTOP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE},
    {StateWindow::CaptureButton, L"BUTTON", L"&Capture", WS_TABSTOP | BS_PUSHBUTTON, 0},
    {StateWindow::StatesLabel, L"STATIC", L"Captured &states:", SS_LEFT, 0},
    {StateWindow::StateListView, WC_LISTVIEWW, L"Captured states",
     WS_TABSTOP | LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_EDITLABELS |
         LVS_NOSORTHEADER,
     WS_EX_CLIENTEDGE},
    {StateWindow::RestoreButton, L"BUTTON", L"&Restore", WS_TABSTOP | BS_PUSHBUTTON, 0},
    {StateWindow::RenameButton, L"BUTTON", L"Rena&me", WS_TABSTOP | BS_PUSHBUTTON, 0},
    {StateWindow::DeleteButton, L"BUTTON", L"&Delete", WS_TABSTOP | BS_PUSHBUTTON, 0},
    {StateWindow::StatusLabel, L"STATIC", L"", SS_LEFT | SS_NOPREFIX | SS_ENDELLIPSIS, 0},
};

struct Column {
    const wchar_t* title;
    // Of the list's width, in hundredths.
    int share;
};
constexpr Column Columns[] = {{L"Name", 34}, {L"Captured", 36}, {L"Instrument", 30}};

RECT Box(int left, int top, int width, int height) {
    return {left, top, left + std::max(width, 0), top + std::max(height, 0)};
}

std::wstring DateText(DateValue date) {
    _bstr_t text;
    if (FAILED(VarBstrFromDate(date.days, LOCALE_USER_DEFAULT, 0, text.GetAddress()))) {
        return {};
    }
    return {text.GetBSTR(), text.length()};
}

std::wstring InstrumentText(const suite::NamedState& state) {
    return ToWide(state.version.empty() ? state.model : state.model + " (" + state.version + ")");
}

}  // namespace

StateWindow::StateWindow(suite::StatePanel& panel, IUnknown& owner)
    : PanelWindow(L"CvnStateWindow", Children), m_panel(panel), m_owner(owner) {
    INITCOMMONCONTROLSEX classes{sizeof classes, ICC_LISTVIEW_CLASSES};
    InitCommonControlsEx(&classes);
}

HWND StateWindow::TopLevel() const {
    return Handle() != nullptr ? GetAncestor(Handle(), GA_ROOT) : nullptr;
}

RECT StateWindow::PlaceOf(int child, SIZE size, int dotsPerInch) const {
    const auto scaled = [dotsPerInch](int pixels) {
        return MulDiv(pixels, dotsPerInch, windows::UsualDotsPerInch);
    };
    const int gap = scaled(Gap);
    const int line = scaled(LineHeight);
    const int button = scaled(ButtonHeight);
    const int buttons = size.cx - gap - scaled(ButtonWidth);
    const int states = gap + button + gap;
    const int list = states + line + gap / 2;
    const int status = size.cy - gap - line;
    const auto besideList = [&](int number) {
        return Box(buttons, list + number * (button + gap), scaled(ButtonWidth), button);
    };
    switch (child) {
        case NameLabel:
            return Box(gap, gap, scaled(LabelWidth), button);
        case NameBox:
            return Box(gap + scaled(LabelWidth), gap, buttons - 2 * gap - scaled(LabelWidth),
                       button);
        case CaptureButton:
            return Box(buttons, gap, scaled(ButtonWidth), button);
        case StatesLabel:
            return Box(gap, states, buttons - 2 * gap, line);
        case StateListView:
            return Box(gap, list, buttons - 2 * gap, status - gap - list);
        case RestoreButton:
            return besideList(0);
        case RenameButton:
            return besideList(1);
        case DeleteButton:
            return besideList(2);
        default:
            return Box(gap, status, size.cx - 2 * gap, line);
    }
}

void StateWindow::Created() {
    const HWND list = ChildWindow(StateListView);
    ListView_SetExtendedListViewStyle(list, LVS_EX_FULLROWSELECT | LVS_EX_LABELTIP);
    for (int index = 0; index < static_cast<int>(std::size(Columns)); ++index) {
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT | LVCF_SUBITEM;
        column.pszText = const_cast<wchar_t*>(Columns[index].title);
        column.iSubItem = index;
        SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(index),
                     reinterpret_cast<LPARAM>(&column));
    }
    Edit_LimitText(ChildWindow(NameBox), suite::StateList::MaxNameLength);
    m_rows.clear();
    LaidOut();
    Update();
}

void StateWindow::LaidOut() {
    const HWND list = ChildWindow(StateListView);
    RECT area{};
    GetClientRect(list, &area);
    // Room for the scroll bar, which comes and goes with the rows.
    const int width = std::max(0, static_cast<int>(area.right) - GetSystemMetrics(SM_CXVSCROLL));
    for (int index = 0; index < static_cast<int>(std::size(Columns)); ++index) {
        ListView_SetColumnWidth(list, index, width * Columns[index].share / 100);
    }
    windows::ExtendLastColumn(list);
}

void StateWindow::Update() {
    if (Handle() == nullptr) {
        return;
    }
    m_updating = true;
    if (TextIn(NameBox) != m_panel.NewName()) {
        SetText(NameBox, m_panel.NewName());
        // Typing replaces the proposed name.
        Edit_SetSel(ChildWindow(NameBox), 0, -1);
    }
    SetText(StatusLabel, m_panel.Status());
    ShowRows();
    ShowSelection();
    Enable(CaptureButton, m_panel.CanCapture());
    Enable(RestoreButton, m_panel.CanRestore());
    Enable(RenameButton, m_panel.CanRenameAndDelete());
    Enable(DeleteButton, m_panel.CanRenameAndDelete());
    UpdateWindow(Handle());
    m_updating = false;
}

// A disabled window would keep the focus from the keyboard.
void StateWindow::Enable(int id, bool enabled) {
    const HWND child = ChildWindow(id);
    if (!enabled && GetFocus() == child) {
        SetFocus(ChildWindow(id == CaptureButton ? NameBox : StateListView));
    }
    EnableWindow(child, enabled ? TRUE : FALSE);
}

void StateWindow::ShowRows() {
    std::vector<Row> rows;
    for (const suite::NamedState& state : m_panel.States()) {
        rows.push_back({ToWide(state.name), DateText(state.captured), InstrumentText(state)});
    }
    if (rows == m_rows) {
        return;
    }
    m_rows = std::move(rows);
    const HWND list = ChildWindow(StateListView);
    SetWindowRedraw(list, FALSE);
    ListView_DeleteAllItems(list);
    for (int row = 0; row < static_cast<int>(m_rows.size()); ++row) {
        for (int column = 0; column < static_cast<int>(std::size(Columns)); ++column) {
            auto& text = m_rows[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
            LVITEMW item{};
            item.mask = LVIF_TEXT;
            item.iItem = row;
            item.iSubItem = column;
            item.pszText = text.data();
            SendMessageW(list, column == 0 ? LVM_INSERTITEMW : LVM_SETITEMW, 0,
                         reinterpret_cast<LPARAM>(&item));
        }
    }
    SetWindowRedraw(list, TRUE);
    windows::ExtendLastColumn(list);
}

void StateWindow::ShowSelection() {
    const HWND list = ChildWindow(StateListView);
    const int shown = ListView_GetNextItem(list, -1, LVNI_SELECTED);
    const int wanted = m_panel.Selected() ? static_cast<int>(*m_panel.Selected()) : -1;
    if (wanted == shown) {
        return;
    }
    if (wanted < 0) {
        ListView_SetItemState(list, -1, 0, LVIS_SELECTED);
        return;
    }
    ListView_SetItemState(list, wanted, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    ListView_EnsureVisible(list, wanted, FALSE);
}

void StateWindow::Command(int id, UINT notification) {
    if (id == NameBox && notification == EN_CHANGE && !m_updating) {
        m_panel.EnterName(TextIn(NameBox));
        return;
    }
    if (notification != BN_CLICKED || IsWindowEnabled(ChildWindow(id)) == 0) {
        return;
    }
    const ComPtr<IUnknown> kept(&m_owner);
    switch (id) {
        case CaptureButton:
            m_panel.Capture();
            break;
        case RestoreButton:
            m_panel.Restore();
            break;
        case RenameButton:
            BeginRename();
            break;
        case DeleteButton:
            m_panel.Delete();
            break;
        default:
            break;
    }
}

LRESULT StateWindow::Notify(const NMHDR& notification) {
    if (notification.idFrom != StateListView) {
        return 0;
    }
    switch (notification.code) {
        case LVN_ITEMCHANGED:
            TakeSelection();
            return 0;
        case NM_DBLCLK:
            Command(RestoreButton, BN_CLICKED);
            return 0;
        case LVN_ENDLABELEDITW:
            return EndRename(reinterpret_cast<const NMLVDISPINFOW&>(notification));
        default:
            return 0;
    }
}

void StateWindow::TakeSelection() {
    if (m_updating) {
        return;
    }
    const int selected = ListView_GetNextItem(ChildWindow(StateListView), -1, LVNI_SELECTED);
    m_panel.Select(selected < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(selected)));
}

void StateWindow::BeginRename() {
    const HWND list = ChildWindow(StateListView);
    if (m_panel.Selected()) {
        SetFocus(list);
        const HWND edit = ListView_EditLabel(list, static_cast<int>(*m_panel.Selected()));
        Edit_LimitText(edit, suite::StateList::MaxNameLength);
    }
}

// The list must have ended its editing before a message box may take the focus.
LRESULT StateWindow::EndRename(const NMLVDISPINFOW& edit) {
    if (edit.item.pszText != nullptr) {
        m_renamedTo = ToUtf8(edit.item.pszText);
        PostMessageW(Handle(), RenameEntered, 0, 0);
    }
    return FALSE;
}

void StateWindow::Posted(UINT message) {
    if (message == RenameEntered) {
        const ComPtr<IUnknown> kept(&m_owner);
        m_panel.Rename(std::exchange(m_renamedTo, {}));
    }
}

int StateWindow::EnterButton(int focusedChild) const {
    return focusedChild == StateListView ? RestoreButton : CaptureButton;
}

bool StateWindow::TakesOtherKey(const MSG& message) {
    const HWND list = ChildWindow(StateListView);
    const HWND edit = ListView_GetEditControl(list);
    if (edit != nullptr && message.hwnd == edit && message.wParam != VK_TAB) {
        // Enter and Escape end the editing, not the dialog.
        TranslateMessage(&message);
        DispatchMessageW(&message);
        return true;
    }
    if (message.hwnd != list) {
        return false;
    }
    if (message.wParam == VK_F2) {
        Command(RenameButton, BN_CLICKED);
    } else if (message.wParam == VK_DELETE) {
        Command(DeleteButton, BN_CLICKED);
    } else {
        return false;
    }
    return true;
}

}  // namespace krv::suite
