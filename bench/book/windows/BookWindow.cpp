#include "bench/book/windows/BookWindow.h"

#include <commctrl.h>

#include <algorithm>
#include <array>

#include "bench/book/CellText.h"
#include "windows/base/WideText.h"
#include "windows/base/WindowName.h"
#include "windows/forms/Scale.h"

namespace krv::bench {
namespace {

using windows::ToUtf8;
using windows::ToWide;

constexpr const char* NameBoxName = "NameBox";
// Where the list of open books stands in the menu.
constexpr int BooksPosition = 1;

const std::vector<MenuList>& MenuLists() {
    static const std::vector<MenuList> lists{
        {L"&File",
         {{StandardCommand::New, L"&New\tCtrl+N", 'N'},
          {StandardCommand::Open, L"&Open...\tCtrl+O", 'O'},
          {StandardCommand::Save, L"&Save\tCtrl+S", 'S'},
          {StandardCommand::SaveAs, L"Save &As..."},
          {BookCommand::Close, L"&Close\tCtrl+W", 'W'},
          {},
          {StandardCommand::Exit, L"E&xit"}}},
        {L"&Window", {}},
        {L"&Help", {{StandardCommand::About, L"&About krvbook"}}}};
    return lists;
}

constexpr FileKind Workbooks{
    L"Workbooks (*.krvbook)\0*.krvbook\0Comma separated values (*.csv;*.txt)\0*.csv;*.txt\0"
    L"All files\0*.*\0",
    L"krvbook"};

std::string TextOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(
        GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return ToUtf8(text);
}

}  // namespace

constexpr MainWindow::Program BookWindow::BookProgram{
    L"KrvBook", L"krvbook",
    L"krvbook is a small workbook for trying the TQL/KRV toolbar control on a computer without an "
    L"office suite.\r\n\r\nIt opens and saves CSV files, and workbooks that keep the control's "
    L"connection as well, and answers automation calls as a "
    L"spreadsheet does, as far as the control needs them.  It is a test bench and no spreadsheet "
    L"program.",
    1000, 700};

BookWindow::BookWindow(BookApplication& application)
    : MainWindow(BookProgram, application, MenuLists()), m_application(application) {
    CreateBoxes();
    m_grid = std::make_unique<GridView>(Handle(), m_application);
    m_application.AddObserver(*this);
    Start();
    ShowBooks();
}

BookWindow::~BookWindow() {
    Stop();
    m_application.RemoveObserver(*this);
    m_grid.reset();
    windows::RemoveWindowName(m_nameBox, NameBoxName);
    DestroyWindow(m_nameBox);
    DestroyWindow(m_content);
    DeleteObject(m_font);
}

void BookWindow::CreateBoxes() {
    m_font = NewMessageFont(windows::DotsPerInch(Handle()));
    const auto box = [this](DWORD style) {
        const HWND created =
            CreateWindowExW(WS_EX_CLIENTEDGE, WC_EDITW, L"", WS_CHILD | WS_VISIBLE | style, 0, 0, 0,
                            0, Handle(), nullptr, nullptr, nullptr);
        SendMessageW(created, WM_SETFONT, reinterpret_cast<WPARAM>(m_font), FALSE);
        return created;
    };
    m_nameBox = box(ES_AUTOHSCROLL);
    windows::AddWindowName(m_nameBox, NameBoxName);
    SetWindowSubclass(m_nameBox, &BookWindow::NameBoxProcedure, 1,
                      reinterpret_cast<DWORD_PTR>(this));
    m_content = box(ES_AUTOHSCROLL | ES_READONLY);
}

bool BookWindow::Open(const std::string& path) {
    return Try([&] {
        const auto book = m_application.Open(path);
        if (!book->Notice().empty()) {
            Report(book->Notice());
        }
    });
}

void BookWindow::ArrangeContent(const RECT& place) {
    const int width = static_cast<int>(place.right);
    const int top = static_cast<int>(place.top);
    const int line = Scaled(24);
    const int nameWidth = Scaled(140);
    MoveWindow(m_nameBox, 0, top, nameWidth, line, TRUE);
    MoveWindow(m_content, nameWidth, top, width - nameWidth, line, TRUE);
    MoveWindow(m_grid->Handle(), 0, top + line, width,
               std::max(0, static_cast<int>(place.bottom) - top - line), TRUE);
    const std::array<int, 3> parts{std::max(0, width - Scaled(360)), width - Scaled(150), -1};
    SendMessageW(StatusBar(), SB_SETPARTS, parts.size(), reinterpret_cast<LPARAM>(parts.data()));
    // The parts forget their texts when they are divided anew.
    ShowPlace();
}

void BookWindow::Command(UINT id) {
    const auto book = m_application.ActiveBook();
    m_grid->FinishEditing();
    switch (id) {
        case StandardCommand::New:
            m_application.Add();
            return;
        case StandardCommand::Open:
            if (const std::string path = AskForFile(Workbooks, false); !path.empty()) {
                Open(path);
            }
            return;
        case StandardCommand::Save:
        case StandardCommand::SaveAs:
            if (book) {
                Save(*book, id == StandardCommand::SaveAs);
            }
            return;
        case BookCommand::Close:
            if (book && MayClose(book)) {
                m_application.Close(book);
            }
            return;
        default:
            break;
    }
    if (id >= BookCommand::FirstBook &&
        id - BookCommand::FirstBook < m_application.Books().size()) {
        m_application.Activate(
            m_application.BookAt(static_cast<std::int64_t>(id - BookCommand::FirstBook) + 1));
    }
}

void BookWindow::OnChanged(BookChange change) {
    m_grid->Follow(change);
    switch (change) {
        case BookChange::Books:
            ShowBooks();
            break;
        case BookChange::Cells:
        case BookChange::Selection:
            ShowPlace();
            break;
        case BookChange::StatusBar:
        case BookChange::CommandBars:
            ShowBars();
            break;
        case BookChange::Cursor:
            ShowCursor();
            break;
        case BookChange::ScreenUpdating:
            break;
    }
}

void BookWindow::ShowBooks() {
    ListBooks();
    const auto active = m_application.ActiveBook();
    ShowTitle(active ? active->Name() : std::string());
    ShowPlace();
    ShowStatus();
}

void BookWindow::ListBooks() {
    const HMENU list = Menu().List(BooksPosition);
    while (DeleteMenu(list, 0, MF_BYPOSITION) != FALSE) {
    }
    UINT id = BookCommand::FirstBook;
    for (const auto& book : m_application.Books()) {
        const UINT mark = book == m_application.ActiveBook() ? MF_CHECKED : MF_UNCHECKED;
        if (id <= BookCommand::LastBook) {
            AppendMenuW(list, MF_STRING | mark, id++, ToWide(book->Name()).c_str());
        }
    }
}

void BookWindow::ShowPlace() {
    const auto book = m_application.ActiveBook();
    std::string address;
    std::string content;
    std::string size;
    if (book) {
        const Selection& selection = book->Selected();
        address = AddressOf(selection.Areas(), {false, false});
        content = CellEntry(book->Cells().At(selection.ActiveCell()));
        const CellArea& area = selection.Areas().back();
        size = std::to_string(area.rows) + " x " + std::to_string(area.columns);
    }
    SetWindowTextW(m_nameBox, ToWide(address).c_str());
    SetWindowTextW(m_content, ToWide(content).c_str());
    SendMessageW(StatusBar(), SB_SETTEXTW, 1, reinterpret_cast<LPARAM>(ToWide(address).c_str()));
    SendMessageW(StatusBar(), SB_SETTEXTW, 2, reinterpret_cast<LPARAM>(ToWide(size).c_str()));
}

LRESULT CALLBACK BookWindow::NameBoxProcedure(HWND box, UINT message, WPARAM wide, LPARAM low,
                                              UINT_PTR, DWORD_PTR window) {
    auto& self = *reinterpret_cast<BookWindow*>(window);
    if (message == WM_KEYDOWN && wide == VK_RETURN) {
        self.GoToName();
        return 0;
    }
    if (message == WM_KEYDOWN && wide == VK_ESCAPE) {
        self.ShowPlace();
        self.Focus();
        return 0;
    }
    if (message == WM_CHAR && (wide == VK_RETURN || wide == VK_ESCAPE)) {
        return 0;
    }
    return DefSubclassProc(box, message, wide, low);
}

void BookWindow::GoToName() {
    const std::string name = TextOf(m_nameBox);
    if (Try([&] { m_application.Range(name).Select(); })) {
        Focus();
    }
}

bool BookWindow::Save(Workbook& book, bool askForName) {
    std::string path = book.FullName();
    if (askForName || !book.HasFile()) {
        path = AskForFile(Workbooks, true, book.HasFile() ? path : book.Name() + ".krvbook");
    }
    return !path.empty() && Try([&] { m_application.SaveAs(book, path); });
}

bool BookWindow::MayClose(const std::shared_ptr<Workbook>& book) {
    if (!book->IsModified() && !(m_control != nullptr && m_control->HasUnsavedControl(*book))) {
        return true;
    }
    switch (AskToSave(book->Name())) {
        case IDYES:
            return Save(*book, false);
        case IDNO:
            return true;
        default:
            return false;
    }
}

bool BookWindow::MayCloseAll() {
    m_grid->FinishEditing();
    const auto books = m_application.Books();
    return std::all_of(books.begin(), books.end(),
                       [this](const auto& book) { return MayClose(book); });
}

}  // namespace krv::bench
