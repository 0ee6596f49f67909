#include "windows/base/DisabledWindows.h"

#include <utility>

#include "windows/base/ProcedureGuard.h"

namespace krv::windows {
namespace {

// Set while there is one.
thread_local DisabledWindows* innermost = nullptr;
thread_local HHOOK messageHook = nullptr;

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

bool IsDialog(HWND window) {
    constexpr ULONG_PTR DialogClass = 32770;
    return GetClassLongPtrW(window, GCW_ATOM) == DialogClass ||
           (GetWindowLongPtrW(window, GWL_EXSTYLE) & WS_EX_DLGMODALFRAME) != 0;
}

// Lists, menus and tool tips have no caption.
bool IsFrame(HWND window) {
    const LONG_PTR style = GetWindowLongPtrW(window, GWL_STYLE);
    return (style & WS_CHILD) == 0 && (style & WS_CAPTION) == WS_CAPTION && !IsDialog(window);
}

}  // namespace

DisabledWindows::DisabledWindows(HWND except)
    : m_except(except), m_outer(std::exchange(innermost, this)) {
    if (messageHook == nullptr) {
        messageHook =
            SetWindowsHookExW(WH_CALLWNDPROCRET, HookProcedure, nullptr, GetCurrentThreadId());
    }
    for (const HWND window : VisibleWindows()) {
        if (window != except) {
            Disable(window, false);
        }
    }
}

void DisabledWindows::Release() {
    if (std::exchange(m_isReleased, true)) {
        return;
    }
    innermost = m_outer;
    if (innermost == nullptr) {
        UnhookWindowsHookEx(std::exchange(messageHook, nullptr));
    }
    for (const Window& window : std::exchange(m_windows, {})) {
        if (window.cameMeanwhile && m_outer != nullptr && !m_outer->IsPartOfModal(window.handle)) {
            m_outer->m_windows.push_back(window);
        } else {
            EnableWindow(window.handle, TRUE);
        }
    }
}

void DisabledWindows::WindowGoes(HWND window) {
    if (innermost != nullptr && window != nullptr && innermost->m_except == window) {
        innermost->Release();
    }
}

void DisabledWindows::WindowComes(HWND window) {
    if (innermost != nullptr) {
        innermost->Disable(window, true);
    }
}

void DisabledWindows::Disable(HWND window, bool cameMeanwhile) {
    if (IsWindowEnabled(window) != FALSE) {
        m_windows.push_back({window, cameMeanwhile});
        EnableWindow(window, FALSE);
    }
}

// The application opens its windows when it likes, and the system's own loops run message boxes and
// file dialogs: what happens to the thread's windows is seen by what they are told.
LRESULT CALLBACK DisabledWindows::HookProcedure(int code, WPARAM wide, LPARAM low) {
    if (code == HC_ACTION) {
        GuardProcedure([&] {
            Notice(*reinterpret_cast<const CWPRETSTRUCT*>(low));
            return LRESULT{0};
        });
    }
    return CallNextHookEx(nullptr, code, wide, low);
}

void DisabledWindows::Notice(const CWPRETSTRUCT& message) {
    if (message.message == WM_NCDESTROY) {
        WindowWasDestroyed(message.hwnd);
    } else if (message.message == WM_ENABLE && message.wParam != FALSE) {
        FrameComes(message.hwnd);
    } else if (message.message == WM_WINDOWPOSCHANGED &&
               (reinterpret_cast<const WINDOWPOS*>(message.lParam)->flags & SWP_SHOWWINDOW) != 0) {
        FrameComes(message.hwnd);
    }
}

void DisabledWindows::FrameComes(HWND window) {
    if (innermost == nullptr || IsWindowVisible(window) == FALSE || !IsFrame(window) ||
        innermost->IsPartOfModal(window)) {
        return;
    }
    const HWND modal = GetLastActivePopup(innermost->m_except);
    innermost->Disable(window, true);
    if (GetActiveWindow() == window && modal != nullptr) {
        SetActiveWindow(modal);
    }
}

// Another window may be given the handle.
void DisabledWindows::WindowWasDestroyed(HWND window) {
    for (DisabledWindows* each = innermost; each != nullptr; each = each->m_outer) {
        std::erase_if(each->m_windows, [&](const Window& one) { return one.handle == window; });
    }
}

bool DisabledWindows::IsPartOfModal(HWND window) const {
    while (window != nullptr && window != m_except) {
        window = GetWindow(window, GW_OWNER);
    }
    return window != nullptr;
}

}  // namespace krv::windows
