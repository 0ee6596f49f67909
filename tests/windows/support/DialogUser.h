// What a user does with the dialogs of this process, in a thread of its own, while the test's
// thread shows them.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <functional>
#include <string>
#include <thread>

#include "bench/session/windows/UserDesktop.h"
#include "tests/windows/support/AtlContainer.h"
#include "windows/automation/LateBound.h"

namespace krv::tests {

inline constexpr const char* ConnectCaption = " Connect To TQL/KRV Signal Generator";

// The dialog of this process with the caption, waited for.
inline bench::UserWindow Dialog(const char* caption) {
    return bench::WindowOf(caption, GetCurrentProcessId());
}

// What the user does; when it goes another way, that fails the test, and all windows are closed: a
// dialog that stays open would keep the test's thread for ever.
inline void Act(const std::function<void()>& user) {
    try {
        user();
    } catch (const bench::UserError& error) {
        ADD_FAILURE() << error.what();
        bench::WaitUntil([] {
            const auto windows = bench::TopWindows(GetCurrentProcessId());
            for (const bench::UserWindow& window : windows) {
                window.Close();
            }
            return windows.empty();
        });
    }
}

// Does the work on this thread, which also serves the windows, while the user acts in another.
inline void Let(
    const std::function<void()>& user, const std::function<void()>& work = [] {}) {
    const HANDLE done = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    std::thread thread([&] {
        Act(user);
        SetEvent(done);
    });
    work();
    while (MsgWaitForMultipleObjects(1, &done, FALSE, INFINITE, QS_ALLINPUT) != WAIT_OBJECT_0) {
        PumpMessages();
    }
    thread.join();
    CloseHandle(done);
}

// In the connect dialog, which is open or about to open: connects to an M7718C and closes it.
inline void UseConnectDialog(const std::string& address) {
    const bench::UserWindow dialog = Dialog(ConnectCaption);
    dialog.Part("Edit").Type(address);
    dialog.Part("Connect").Click();
    dialog.Part("Connected to M7718C at " + address + ".");
    dialog.Part("Close").Click();
    dialog.ExpectGone();
}

inline void Connect(const windows::LateBound& control, const std::string& address) {
    Let([&] { UseConnectDialog(address); }, [&] { control.Call(L"DoConnect"); });
}

}  // namespace krv::tests
