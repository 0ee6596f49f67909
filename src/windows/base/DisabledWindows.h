// DisabledWindows: keeps the user from every other window of this thread, the application's and our
// own, while a modal window is up. At its end, whatever the reason, each window that it disabled
// and that is still there is enabled again; one that was disabled before stays so.
//
// A frame of the application that comes up or is enabled meanwhile, that of a workbook which is
// being opened, say, is disabled, too. Dialogs aren't: one that comes up under a modal window asks
// something that the thread waits for.
//
// They end in the opposite order of their beginning, as the loops of modal windows do.
#pragma once

#include <windows.h>

#include <vector>

namespace krv::windows {

class DisabledWindows {
 public:
    // All but the modal window, or but the owner of a window that disables its owner by itself.
    explicit DisabledWindows(HWND except);
    DisabledWindows(const DisabledWindows&) = delete;
    DisabledWindows& operator=(const DisabledWindows&) = delete;
    ~DisabledWindows() { Release(); }

    // Enables them before the modal window goes, so that one of them becomes active and no other
    // program's. What came up meanwhile stays with the modal window below, where there is one.
    void Release();

    // The same for a modal window that is about to be destroyed while its loop still runs.
    static void WindowGoes(HWND window);

    // For a window that is about to be shown and isn't modal: the user can't reach it, either,
    // while a modal one is up.
    static void WindowComes(HWND window);

 private:
    struct Window {
        HWND handle;
        bool cameMeanwhile;
    };

    static LRESULT CALLBACK HookProcedure(int code, WPARAM wide, LPARAM low);
    static void Notice(const CWPRETSTRUCT& message);
    static void FrameComes(HWND window);
    static void WindowWasDestroyed(HWND window);

    void Disable(HWND window, bool cameMeanwhile);
    [[nodiscard]] bool IsPartOfModal(HWND window) const;

    HWND m_except;
    std::vector<Window> m_windows;
    // What was there when this began; null for the first.
    DisabledWindows* m_outer;
    bool m_isReleased = false;
};

}  // namespace krv::windows
