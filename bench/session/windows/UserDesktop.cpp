#include "bench/session/windows/UserDesktop.h"

#include <algorithm>
#include <optional>

namespace krv::bench {
namespace {

constexpr DWORD LookAgainMs = 10;

bool Fits(const std::string& caption, std::string_view pattern) {
    if (!pattern.empty() && pattern.back() == '*') {
        return caption.rfind(pattern.substr(0, pattern.size() - 1), 0) == 0;
    }
    return caption == pattern;
}

struct TopWindowSearch {
    DWORD process;
    std::vector<UserWindow> found;
};

BOOL CALLBACK CollectTopWindow(HWND handle, LPARAM context) {
    auto& search = *reinterpret_cast<TopWindowSearch*>(context);
    DWORD process = 0;
    GetWindowThreadProcessId(handle, &process);
    if (IsWindowVisible(handle) != FALSE && (search.process == 0 || process == search.process)) {
        search.found.emplace_back(handle);
    }
    return TRUE;
}

std::string DescribeAll(DWORD process) {
    std::string text;
    for (const UserWindow& window : TopWindows(process)) {
        text += "\n" + window.Describe();
    }
    return text.empty() ? " (there is no window)" : text;
}

template <class Accept>
UserWindow WaitForTop(DWORD process, const std::string& wanted, const Accept& accept) {
    std::optional<UserWindow> found;
    const bool isThere = WaitUntil([&] {
        for (const UserWindow& window : TopWindows(process)) {
            if (accept(window)) {
                found = window;
                return true;
            }
        }
        return false;
    });
    if (!isThere) {
        throw UserError("There is no " + wanted + ", but:" + DescribeAll(process));
    }
    return *found;
}

}  // namespace

bool WaitUntil(const std::function<bool()>& holds, DWORD patienceMs) {
    const ULONGLONG end = GetTickCount64() + patienceMs;
    while (!holds()) {
        if (GetTickCount64() > end) {
            return false;
        }
        Sleep(LookAgainMs);
    }
    return true;
}

std::vector<UserWindow> TopWindows(DWORD process) {
    TopWindowSearch search{process, {}};
    EnumWindows(CollectTopWindow, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

UserWindow WindowOf(std::string_view caption, DWORD process) {
    return WaitForTop(process, "window \"" + std::string(caption) + "\"",
                      [&](const UserWindow& window) {
                          return Fits(window.Text(), caption) && !window.IsMessageBox();
                      });
}

void ExpectNoWindow(std::string_view caption) {
    const bool isGone = WaitUntil([&] {
        const std::vector<UserWindow> windows = TopWindows();
        return std::none_of(windows.begin(), windows.end(),
                            [&](const UserWindow& window) { return window.Text() == caption; });
    });
    if (!isGone) {
        throw UserError("The window \"" + std::string(caption) + "\" is still there.");
    }
}

UserWindow MessageBoxOf(std::string_view text, DWORD process) {
    return WaitForTop(
        process, "message \"" + std::string(text) + "\"", [&](const UserWindow& window) {
            return window.IsMessageBox() && window.MessageText().find(text) != std::string::npos;
        });
}

std::string Answer(std::string_view text, std::string_view button, DWORD process) {
    const UserWindow box = MessageBoxOf(text, process);
    std::string whole = box.MessageText();
    box.Part(button).Click();
    box.ExpectGone();
    return whole;
}

}  // namespace krv::bench
