#include "bench/shared/windows/MainWindow.h"

#include <commctrl.h>
#include <commdlg.h>

#include <algorithm>
#include <array>
#include <cstdio>

#include "windows/base/WideText.h"
#include "windows/forms/Scale.h"

namespace krv::bench {

using windows::ToUtf8;
using windows::ToWide;

namespace {

constexpr UINT_PTR QuitTimer = 1;
// Another thread of this process still sends the answer to the call that asked for the end: a
// process that ends at once would leave its caller with a failed call.
constexpr UINT QuitDelayMs = 200;

}  // namespace

MainWindow::MainWindow(const Program& program, OfficeApplication& application,
                       const std::vector<MenuList>& menu)
    : m_program(program), m_application(application), m_menu(menu) {
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.lpfnWndProc = &MainWindow::WindowProcedure;
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.hIcon = LoadIconW(nullptr, IDI_APPLICATION);
    description.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    description.lpszClassName = program.className;
    RegisterClassExW(&description);
    CreateWindowExW(0, program.className, program.name, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
                    CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr,
                    nullptr, this);
    SetWindowPos(m_handle, nullptr, 0, 0, Scaled(program.width), Scaled(program.height),
                 SWP_NOMOVE | SWP_NOZORDER);
    SetMenu(m_handle, m_menu.Bar());
    m_band =
        std::make_unique<GeneratorBand>(m_handle, m_application.GeneratorBar(),
                                        [this](const std::string& problem) { Report(problem); });
    m_statusBar = CreateWindowExW(0, STATUSCLASSNAMEW, L"", WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP,
                                  0, 0, 0, 0, m_handle, nullptr, nullptr, nullptr);
}

MainWindow::~MainWindow() {
    m_band.reset();
    SetWindowLongPtrW(m_handle, GWLP_USERDATA, 0);
    DestroyWindow(m_handle);
}

void MainWindow::Start() {
    m_isStarted = true;
    Arrange();
}

void MainWindow::Stop() {
    m_isStarted = false;
}

void MainWindow::Show(bool isShown) {
    ShowWindow(m_handle, isShown ? SW_SHOWNORMAL : SW_HIDE);
    if (isShown) {
        Focus();
    }
}

void MainWindow::Quit() {
    SetTimer(m_handle, QuitTimer, QuitDelayMs, nullptr);
}

void MainWindow::Present(bool isForScreenshot) {
    if (!isForScreenshot) {
        Show(true);
        return;
    }
    SetWindowPos(m_handle, HWND_TOP, 0, 0, 0, 0, SWP_NOSIZE);
    Show(true);
    RedrawWindow(m_handle, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    std::printf("%s is ready\n", ToUtf8(m_program.name).c_str());
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
            if (LOWORD(wide) == StandardCommand::Exit) {
                PostMessageW(m_handle, WM_CLOSE, 0, 0);
            } else if (LOWORD(wide) == StandardCommand::About) {
                MessageBoxW(m_handle, m_program.about, m_program.name, MB_OK | MB_ICONINFORMATION);
            } else {
                Command(LOWORD(wide));
            }
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
            if (IsWaiting() && LOWORD(low) == HTCLIENT) {
                ShowCursor();
                return TRUE;
            }
            break;
        default:
            break;
    }
    return DefWindowProcW(m_handle, message, wide, low);
}

void MainWindow::Arrange() {
    RECT client{};
    GetClientRect(m_handle, &client);
    const LONG top = m_application.GeneratorBar().IsVisible() ? m_band->Height() : 0;
    m_band->Move({0, 0, client.right, top});
    ShowWindow(m_statusBar, m_application.IsStatusBarDisplayed() ? SW_SHOWNA : SW_HIDE);
    SendMessageW(m_statusBar, WM_SIZE, 0, 0);
    RECT status{};
    GetWindowRect(m_statusBar, &status);
    const LONG statusHeight = m_application.IsStatusBarDisplayed() ? status.bottom - status.top : 0;
    ArrangeContent({0, top, client.right, std::max(top, client.bottom - statusHeight)});
    ShowStatus();
}

void MainWindow::ShowTitle(const std::string& document) {
    const std::wstring title = document.empty() ? L"" : ToWide(document) + L" - ";
    SetWindowTextW(m_handle, (title + m_program.name).c_str());
}

void MainWindow::ShowStatus() {
    SendMessageW(m_statusBar, SB_SETTEXTW, 0,
                 reinterpret_cast<LPARAM>(ToWide(m_application.StatusText()).c_str()));
    // Seen also while a long call from outside keeps this thread busy.
    UpdateWindow(m_statusBar);
}

void MainWindow::ShowBars() {
    m_band->ShowButtons();
    Arrange();
}

void MainWindow::ShowCursor() const {
    SetCursor(LoadCursorW(nullptr, IsWaiting() ? IDC_WAIT : IDC_ARROW));
}

void MainWindow::Report(const std::string& problem) const {
    MessageBoxW(m_handle, ToWide(problem).c_str(), m_program.name, MB_OK | MB_ICONEXCLAMATION);
}

std::string MainWindow::AskForFile(const FileKind& kind, bool toSave,
                                   const std::string& suggested) const {
    std::array<wchar_t, 32768> path{};
    ToWide(suggested).copy(path.data(), path.size() - 1);
    OPENFILENAMEW request{};
    request.lStructSize = sizeof request;
    request.hwndOwner = m_handle;
    request.lpstrFilter = kind.filter;
    request.lpstrFile = path.data();
    request.nMaxFile = static_cast<DWORD>(path.size());
    request.lpstrDefExt = kind.ending;
    request.Flags = OFN_HIDEREADONLY | (toSave ? OFN_OVERWRITEPROMPT : OFN_FILEMUSTEXIST);
    const BOOL chosen = toSave ? GetSaveFileNameW(&request) : GetOpenFileNameW(&request);
    return chosen != FALSE ? ToUtf8(path.data()) : std::string();
}

int MainWindow::AskToSave(const std::string& document) const {
    const std::wstring question = L"Save the changes to \"" + ToWide(document) + L"\"?";
    return MessageBoxW(m_handle, question.c_str(), m_program.name,
                       MB_YESNOCANCEL | MB_ICONEXCLAMATION);
}

int MainWindow::Scaled(int pixels) const {
    return MulDiv(pixels, static_cast<int>(windows::DotsPerInch(m_handle)),
                  USER_DEFAULT_SCREEN_DPI);
}

}  // namespace krv::bench
