// ConnectDialogUser: the user in front of the connect dialog, in a thread of its own.
#pragma once

#include <windows.h>

#include <string>
#include <thread>

#include "windows/automation/LateBound.h"

namespace krv::tests {

class ConnectDialogUser {
 public:
    // The dialog's window, once it is there.
    static HWND Dialog() {
        for (int tries = 0; tries < 1000; ++tries) {
            const HWND found = FindWindowW(L"KRVForm", L" Connect To TQL/KRV Signal Generator");
            if (found != nullptr && IsWindowVisible(found) != 0) {
                return found;
            }
            Sleep(10);
        }
        return nullptr;
    }

    // The window of this class and text inside another, however deep; any text when none is given.
    static HWND Find(HWND parent, const wchar_t* className, const std::wstring& text = {}) {
        for (HWND child = GetWindow(parent, GW_CHILD); child != nullptr;
             child = GetWindow(child, GW_HWNDNEXT)) {
            wchar_t kind[64] = L"";
            GetClassNameW(child, kind, 64);
            if (lstrcmpiW(kind, className) == 0 && (text.empty() || TextOf(child) == text)) {
                return child;
            }
            if (const HWND deeper = Find(child, className, text); deeper != nullptr) {
                return deeper;
            }
        }
        return nullptr;
    }

    static void Click(HWND dialog, const wchar_t* caption) {
        SendMessageW(Find(dialog, L"Button", caption), BM_CLICK, 0, 0);
    }

    static void ConnectTo(HWND dialog, const std::wstring& address) {
        SendMessageW(Find(dialog, L"Edit"), WM_SETTEXT, 0,
                     reinterpret_cast<LPARAM>(address.c_str()));
        Click(dialog, L"&Connect");
    }

    // Runs the connect command while the user works on its dialog, which closing ends.
    template <class Work>
    static void Connect(const windows::LateBound& control, const Work& work) {
        std::thread user([&] {
            const HWND dialog = Dialog();
            work(dialog);
            Click(dialog, L"Close");
        });
        control.Call(L"DoConnect");
        user.join();
    }

 private:
    static std::wstring TextOf(HWND window) {
        wchar_t text[256] = L"";
        SendMessageW(window, WM_GETTEXT, 256, reinterpret_cast<LPARAM>(text));
        return text;
    }
};

}  // namespace krv::tests
