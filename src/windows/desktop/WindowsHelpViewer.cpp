#include "windows/desktop/WindowsHelpViewer.h"

#include <windows.h>

#include <string>

#include "common/Error.h"
#include "windows/base/WideText.h"
#include "windows/desktop/CompiledHelp.h"

namespace krv::windows {
namespace {

using HtmlHelpFunction = HWND(WINAPI*)(HWND caller, LPCWSTR file, UINT command, DWORD_PTR data);

// The viewer's command for a page.
constexpr UINT DisplayTopic = 0;

// Null when the system has no viewer. The library is never freed, since the viewer's windows may
// outlive the form that opened them.
HtmlHelpFunction LoadViewer() {
    HMODULE const library = LoadLibraryExW(L"hhctrl.ocx", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    if (library == nullptr) {
        return nullptr;
    }
    // By way of void*, since the compiler warns of casts between unlike functions.
    return reinterpret_cast<HtmlHelpFunction>(
        reinterpret_cast<void*>(GetProcAddress(library, "HtmlHelpW")));
}

bool IsFile(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

// Throws Error where the system has no viewer.
void Open(ports::WindowHandle owner, const std::wstring& path, UINT command, DWORD_PTR data) {
    static const HtmlHelpFunction htmlHelp = LoadViewer();
    if (htmlHelp == nullptr) {
        throw Error(ErrorNumber::FileNotFound,
                    "The help can't be shown: this computer has no HTML Help viewer.");
    }
    htmlHelp(reinterpret_cast<HWND>(owner), path.c_str(), command, data);
}

}  // namespace

void WindowsHelpViewer::ShowHelp(ports::WindowHandle owner, const std::string& file,
                                 ports::HelpCommand command) {
    const std::wstring path = ToWide(file);
    // The viewer would put up a box of its own.
    if (IsFile(path)) {
        Open(owner, path, static_cast<UINT>(command), 0);
    }
}

void WindowsHelpViewer::ShowTopic(ports::WindowHandle owner, const std::string& file,
                                  const std::string& topic) {
    const std::wstring path = ToWide(file);
    const std::wstring page = ToWide(topic);
    if (!IsFile(path) || LacksTopic(path, page)) {
        ShowHelp(owner, file, ports::HelpCommand::TableOfContents);
    } else {
        Open(owner, path, DisplayTopic, reinterpret_cast<DWORD_PTR>(page.c_str()));
    }
}

}  // namespace krv::windows
