// WindowHook: lets an object see the messages of a window that another class answers for, an edit
// box say, before that class does.
//
//     using BoxHook = WindowHook<&CellEditor::HandleBoxMessage>;
//     BoxHook::Attach(box, *this);
//
// The member takes (HWND window, UINT message, WPARAM wide, LPARAM low) and passes what it has no
// use for to DefSubclassProc. Its exceptions end at GuardProcedure. The hook goes with the window,
// or with Detach, which comes before the object goes.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <commctrl.h>

#include "windows/base/ProcedureGuard.h"

namespace krv::windows {

template <auto Member>
class WindowHook;

template <class Object, LRESULT (Object::*Member)(HWND, UINT, WPARAM, LPARAM)>
class WindowHook<Member> {
 public:
    static void Attach(HWND window, Object& object) {
        SetWindowSubclass(window, &WindowHook::Procedure, Id, reinterpret_cast<DWORD_PTR>(&object));
    }
    static void Detach(HWND window) { RemoveWindowSubclass(window, &WindowHook::Procedure, Id); }

 private:
    static constexpr UINT_PTR Id = 1;

    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wide, LPARAM low, UINT_PTR,
                                      DWORD_PTR object) noexcept {
        if (message == WM_NCDESTROY) {
            Detach(window);
            return DefSubclassProc(window, message, wide, low);
        }
        return GuardProcedure([&] {
            return (reinterpret_cast<Object*>(object)->*Member)(window, message, wide, low);
        });
    }
};

}  // namespace krv::windows
