#include "bench/book/windows/BookWindow.h"

#include <commctrl.h>

#include <algorithm>
#include <string>

#include "bench/shared/windows/WindowText.h"
#include "windows/base/DotsPerInch.h"
#include "windows/base/WideText.h"
#include "windows/base/WindowHook.h"
#include "windows/base/WindowName.h"

namespace krv::bench {
namespace {

constexpr const char* NameBoxName = "NameBox";

}  // namespace

constexpr MainWindow::Look BookWindow::BookLook{
    L"KrvBook",
    L"krvbook",
    L"krvbook is a small workbook for trying the TQL/KRV toolbar control on a computer without an "
    L"office suite.\r\n\r\nIt opens and saves CSV files, and workbooks that keep the control's "
    L"connection as well, and answers automation calls as a "
    L"spreadsheet does, as far as the control needs them.  It is a test bench and no spreadsheet "
    L"program.",
    L"Workbooks (*.krvbook)\0*.krvbook\0Comma separated values (*.csv;*.txt)\0*.csv;*.txt\0"
    L"All files\0*.*\0",
    L"krvbook",
    1000,
    700};

BookWindow::BookWindow(BookApplication& application)
    : MainWindow(BookLook, application), m_application(application) {
    CreateNameBox();
    m_grid.emplace(Handle(), m_application);
    Start();
    ShowPlace();
}

BookWindow::~BookWindow() {
    Stop();
    m_grid.reset();
    windows::RemoveWindowName(m_nameBox, NameBoxName);
    DestroyWindow(m_nameBox);
}

void BookWindow::CreateNameBox() {
    m_font = NewMessageFont(windows::DotsPerInch(Handle()));
    m_nameBox =
        CreateWindowExW(WS_EX_CLIENTEDGE, WC_EDITW, L"", WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL, 0,
                        0, 0, 0, Handle(), nullptr, nullptr, nullptr);
    SendMessageW(m_nameBox, WM_SETFONT, reinterpret_cast<WPARAM>(m_font.get()), FALSE);
    windows::AddWindowName(m_nameBox, NameBoxName);
    windows::WindowHook<&BookWindow::HandleNameBoxMessage>::Attach(m_nameBox, *this);
}

void BookWindow::ArrangeContent(const RECT& place) {
    const int width = static_cast<int>(place.right);
    const int top = static_cast<int>(place.top);
    const int line = Scaled(24);
    MoveWindow(m_nameBox, 0, top, width, line, TRUE);
    MoveWindow(m_grid->Handle(), 0, top + line, width,
               std::max(0, static_cast<int>(place.bottom) - top - line), TRUE);
}

void BookWindow::ShowChange(OfficeChange change) {
    m_grid->Follow(change);
    if (change == OfficeChange::Documents || change == OfficeChange::Selection) {
        ShowPlace();
    }
}

void BookWindow::ShowPlace() {
    const auto book = m_application.ActiveBook();
    const std::string address =
        book ? AddressOf(book->Selected().Areas(), AddressStyle::Relative) : std::string();
    SetWindowTextW(m_nameBox, windows::ToWide(address).c_str());
}

LRESULT BookWindow::HandleNameBoxMessage(HWND box, UINT message, WPARAM wide, LPARAM low) {
    if (message == WM_KEYDOWN && wide == VK_RETURN) {
        GoToName();
        return 0;
    }
    // The key would only beep.
    if (message == WM_CHAR && wide == VK_RETURN) {
        return 0;
    }
    return DefSubclassProc(box, message, wide, low);
}

void BookWindow::GoToName() {
    const auto book = m_application.ActiveBook();
    const bool isThere = book && Try([&] {
                             auto areas = book->ResolveRange(TextOf(m_nameBox));
                             book->ChangeSelection(
                                 [&](Selection& selection) { selection.Select(std::move(areas)); });
                         });
    if (isThere) {
        Focus();
    }
}

}  // namespace krv::bench
