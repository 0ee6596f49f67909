#include "bench/shared/windows/MainWindow.h"

#include <commctrl.h>
#include <commdlg.h>

#include <algorithm>
#include <array>
#include <cstdio>

#include "windows/base/DotsPerInch.h"
#include "windows/base/WideText.h"

namespace krv::bench {

using windows::ToUtf8;
using windows::ToWide;

namespace {

constexpr UINT_PTR QuitTimer = 1;
// Another thread of this process still sends the answer to the call that asked for the end: a
// process that ends at once would leave its caller with a failed call.
constexpr UINT QuitDelayMs = 200;
constexpr std::size_t LongestPath = 32768;

}  // namespace

MainWindow::MainWindow(const Look& look, OfficeApplication& application)
    : m_look(look), m_application(application), m_menu(!application.Traits().hasOneDocument) {
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.lpfnWndProc = &MainWindow::WindowProcedure;
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.hIcon = LoadIconW(nullptr, IDI_APPLICATION);
    description.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    description.lpszClassName = look.className;
    RegisterClassExW(&description);
    CreateWindowExW(0, look.className, look.name, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
                    CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr,
                    nullptr, this);
    SetWindowPos(m_handle, nullptr, 0, 0, Scaled(look.width), Scaled(look.height),
                 SWP_NOMOVE | SWP_NOZORDER);
    SetMenu(m_handle, m_menu.Bar());
    m_band =
        std::make_unique<GeneratorBand>(m_handle, m_application.GeneratorBar(),
                                        [this](const std::string& problem) { Report(problem); });
    m_statusBar = CreateWindowExW(0, STATUSCLASSNAMEW, L"", WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP,
                                  0, 0, 0, 0, m_handle, nullptr, nullptr, nullptr);
}

MainWindow::~MainWindow() {
    m_control.reset();
    m_band.reset();
    SetWindowLongPtrW(m_handle, GWLP_USERDATA, 0);
    DestroyWindow(m_handle);
}

void MainWindow::Start() {
    m_isStarted = true;
    m_application.AddObserver(*this);
    Arrange();
    ShowDocuments();
}

void MainWindow::Stop() {
    m_isStarted = false;
    m_application.RemoveObserver(*this);
}

void MainWindow::Quit() {
    SetTimer(m_handle, QuitTimer, QuitDelayMs, nullptr);
}

void MainWindow::PrepareControl(OfficeAutomation& automation) {
    m_control.emplace(m_application, automation, *m_band);
}

void MainWindow::ReleaseControl() {
    m_band->ReleaseControl();
    m_control.reset();
}

void MainWindow::OpenFiles(const std::vector<std::string>& paths, bool isUnattended) {
    for (const std::string& path : paths) {
        if (!isUnattended) {
            Open(path);
            continue;
        }
        try {
            m_application.Open(path);
        } catch (const Error& error) {
            std::fprintf(stderr, "%s: %s\n", m_application.Traits().program,
                         error.Description().c_str());
            m_application.SetStatus(error.Description());
        }
    }
    if (!m_application.Active()) {
        m_application.Add();
    }
}

void MainWindow::Present(bool isForScreenshot) {
    if (isForScreenshot) {
        SetWindowPos(m_handle, HWND_TOP, 0, 0, 0, 0, SWP_NOSIZE);
    }
    ShowWindow(m_handle, SW_SHOWNORMAL);
    Focus();
    if (!isForScreenshot) {
        return;
    }
    RedrawWindow(m_handle, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    std::printf("%s is ready\n", m_application.Traits().program);
    std::fflush(stdout);
}

void MainWindow::Run() {
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

LRESULT CALLBACK MainWindow::WindowProcedure(HWND window, UINT message, WPARAM wide, LPARAM low) {
    if (message == WM_NCCREATE) {
        auto* created =
            static_cast<MainWindow*>(reinterpret_cast<const CREATESTRUCTW*>(low)->lpCreateParams);
        created->m_handle = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created));
    }
    auto* self = reinterpret_cast<MainWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    return self != nullptr && self->m_isStarted ? self->Handle(message, wide, low)
                                                : DefWindowProcW(window, message, wide, low);
}

LRESULT MainWindow::Handle(UINT message, WPARAM wide, LPARAM low) {
    switch (message) {
        case WM_SIZE:
            Arrange();
            return 0;
        case WM_COMMAND:
            FinishEditing();
            Command(LOWORD(wide));
            return 0;
        case WM_SETFOCUS:
            Focus();
            return 0;
        case WM_CLOSE:
            if (MayCloseAll()) {
                PostQuitMessage(0);
            }
            return 0;
        case WM_TIMER:
            if (wide == QuitTimer) {
                KillTimer(m_handle, QuitTimer);
                PostQuitMessage(0);
            }
            return 0;
        case WM_SETCURSOR:
            if (m_application.IsWaiting() && LOWORD(low) == HTCLIENT) {
                ShowCursor();
                return TRUE;
            }
            break;
        default:
            break;
    }
    return DefWindowProcW(m_handle, message, wide, low);
}

void MainWindow::Command(UINT id) {
    const auto document = m_application.Active();
    const bool replaces = m_application.Traits().hasOneDocument;
    switch (id) {
        case MenuCommand::New:
            if (!replaces || MayCloseAll()) {
                m_application.Add();
            }
            return;
        case MenuCommand::Open:
            if (!replaces || MayCloseAll()) {
                if (const std::string path = AskForFile(false); !path.empty()) {
                    Open(path);
                }
            }
            return;
        case MenuCommand::Save:
        case MenuCommand::SaveAs:
            if (document) {
                Save(*document, id == MenuCommand::SaveAs);
            }
            return;
        case MenuCommand::Exit:
            PostMessageW(m_handle, WM_CLOSE, 0, 0);
            return;
        case MenuCommand::About:
            MessageBoxW(m_handle, m_look.about, m_look.name, MB_OK | MB_ICONINFORMATION);
            return;
        default:
            break;
    }
    const auto& open = m_application.Documents();
    if (id >= MenuCommand::FirstDocument && id - MenuCommand::FirstDocument < open.size()) {
        m_application.Activate(open[id - MenuCommand::FirstDocument]);
    }
}

void MainWindow::OnChanged(OfficeChange change) {
    ShowChange(change);
    switch (change) {
        case OfficeChange::Documents:
        case OfficeChange::File:
            ShowDocuments();
            break;
        case OfficeChange::StatusBar:
        case OfficeChange::CommandBars:
            m_band->ShowButtons();
            Arrange();
            break;
        case OfficeChange::Cursor:
            ShowCursor();
            break;
        default:
            break;
    }
}

void MainWindow::Arrange() {
    RECT client{};
    GetClientRect(m_handle, &client);
    const LONG top = m_band->Height();
    m_band->Move({0, 0, client.right, top});
    ShowWindow(m_statusBar, m_application.IsStatusBarDisplayed() ? SW_SHOWNA : SW_HIDE);
    SendMessageW(m_statusBar, WM_SIZE, 0, 0);
    RECT status{};
    GetWindowRect(m_statusBar, &status);
    const LONG statusHeight = m_application.IsStatusBarDisplayed() ? status.bottom - status.top : 0;
    ArrangeContent({0, top, client.right, std::max(top, client.bottom - statusHeight)});
    ShowStatus();
}

void MainWindow::ShowDocuments() {
    std::vector<std::string> names;
    for (const auto& document : m_application.Documents()) {
        names.push_back(document->Name());
    }
    const auto& active = m_application.Active();
    m_menu.ListDocuments(names, active ? active->Name() : std::string());
    const std::wstring title = active ? ToWide(active->Name()) + L" - " : L"";
    SetWindowTextW(m_handle, (title + m_look.name).c_str());
}

void MainWindow::ShowStatus() {
    SendMessageW(m_statusBar, SB_SETTEXTW, 0,
                 reinterpret_cast<LPARAM>(ToWide(m_application.StatusText()).c_str()));
    // Seen also while a long call from outside keeps this thread busy.
    UpdateWindow(m_statusBar);
}

void MainWindow::ShowCursor() const {
    SetCursor(LoadCursorW(nullptr, m_application.IsWaiting() ? IDC_WAIT : IDC_ARROW));
}

bool MainWindow::Open(const std::string& path) {
    return Try([&] {
        const auto document = m_application.Open(path);
        if (!document->Notice().empty()) {
            Report(document->Notice());
        }
    });
}

bool MainWindow::Save(OfficeDocument& document, bool askForName) {
    std::string path = document.FullName();
    if (askForName || !document.HasFile()) {
        const std::string named = document.Name() + m_application.Traits().fileEnding;
        path = AskForFile(true, document.HasFile() ? path : named);
    }
    return !path.empty() && Try([&] { m_application.SaveAs(document, path); });
}

bool MainWindow::MayClose(OfficeDocument& document) {
    if (!document.IsModified() && !(m_control && m_control->IsUnsavedIn(document))) {
        return true;
    }
    const std::wstring question = L"Save the changes to \"" + ToWide(document.Name()) + L"\"?";
    switch (
        MessageBoxW(m_handle, question.c_str(), m_look.name, MB_YESNOCANCEL | MB_ICONEXCLAMATION)) {
        case IDYES:
            return Save(document, false);
        case IDNO:
            return true;
        default:
            return false;
    }
}

bool MainWindow::MayCloseAll() {
    FinishEditing();
    const auto documents = m_application.Documents();
    return std::all_of(documents.begin(), documents.end(),
                       [this](const auto& document) { return MayClose(*document); });
}

void MainWindow::Report(const std::string& problem) const {
    MessageBoxW(m_handle, ToWide(problem).c_str(), m_look.name, MB_OK | MB_ICONEXCLAMATION);
}

std::string MainWindow::AskForFile(bool toSave, const std::string& suggested) const {
    std::vector<wchar_t> path(LongestPath);
    ToWide(suggested).copy(path.data(), path.size() - 1);
    OPENFILENAMEW request{};
    request.lStructSize = sizeof request;
    request.hwndOwner = m_handle;
    request.lpstrFilter = m_look.fileFilter;
    request.lpstrFile = path.data();
    request.nMaxFile = static_cast<DWORD>(path.size());
    request.lpstrDefExt = m_look.fileEnding;
    request.Flags = OFN_HIDEREADONLY | (toSave ? OFN_OVERWRITEPROMPT : OFN_FILEMUSTEXIST);
    const BOOL chosen = toSave ? GetSaveFileNameW(&request) : GetOpenFileNameW(&request);
    return chosen != FALSE ? ToUtf8(path.data()) : std::string();
}

int MainWindow::Scaled(int pixels) const {
    return MulDiv(pixels, static_cast<int>(windows::DotsPerInch(m_handle)),
                  USER_DEFAULT_SCREEN_DPI);
}

}  // namespace krv::bench
