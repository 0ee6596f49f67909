// AtlContainer: a control in a window of AtlAxWin, a container that this project didn't write.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>
// After windows.h, which it needs.
#include <oaidl.h>
#include <wrl/client.h>

#include <functional>

#include "windows/automation/ComGuard.h"

namespace krv::tests {

inline void PumpMessages() {
    for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0;) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

// Lets messages through until it holds; false when it doesn't within two minutes, which is long
// enough for a busy machine.
inline bool WaitUntil(const std::function<bool()>& holds) {
    const ULONGLONG end = GetTickCount64() + 120000;
    while (GetTickCount64() < end) {
        PumpMessages();
        if (holds()) {
            return true;
        }
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    }
    return false;
}

class AtlContainer {
 public:
    // A frame that isn't shown is, for the control, a form that is only loaded.
    explicit AtlContainer(IUnknown* control, DWORD shown = WS_VISIBLE) {
        m_frame = CreateWindowExW(0, L"STATIC", L"Host", WS_OVERLAPPEDWINDOW | shown, 0, 0, 520,
                                  380, nullptr, nullptr, nullptr, nullptr);
        m_host = CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE, 10, 10, 473, 311,
                                 m_frame, nullptr, nullptr, nullptr);
        const HMODULE atl = LoadLibraryW(L"atl.dll");
        using Attach = HRESULT(WINAPI*)(IUnknown*, HWND, IUnknown**);
        const auto attach = reinterpret_cast<Attach>(
            reinterpret_cast<void*>(GetProcAddress(atl, "AtlAxAttachControl")));
        windows::ThrowIfFailed(attach(control, m_host, &m_container));
        PumpMessages();
    }
    AtlContainer(const AtlContainer&) = delete;
    AtlContainer& operator=(const AtlContainer&) = delete;
    ~AtlContainer() {
        DestroyWindow(m_frame);
        m_container.Reset();
        PumpMessages();
    }

    [[nodiscard]] HWND Frame() const { return m_frame; }
    [[nodiscard]] HWND Control() const { return GetWindow(m_host, GW_CHILD); }
    [[nodiscard]] HWND Child(int id) const { return GetDlgItem(Control(), id); }

    void Click(int id) const {
        SendMessageW(Child(id), BM_CLICK, 0, 0);
        PumpMessages();
    }
    void Type(int id, const wchar_t* text) const {
        SendMessageW(Child(id), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text));
        PumpMessages();
    }
    [[nodiscard]] std::wstring Text(int id) const {
        wchar_t text[512] = L"";
        GetWindowTextW(Child(id), text, 512);
        return text;
    }

 private:
    HWND m_frame;
    HWND m_host;
    Microsoft::WRL::ComPtr<IUnknown> m_container;
};

}  // namespace krv::tests
