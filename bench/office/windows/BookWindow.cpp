#include "bench/office/windows/BookWindow.h"

#include <commctrl.h>
#include <commdlg.h>

#include <algorithm>
#include <array>

#include "bench/office/CellText.h"
#include "common/Error.h"
#include "windows/forms/Scale.h"
#include "windows/text/WideText.h"
#include "windows/text/WindowName.h"

namespace krv::bench {
namespace {

using windows::ToUtf8;
using windows::ToWide;

constexpr const wchar_t* ClassName = L"KrvBook";
constexpr const wchar_t* ProgramName = L"krvbook";
constexpr const char* NameBoxName = "NameBox";
constexpr const wchar_t* About =
    L"krvbook is a small workbook for trying the TQL/KRV toolbar control on a computer without an "
    L"office suite.\r\n\r\nIt opens and saves CSV files, and workbooks that keep the control's "
    L"connection as well, and answers automation calls as a "
    L"spreadsheet does, as far as the control needs them.  It is a test bench and no spreadsheet "
    L"program.";

constexpr int Width = 1000;
constexpr int Height = 700;

std::string TextOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(
        GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return ToUtf8(text);
}

}  // namespace

BookWindow::BookWindow(BookApplication& application) : m_application(application) {
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.lpfnWndProc = &BookWindow::WindowProcedure;
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.hIcon = LoadIconW(nullptr, IDI_APPLICATION);
    description.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    description.lpszClassName = ClassName;
    RegisterClassExW(&description);
    CreateWindowExW(0, ClassName, ProgramName, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CW_USEDEFAULT,
                    CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr, nullptr, this);
    SetWindowPos(m_handle, nullptr, 0, 0, Scaled(Width), Scaled(Height), SWP_NOMOVE | SWP_NOZORDER);
    SetMenu(m_handle, m_menu.Bar());
    CreateParts();
    m_application.AddObserver(*this);
    ShowBooks();
}

BookWindow::~BookWindow() {
    m_application.RemoveObserver(*this);
    m_grid.reset();
    m_band.reset();
    windows::RemoveWindowName(m_nameBox, NameBoxName);
    SetWindowLongPtrW(m_handle, GWLP_USERDATA, 0);
    DestroyWindow(m_handle);
    DeleteObject(m_font);
}

void BookWindow::CreateParts() {
    m_font = NewMessageFont(windows::DotsPerInch(m_handle));
    m_band =
        std::make_unique<GeneratorBand>(m_handle, m_application.GeneratorBar(),
                                        [this](const std::string& problem) { Report(problem); });
    const auto box = [this](DWORD style) {
        const HWND created =
            CreateWindowExW(WS_EX_CLIENTEDGE, WC_EDITW, L"", WS_CHILD | WS_VISIBLE | style, 0, 0, 0,
                            0, m_handle, nullptr, nullptr, nullptr);
        SendMessageW(created, WM_SETFONT, reinterpret_cast<WPARAM>(m_font), FALSE);
        return created;
    };
    m_nameBox = box(ES_AUTOHSCROLL);
    windows::AddWindowName(m_nameBox, NameBoxName);
    SetWindowSubclass(m_nameBox, &BookWindow::NameBoxProcedure, 1,
                      reinterpret_cast<DWORD_PTR>(this));
    m_content = box(ES_AUTOHSCROLL | ES_READONLY);
    m_grid = std::make_unique<GridView>(m_handle, m_application);
    m_statusBar = CreateWindowExW(0, STATUSCLASSNAMEW, L"", WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP,
                                  0, 0, 0, 0, m_handle, nullptr, nullptr, nullptr);
}

void BookWindow::Show(bool isShown) {
    ShowWindow(m_handle, isShown ? SW_SHOWNORMAL : SW_HIDE);
    if (isShown) {
        SetFocus(m_grid->Handle());
    }
}

void BookWindow::Quit() {
    PostQuitMessage(0);
}

void BookWindow::Run() {
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        const bool isOwn = message.hwnd == m_handle || IsChild(m_handle, message.hwnd) != FALSE;
        if (m_band->TakesMessage(message) ||
            (isOwn && !IsEditing() && m_menu.TakesKey(m_handle, message))) {
            continue;
        }
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

void BookWindow::Paint() {
    RedrawWindow(m_handle, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

bool BookWindow::Open(const std::string& path) {
    return Try([&] {
        const auto book = m_application.Open(path);
        if (!book->Notice().empty()) {
            Report(book->Notice());
        }
    });
}

LRESULT CALLBACK BookWindow::WindowProcedure(HWND window, UINT message, WPARAM wide, LPARAM low) {
    if (message == WM_NCCREATE) {
        auto* created =
            static_cast<BookWindow*>(reinterpret_cast<const CREATESTRUCTW*>(low)->lpCreateParams);
        created->m_handle = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created));
    }
    auto* self = reinterpret_cast<BookWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    return self != nullptr && self->m_statusBar != nullptr
               ? self->Handle(message, wide, low)
               : DefWindowProcW(window, message, wide, low);
}

LRESULT BookWindow::Handle(UINT message, WPARAM wide, LPARAM low) {
    switch (message) {
        case WM_SIZE:
            Arrange();
            // The status bar's parts forget their texts when they are divided anew.
            ShowPlace();
            ShowStatus();
            return 0;
        case WM_COMMAND:
            Command(LOWORD(wide));
            return 0;
        case WM_SETFOCUS:
            SetFocus(m_grid->Handle());
            return 0;
        case WM_CLOSE:
            m_grid->FinishEditing();
            if (MayCloseAll()) {
                Quit();
            }
            return 0;
        case WM_SETCURSOR:
            if (m_application.Cursor() == BookApplication::WaitCursor && LOWORD(low) == HTCLIENT) {
                SetCursor(LoadCursorW(nullptr, IDC_WAIT));
                return TRUE;
            }
            break;
        default:
            break;
    }
    return DefWindowProcW(m_handle, message, wide, low);
}

void BookWindow::Arrange() {
    RECT client{};
    GetClientRect(m_handle, &client);
    const int width = static_cast<int>(client.right);
    const int band = m_application.GeneratorBar().IsVisible() ? m_band->Height() : 0;
    const int line = Scaled(24);
    const int nameWidth = Scaled(140);
    m_band->Move({0, 0, width, band});
    MoveWindow(m_nameBox, 0, band, nameWidth, line, TRUE);
    MoveWindow(m_content, nameWidth, band, width - nameWidth, line, TRUE);
    ShowWindow(m_statusBar, m_application.IsStatusBarDisplayed() ? SW_SHOWNA : SW_HIDE);
    SendMessageW(m_statusBar, WM_SIZE, 0, 0);
    RECT status{};
    GetWindowRect(m_statusBar, &status);
    const int statusHeight =
        m_application.IsStatusBarDisplayed() ? static_cast<int>(status.bottom - status.top) : 0;
    const std::array<int, 3> parts{std::max(0, width - Scaled(360)), width - Scaled(150), -1};
    SendMessageW(m_statusBar, SB_SETPARTS, parts.size(), reinterpret_cast<LPARAM>(parts.data()));
    const int top = band + line;
    MoveWindow(m_grid->Handle(), 0, top, width,
               std::max(0, static_cast<int>(client.bottom) - top - statusHeight), TRUE);
}

void BookWindow::Command(UINT id) {
    const auto book = m_application.ActiveBook();
    m_grid->FinishEditing();
    switch (id) {
        case CommandId::New:
            m_application.Add();
            return;
        case CommandId::Open:
            if (const std::string path = AskForFile(false, ""); !path.empty()) {
                Open(path);
            }
            return;
        case CommandId::Save:
        case CommandId::SaveAs:
            if (book) {
                Save(*book, id == CommandId::SaveAs);
            }
            return;
        case CommandId::Close:
            if (book && MayClose(book)) {
                m_application.Close(book);
            }
            return;
        case CommandId::Exit:
            PostMessageW(m_handle, WM_CLOSE, 0, 0);
            return;
        case CommandId::About:
            MessageBoxW(m_handle, About, ProgramName, MB_OK | MB_ICONINFORMATION);
            return;
        default:
            break;
    }
    if (id >= CommandId::FirstBook && id - CommandId::FirstBook < m_application.Books().size()) {
        m_application.Activate(
            m_application.BookAt(static_cast<std::int64_t>(id - CommandId::FirstBook) + 1));
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
            ShowStatus();
            Arrange();
            break;
        case BookChange::CommandBars:
            m_band->ShowButtons();
            Arrange();
            break;
        case BookChange::Cursor:
            SetCursor(LoadCursorW(nullptr, m_application.Cursor() == BookApplication::WaitCursor
                                               ? IDC_WAIT
                                               : IDC_ARROW));
            break;
        case BookChange::ScreenUpdating:
            break;
    }
}

void BookWindow::ShowBooks() {
    m_menu.ShowBooks(m_application);
    const auto active = m_application.ActiveBook();
    const std::string title = active ? active->Name() + " - krvbook" : "krvbook";
    SetWindowTextW(m_handle, ToWide(title).c_str());
    ShowPlace();
    ShowStatus();
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
    SendMessageW(m_statusBar, SB_SETTEXTW, 1, reinterpret_cast<LPARAM>(ToWide(address).c_str()));
    SendMessageW(m_statusBar, SB_SETTEXTW, 2, reinterpret_cast<LPARAM>(ToWide(size).c_str()));
}

void BookWindow::ShowStatus() {
    SendMessageW(m_statusBar, SB_SETTEXTW, 0,
                 reinterpret_cast<LPARAM>(ToWide(m_application.StatusText()).c_str()));
    // Seen also while a long call from outside keeps this thread busy.
    UpdateWindow(m_statusBar);
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
        SetFocus(self.m_grid->Handle());
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
        SetFocus(m_grid->Handle());
    }
}

bool BookWindow::Save(Workbook& book, bool askForName) {
    std::string path = book.FullName();
    if (askForName || !book.HasFile()) {
        path = AskForFile(true, book.HasFile() ? path : book.Name() + ".krvbook");
    }
    return !path.empty() && Try([&] { m_application.SaveAs(book, path); });
}

bool BookWindow::MayClose(const std::shared_ptr<Workbook>& book) {
    if (!book->IsModified() && !(m_control != nullptr && m_control->HasUnsavedControl(*book))) {
        return true;
    }
    const std::wstring question = L"Save the changes to \"" + ToWide(book->Name()) + L"\"?";
    switch (
        MessageBoxW(m_handle, question.c_str(), ProgramName, MB_YESNOCANCEL | MB_ICONEXCLAMATION)) {
        case IDYES:
            return Save(*book, false);
        case IDNO:
            return true;
        default:
            return false;
    }
}

bool BookWindow::MayCloseAll() {
    const auto books = m_application.Books();
    return std::all_of(books.begin(), books.end(),
                       [this](const auto& book) { return MayClose(book); });
}

void BookWindow::Report(const std::string& problem) const {
    MessageBoxW(m_handle, ToWide(problem).c_str(), ProgramName, MB_OK | MB_ICONEXCLAMATION);
}

template <class Work>
bool BookWindow::Try(Work&& work) {
    try {
        work();
        return true;
    } catch (const Error& error) {
        Report(error.Description());
    } catch (const std::exception& error) {
        Report(error.what());
    }
    return false;
}

std::string BookWindow::AskForFile(bool toSave, const std::string& suggested) const {
    std::array<wchar_t, 32768> path{};
    ToWide(suggested).copy(path.data(), path.size() - 1);
    OPENFILENAMEW request{};
    request.lStructSize = sizeof request;
    request.hwndOwner = m_handle;
    request.lpstrFilter =
        L"Workbooks (*.krvbook)\0*.krvbook\0Comma separated values (*.csv;*.txt)\0*.csv;*.txt\0"
        L"All files\0*.*\0";
    request.lpstrFile = path.data();
    request.nMaxFile = static_cast<DWORD>(path.size());
    request.lpstrDefExt = L"krvbook";
    request.Flags = OFN_HIDEREADONLY | (toSave ? OFN_OVERWRITEPROMPT : OFN_FILEMUSTEXIST);
    const BOOL chosen = toSave ? GetSaveFileNameW(&request) : GetOpenFileNameW(&request);
    return chosen != FALSE ? ToUtf8(path.data()) : std::string();
}

int BookWindow::Scaled(int pixels) const {
    return MulDiv(pixels, static_cast<int>(windows::DotsPerInch(m_handle)),
                  USER_DEFAULT_SCREEN_DPI);
}

}  // namespace krv::bench
