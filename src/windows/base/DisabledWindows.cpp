#include "windows/base/DisabledWindows.h"

#include <utility>

namespace krv::windows {
namespace {

thread_local DisabledWindows* innermost = nullptr;

// Hidden windows are the lists of combo boxes, tool tips and the system's own: they come up for
// windows that are enabled.
BOOL CALLBACK NoteVisible(HWND window, LPARAM list) {
    if (IsWindowVisible(window) != FALSE) {
        reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    }
    return TRUE;
}

std::vector<HWND> VisibleWindows() {
    std::vector<HWND> windows;
    EnumThreadWindows(GetCurrentThreadId(), NoteVisible, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

}  // namespace

DisabledWindows::DisabledWindows(HWND except)
    : m_except(except), m_outer(std::exchange(innermost, this)) {
    for (const HWND window : VisibleWindows()) {
        if (window != except) {
            Disable(window);
        }
    }
}

DisabledWindows::~DisabledWindows() {
    Release();
    innermost = m_outer;
}

void DisabledWindows::Disable(HWND window) {
    if (IsWindowEnabled(window) != FALSE) {
        m_windows.push_back(window);
        EnableWindow(window, FALSE);
    }
}

void DisabledWindows::Release() {
    for (const HWND window : std::exchange(m_windows, {})) {
        EnableWindow(window, TRUE);
    }
}

void DisabledWindows::WindowGoes(HWND window) {
    if (innermost != nullptr && window != nullptr && innermost->m_except == window) {
        innermost->Release();
    }
}

void DisabledWindows::WindowComes(HWND window) {
    if (innermost != nullptr) {
        innermost->Disable(window);
    }
}

}  // namespace krv::windows
