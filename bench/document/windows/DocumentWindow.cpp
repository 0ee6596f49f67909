#include "bench/document/windows/DocumentWindow.h"

#include <commctrl.h>
#include <commdlg.h>

#include <algorithm>
#include <array>

#include "common/Error.h"
#include "windows/forms/Scale.h"
#include "windows/text/WideText.h"

namespace krv::bench {
namespace {

using windows::ToUtf8;
using windows::ToWide;

constexpr const wchar_t* ClassName = L"KrvDoc";
constexpr const wchar_t* ProgramName = L"krvdoc";
constexpr const wchar_t* About =
    L"krvdoc is a small document window for trying the TQL/KRV toolbar control on a computer "
    L"without an office suite.\r\n\r\nIt keeps text and pictures and answers automation calls as a "
    L"word processor does, as far as the control needs them.  It is a test bench and no word "
    L"processor.";

constexpr int Width = 1000;
constexpr int Height = 760;

struct FileKind {
    const wchar_t* filter;
    const wchar_t* ending;
};
constexpr FileKind Documents{L"Documents (*.krvdoc)\0*.krvdoc\0All files\0*.*\0", L"krvdoc"};
constexpr FileKind Pictures{
    L"Pictures (*.wmf;*.emf;*.bmp;*.gif;*.jpg)\0*.wmf;*.emf;*.bmp;*.gif;*.jpg\0All files\0*.*\0",
    nullptr};

// The full path that the user chooses, or nothing.
std::string AskForFile(HWND owner, const FileKind& kind, bool toSave,
                       const std::string& suggested = {}) {
    std::array<wchar_t, 32768> path{};
    ToWide(suggested).copy(path.data(), path.size() - 1);
    OPENFILENAMEW request{};
    request.lStructSize = sizeof request;
    request.hwndOwner = owner;
    request.lpstrFilter = kind.filter;
    request.lpstrFile = path.data();
    request.nMaxFile = static_cast<DWORD>(path.size());
    request.lpstrDefExt = kind.ending;
    request.Flags = OFN_HIDEREADONLY | (toSave ? OFN_OVERWRITEPROMPT : OFN_FILEMUSTEXIST);
    const BOOL chosen = toSave ? GetSaveFileNameW(&request) : GetOpenFileNameW(&request);
    return chosen != FALSE ? ToUtf8(path.data()) : std::string();
}

}  // namespace

DocumentWindow::DocumentWindow(DocumentApplication& application) : m_application(application) {
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.lpfnWndProc = &DocumentWindow::WindowProcedure;
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.hIcon = LoadIconW(nullptr, IDI_APPLICATION);
    description.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    description.lpszClassName = ClassName;
    RegisterClassExW(&description);
    CreateWindowExW(0, ClassName, ProgramName, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CW_USEDEFAULT,
                    CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr, nullptr, this);
    SetWindowPos(m_handle, nullptr, 0, 0, Scaled(Width), Scaled(Height), SWP_NOMOVE | SWP_NOZORDER);
    SetMenu(m_handle, m_menu.Bar());
    m_band =
        std::make_unique<GeneratorBand>(m_handle, m_application.GeneratorBar(),
                                        [this](const std::string& problem) { Report(problem); });
    m_page = std::make_unique<DocumentPage>(m_handle, m_application);
    m_statusBar = CreateWindowExW(0, STATUSCLASSNAMEW, L"", WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP,
                                  0, 0, 0, 0, m_handle, nullptr, nullptr, nullptr);
    m_application.AddObserver(*this);
    ShowTitle();
    Arrange();
}

DocumentWindow::~DocumentWindow() {
    m_application.RemoveObserver(*this);
    m_page.reset();
    m_band.reset();
    SetWindowLongPtrW(m_handle, GWLP_USERDATA, 0);
    DestroyWindow(m_handle);
}

void DocumentWindow::Show(bool isShown) {
    ShowWindow(m_handle, isShown ? SW_SHOWNORMAL : SW_HIDE);
    if (isShown) {
        m_page->Focus();
    }
}

void DocumentWindow::Run() {
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        const bool isOwn = message.hwnd == m_handle || IsChild(m_handle, message.hwnd) != FALSE;
        if (m_band->TakesMessage(message) || (isOwn && m_menu.TakesKey(m_handle, message))) {
            continue;
        }
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

void DocumentWindow::Paint() {
    RedrawWindow(m_handle, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

void DocumentWindow::Open(const std::string& path) {
    Try([&] {
        const auto document = m_application.Open(path);
        if (!document->Problem().empty()) {
            Report(document->Problem());
        }
    });
}

LRESULT CALLBACK DocumentWindow::WindowProcedure(HWND window, UINT message, WPARAM wide,
                                                 LPARAM low) {
    if (message == WM_NCCREATE) {
        auto* created = static_cast<DocumentWindow*>(
            reinterpret_cast<const CREATESTRUCTW*>(low)->lpCreateParams);
        created->m_handle = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created));
    }
    auto* self = reinterpret_cast<DocumentWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    return self != nullptr && self->m_statusBar != nullptr
               ? self->Handle(message, wide, low)
               : DefWindowProcW(window, message, wide, low);
}

LRESULT DocumentWindow::Handle(UINT message, WPARAM wide, LPARAM low) {
    switch (message) {
        case WM_SIZE:
            Arrange();
            return 0;
        case WM_COMMAND:
            Command(LOWORD(wide));
            return 0;
        case WM_SETFOCUS:
            m_page->Focus();
            return 0;
        case WM_CLOSE:
            if (MayClose()) {
                Quit();
            }
            return 0;
        case WM_SETCURSOR:
            if (m_application.Cursor() == SystemCursor::Wait && LOWORD(low) == HTCLIENT) {
                SetCursor(LoadCursorW(nullptr, IDC_WAIT));
                return TRUE;
            }
            break;
        default:
            break;
    }
    return DefWindowProcW(m_handle, message, wide, low);
}

void DocumentWindow::Arrange() {
    RECT client{};
    GetClientRect(m_handle, &client);
    const int width = static_cast<int>(client.right);
    const int band = m_application.GeneratorBar().IsVisible() ? m_band->Height() : 0;
    m_band->Move({0, 0, width, band});
    ShowWindow(m_statusBar, m_application.IsStatusBarDisplayed() ? SW_SHOWNA : SW_HIDE);
    SendMessageW(m_statusBar, WM_SIZE, 0, 0);
    RECT status{};
    GetWindowRect(m_statusBar, &status);
    const int statusHeight =
        m_application.IsStatusBarDisplayed() ? static_cast<int>(status.bottom - status.top) : 0;
    MoveWindow(m_page->Handle(), 0, band, width,
               std::max(0, static_cast<int>(client.bottom) - band - statusHeight), TRUE);
    ShowStatus();
}

void DocumentWindow::Command(UINT id) {
    switch (id) {
        case DocumentCommand::New:
            if (MayClose()) {
                m_application.Add();
            }
            return;
        case DocumentCommand::Open:
            if (MayClose()) {
                if (const std::string path = AskForFile(m_handle, Documents, false);
                    !path.empty()) {
                    Open(path);
                }
            }
            return;
        case DocumentCommand::Save:
        case DocumentCommand::SaveAs:
            Save(id == DocumentCommand::SaveAs);
            return;
        case DocumentCommand::Exit:
            PostMessageW(m_handle, WM_CLOSE, 0, 0);
            return;
        case DocumentCommand::InsertPicture:
            InsertPicture();
            return;
        case DocumentCommand::About:
            MessageBoxW(m_handle, About, ProgramName, MB_OK | MB_ICONINFORMATION);
            return;
        default:
            return;
    }
}

void DocumentWindow::InsertPicture() {
    const auto document = m_application.OpenDocument();
    if (!document) {
        return;
    }
    if (const std::string path = AskForFile(m_handle, Pictures, false); !path.empty()) {
        Try([&] { document->AddPicture({.file = path}); });
    }
}

void DocumentWindow::OnChanged(DocumentChange change) {
    m_page->Follow(change);
    switch (change) {
        case DocumentChange::Document:
        case DocumentChange::File:
            ShowTitle();
            break;
        case DocumentChange::StatusBar:
        case DocumentChange::CommandBars:
            m_band->ShowButtons();
            Arrange();
            break;
        case DocumentChange::Cursor:
            SetCursor(LoadCursorW(
                nullptr, m_application.Cursor() == SystemCursor::Wait ? IDC_WAIT : IDC_ARROW));
            break;
        case DocumentChange::Text:
        case DocumentChange::Pictures:
            break;
    }
}

void DocumentWindow::ShowTitle() {
    const auto& document = m_application.OpenDocument();
    const std::string title = document ? document->Name() + " - krvdoc" : "krvdoc";
    SetWindowTextW(m_handle, ToWide(title).c_str());
}

void DocumentWindow::ShowStatus() {
    SendMessageW(m_statusBar, SB_SETTEXTW, 0,
                 reinterpret_cast<LPARAM>(ToWide(m_application.StatusText()).c_str()));
    // Seen also while a long call from outside keeps this thread busy.
    UpdateWindow(m_statusBar);
}

bool DocumentWindow::Save(bool askForName) {
    const auto document = m_application.OpenDocument();
    if (!document) {
        return true;
    }
    std::string path = document->FullName();
    if (askForName || !document->HasFile()) {
        path = AskForFile(m_handle, Documents, true,
                          document->HasFile() ? path : document->Name() + ".krvdoc");
    }
    return !path.empty() && Try([&] { m_application.Save(*document, path); });
}

bool DocumentWindow::MayClose() {
    const auto& document = m_application.OpenDocument();
    if (!document || !document->IsModified()) {
        return true;
    }
    const std::wstring question = L"Save the changes to \"" + ToWide(document->Name()) + L"\"?";
    switch (
        MessageBoxW(m_handle, question.c_str(), ProgramName, MB_YESNOCANCEL | MB_ICONEXCLAMATION)) {
        case IDYES:
            return Save(false);
        case IDNO:
            return true;
        default:
            return false;
    }
}

void DocumentWindow::Report(const std::string& problem) const {
    MessageBoxW(m_handle, ToWide(problem).c_str(), ProgramName, MB_OK | MB_ICONEXCLAMATION);
}

template <class Work>
bool DocumentWindow::Try(Work&& work) {
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

int DocumentWindow::Scaled(int pixels) const {
    return MulDiv(pixels, static_cast<int>(windows::DotsPerInch(m_handle)),
                  USER_DEFAULT_SCREEN_DPI);
}

}  // namespace krv::bench
