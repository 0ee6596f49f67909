#include "bench/shared/windows/MainWindow.h"

#include <commctrl.h>
#include <commdlg.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

#include "windows/base/DotsPerInch.h"
#include "windows/base/Module.h"
#include "windows/base/WideText.h"

namespace krv::bench {

using windows::ToUtf8;
using windows::ToWide;

namespace {

constexpr UINT_PTR QuitTimer = 1;
// Another thread of this process still sends the answer to the call that asked for the end: a
// process that ends at once would leave its caller with a failed call.
constexpr UINT QuitDelayMs = 200;
constexpr UINT RibbonMessage = WM_APP;
constexpr UINT_PTR RibbonTimer = 2;
constexpr UINT RibbonDelayMs = 200;

}  // namespace

MainWindow::MainWindow(const Look& look, OfficeApplication& application)
    : m_look(look), m_application(application), m_menu(!application.Traits().hasOneDocument) {
    Create({look.className}, {.title = look.name,
                              .style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
                              .left = CW_USEDEFAULT,
                              .top = CW_USEDEFAULT,
                              .width = CW_USEDEFAULT,
                              .height = CW_USEDEFAULT});
    SetWindowPos(Handle(), nullptr, 0, 0, Scaled(look.width), Scaled(look.height),
                 SWP_NOMOVE | SWP_NOZORDER);
    SetMenu(Handle(), m_menu.Bar());
    m_band.emplace(Handle());
    m_statusBar = CreateWindowExW(0, STATUSCLASSNAMEW, L"", WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP,
                                  0, 0, 0, 0, Handle(), nullptr, nullptr, nullptr);
}

MainWindow::~MainWindow() = default;

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
    SetTimer(Handle(), QuitTimer, QuitDelayMs, nullptr);
}

void MainWindow::ShowRibbon(OfficeAutomation& automation) {
    m_ribbon.emplace(
        automation, *m_band, [this] { PostRibbon(); },
        [this](const std::string& fault) {
            std::fprintf(stderr, "%s: %s\n", m_application.Traits().program, fault.c_str());
        });
    RefreshRibbon();
}

void MainWindow::ReleaseRibbon() {
    m_band->Show({}, {});
    m_ribbon.reset();
}

void MainWindow::PostRibbon() {
    if (m_ribbon && !std::exchange(m_isRibbonPosted, true)) {
        PostMessageW(Handle(), RibbonMessage, 0, 0);
    }
}

// An application that refuses all calls doesn't make any either.
void MainWindow::RefreshRibbon() {
    if (m_ribbon && IsEditing()) {
        SetTimer(Handle(), RibbonTimer, RibbonDelayMs, nullptr);
    } else if (m_ribbon) {
        m_isRibbonPosted = false;
        m_ribbon->Refresh();
    }
}

void MainWindow::OnOpened(OfficeDocument& opened) {
    if (!opened.Notice().empty()) {
        m_application.SetStatus(opened.Notice());
    }
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
        SetWindowPos(Handle(), HWND_TOP, 0, 0, 0, 0, SWP_NOSIZE);
    }
    ShowWindow(Handle(), SW_SHOWNORMAL);
    Focus();
    if (!isForScreenshot) {
        return;
    }
    RedrawWindow(Handle(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    std::printf("%s is ready\n", m_application.Traits().program);
    std::fflush(stdout);
}

void MainWindow::Run() {
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        const bool isOwn = message.hwnd == Handle() || IsChild(Handle(), message.hwnd) != FALSE;
        if (isOwn && !IsEditing() && m_menu.TakesKey(Handle(), message)) {
            continue;
        }
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

LRESULT MainWindow::HandleMessage(UINT message, WPARAM wide, LPARAM low) {
    if (!m_isStarted) {
        return DefaultMessage(message, wide, low);
    }
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
                KillTimer(Handle(), QuitTimer);
                PostQuitMessage(0);
            } else if (wide == RibbonTimer) {
                KillTimer(Handle(), RibbonTimer);
                RefreshRibbon();
            }
            return 0;
        case RibbonMessage:
            RefreshRibbon();
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
    return DefaultMessage(message, wide, low);
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
            PostMessageW(Handle(), WM_CLOSE, 0, 0);
            return;
        case MenuCommand::About:
            MessageBoxW(Handle(), m_look.about, m_look.name, MB_OK | MB_ICONINFORMATION);
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
        case OfficeChange::CommandBars:
            PostRibbon();
            break;
        case OfficeChange::StatusBar:
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
    GetClientRect(Handle(), &client);
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
    std::wstring title;
    if (active) {
        title = ToWide(active->Name()) + L" - ";
    }
    title += m_look.name;
    SetWindowTextW(Handle(), title.c_str());
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

bool MainWindow::MayClose(const std::shared_ptr<OfficeDocument>& closed) {
    if (m_application.IsKeptOpen(closed)) {
        return false;
    }
    OfficeDocument& document = *closed;
    if (!document.IsModified()) {
        return true;
    }
    const std::wstring question = L"Save the changes to \"" + ToWide(document.Name()) + L"\"?";
    switch (
        MessageBoxW(Handle(), question.c_str(), m_look.name, MB_YESNOCANCEL | MB_ICONEXCLAMATION)) {
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
                       [this](const auto& document) { return MayClose(document); });
}

void MainWindow::Report(const std::string& problem) const {
    MessageBoxW(Handle(), ToWide(problem).c_str(), m_look.name, MB_OK | MB_ICONEXCLAMATION);
}

std::string MainWindow::AskForFile(bool toSave, const std::string& suggested) const {
    std::vector<wchar_t> path(windows::LongestPath);
    ToWide(suggested).copy(path.data(), path.size() - 1);
    OPENFILENAMEW request{};
    request.lStructSize = sizeof request;
    request.hwndOwner = Handle();
    request.lpstrFilter = m_look.fileFilter;
    request.lpstrFile = path.data();
    request.nMaxFile = static_cast<DWORD>(path.size());
    request.lpstrDefExt = m_look.fileEnding;
    request.Flags = OFN_HIDEREADONLY | (toSave ? OFN_OVERWRITEPROMPT : OFN_FILEMUSTEXIST);
    const BOOL chosen = toSave ? GetSaveFileNameW(&request) : GetOpenFileNameW(&request);
    return chosen != FALSE ? ToUtf8(path.data()) : std::string();
}

int MainWindow::Scaled(int pixels) const {
    return MulDiv(pixels, static_cast<int>(windows::DotsPerInch(Handle())),
                  USER_DEFAULT_SCREEN_DPI);
}

}  // namespace krv::bench
