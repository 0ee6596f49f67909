// WindowClass: the base of a class whose objects are windows of one of the system's window classes.
//
//     class Sheet : public WindowClass<Sheet> {
//      public:
//         explicit Sheet(HWND parent) { Create(Kind, {.style = WS_CHILD, .parent = parent}); }
//      private:
//         friend WindowClass<Sheet>;
//         LRESULT HandleMessage(UINT message, WPARAM wide, LPARAM low);
//     };
//
// HandleMessage gets the window's messages from the end of Create until the window is gone, and
// passes those that it has no use for to DefaultMessage. The messages of the creation itself go to
// the system alone. An exception of HandleMessage ends at GuardProcedure.
//
// For the thread that creates the window.
#pragma once

#include <windows.h>

#include <utility>

#include "windows/base/ProcedureGuard.h"

namespace krv::windows {

// What all windows of a class have alike. The name is static.
struct WindowKind {
    // For a class that paints all of its windows.
    static constexpr int NoBackground = -1;

    const wchar_t* name;
    // A colour of the system.
    int background = COLOR_BTNFACE;
    // CS_ flags.
    UINT style = 0;
};

// One window to be made.
struct WindowSetup {
    const wchar_t* title = L"";
    DWORD style = 0;
    DWORD extendedStyle = 0;
    HWND parent = nullptr;
    // In pixels of the parent; CW_USEDEFAULT leaves a top-level window's to the system.
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
};

// Registers the kind with its first window; null when the system refuses the window.
[[nodiscard]] HWND CreateWindowOf(const WindowKind& kind, WNDPROC procedure,
                                  const WindowSetup& setup);

template <class Derived>
class WindowClass {
 public:
    WindowClass(const WindowClass&) = delete;
    WindowClass& operator=(const WindowClass&) = delete;

    // Null before Create, and when the window is gone: a parent takes its children with it.
    [[nodiscard]] HWND Handle() const { return m_handle; }

 protected:
    WindowClass() = default;
    // The object's other parts are gone by now: the window goes without another message to them.
    ~WindowClass() {
        if (m_handle != nullptr) {
            SetWindowLongPtrW(m_handle, GWLP_USERDATA, 0);
            DestroyWindow(m_handle);
        }
    }

    // The new window; null when the system refuses it.
    HWND Create(const WindowKind& kind, const WindowSetup& setup) {
        m_handle = CreateWindowOf(kind, &WindowClass::Procedure, setup);
        if (m_handle != nullptr) {
            SetWindowLongPtrW(m_handle, GWLP_USERDATA,
                              reinterpret_cast<LONG_PTR>(static_cast<Derived*>(this)));
        }
        return m_handle;
    }

    // Ends the window while the object lives, which hears of it. Does nothing without a window.
    void Destroy() {
        if (m_handle != nullptr) {
            DestroyWindow(m_handle);
        }
    }

    LRESULT DefaultMessage(UINT message, WPARAM wide, LPARAM low) const {
        return DefWindowProcW(m_handle, message, wide, low);
    }

 private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wide, LPARAM low) noexcept {
        auto* const self = reinterpret_cast<Derived*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        if (self == nullptr) {
            return DefWindowProcW(window, message, wide, low);
        }
        if (message == WM_NCDESTROY) {
            SetWindowLongPtrW(window, GWLP_USERDATA, 0);
            static_cast<WindowClass*>(self)->m_handle = nullptr;
            return DefWindowProcW(window, message, wide, low);
        }
        // The object may go with what the message starts.
        return GuardProcedure([&] { return self->HandleMessage(message, wide, low); });
    }

    HWND m_handle = nullptr;
};

}  // namespace krv::windows
