// ControlTest: KRVControl.dll, loaded as a host loads it but without registration. Each test ends
// with every object of the library gone.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <KRVControl.h>
#include <gtest/gtest.h>
#include <ole2.h>
#include <wrl/client.h>

#include <array>
#include <atomic>
#include <string>
#include <utility>
#include <vector>

#include "bench/session/windows/UserWindow.h"
#include "tests/windows/support/TestedLibrary.h"
#include "windows/automation/LateBound.h"
#include "windows/base/WideText.h"

namespace krv::tests {

// Presses OK in each message box of this thread as soon as it comes up, and keeps its text. Closes
// the product's own windows, too, while it is told to.
class MessageBoxReader {
 public:
    MessageBoxReader()
        : m_hook(SetWindowsHookExW(WH_CBT, OnWindowEvent, nullptr, GetCurrentThreadId())) {
        s_current = this;
    }
    MessageBoxReader(const MessageBoxReader&) = delete;
    MessageBoxReader& operator=(const MessageBoxReader&) = delete;
    ~MessageBoxReader() {
        UnhookWindowsHookEx(m_hook);
        s_current = nullptr;
    }

    // As long as it is held it lets boxes stand. May be called by another thread.
    void Hold(bool held) {
        m_held = held;
        if (const HWND box = m_window; !held && box != nullptr) {
            PostMessageW(box, WM_COMMAND, IDOK, 0);
        }
    }
    // The texts since the last call.
    std::vector<std::string> Texts() { return std::exchange(m_texts, {}); }
    void CloseForms(bool closes) { m_closesForms = closes; }
    // The captions since the last call, each with a stroke behind it.
    std::string ClosedForms() { return std::exchange(m_closed, {}); }

 private:
    static LRESULT CALLBACK OnWindowEvent(int code, WPARAM wide, LPARAM low) {
        const HWND window = reinterpret_cast<HWND>(wide);
        if (code == HCBT_ACTIVATE && window != s_current->m_window) {
            s_current->Look(window);
        } else if (code == HCBT_DESTROYWND && window == s_current->m_window) {
            s_current->m_window = nullptr;
        }
        return CallNextHookEx(nullptr, code, wide, low);
    }

    void Look(HWND window) {
        if (const HWND content = GetDlgItem(window, 0xFFFF); content != nullptr) {
            m_window = window;
            m_texts.push_back(TextOf(content));
            if (!m_held) {
                PostMessageW(window, WM_COMMAND, IDOK, 0);
            }
        } else if (m_closesForms && bench::UserWindow(window).ClassName() == "KRVForm") {
            m_window = window;
            m_closed += TextOf(window) + '|';
            PostMessageW(window, WM_CLOSE, 0, 0);
        }
    }
    static std::string TextOf(HWND window) {
        std::array<wchar_t, 1024> text{};
        GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
        return windows::ToUtf8(text.data());
    }

    static inline MessageBoxReader* s_current = nullptr;
    HHOOK m_hook;
    std::vector<std::string> m_texts;
    std::string m_closed;
    bool m_closesForms = false;
    // The last one that was answered or closed.
    std::atomic<HWND> m_window{nullptr};
    std::atomic<bool> m_held{false};
};

class ControlTest : public ::testing::Test {
 protected:
    ControlTest() { OleInitialize(nullptr); }
    ~ControlTest() override { OleUninitialize(); }

    void TearDown() override {
        EXPECT_EQ(TestedLibrary::Control().ObjectCount(), 0);
        EXPECT_EQ(Function<HRESULT(WINAPI*)()>("DllCanUnloadNow")(), S_OK);
    }

    template <class Type>
    static Type Function(const char* name) {
        return TestedLibrary::Control().Function<Type>(name);
    }

    static windows::LateBound NewControl() {
        return TestedLibrary::Control().Create(__uuidof(::KRVControl));
    }

    template <class Interface>
    static Microsoft::WRL::ComPtr<Interface> Query(IUnknown* object) {
        Microsoft::WRL::ComPtr<Interface> found;
        object->QueryInterface(__uuidof(Interface), reinterpret_cast<void**>(found.GetAddressOf()));
        return found;
    }

    MessageBoxReader Boxes;
};

}  // namespace krv::tests
