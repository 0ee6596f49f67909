// AboutBoxUser: the user who reads the about box and closes it, in a thread of its own.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <thread>

namespace krv::tests {

class AboutBoxUser {
 public:
    // Runs what shows the about box, while the user does `work` and then presses OK.
    static void Show(
        const std::function<void()>& command,
        const std::function<void(HWND box)>& work = [](HWND) {}) {
        std::thread user([&] {
            const HWND box = FormWindow(L"About Corvane Tallyport for TQL/KRV");
            EXPECT_NE(box, nullptr);
            work(box);
            Click(box, L"OK");
        });
        command();
        user.join();
    }

    // The window of the form with this caption, once it is there; null when it doesn't come.
    static HWND FormWindow(const wchar_t* caption) {
        for (int tries = 0; tries < 1000; ++tries) {
            const HWND found = FindWindowW(L"KRVForm", caption);
            DWORD process = 0;
            GetWindowThreadProcessId(found, &process);
            if (found != nullptr && process == GetCurrentProcessId() && IsWindowVisible(found)) {
                return found;
            }
            Sleep(10);
        }
        return nullptr;
    }
    // Posted: the button may open a window that waits for its user.
    static void Click(HWND form, const wchar_t* caption) {
        PostMessageW(FindWindowExW(form, nullptr, L"Button", caption), BM_CLICK, 0, 0);
    }
};

}  // namespace krv::tests
