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
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "tests/windows/support/TestedLibrary.h"
#include "windows/automation/LateBound.h"
#include "windows/base/WideText.h"

namespace krv::tests {

// Presses OK in each message box of this process, as a user would, and keeps its text. Closes the
// product's own windows, too, while it is told to. Works from a thread of its own, since a box is
// complete only when it shows.
class MessageBoxReader {
 public:
    MessageBoxReader() : m_thread([this] { Run(); }) {}
    MessageBoxReader(const MessageBoxReader&) = delete;
    MessageBoxReader& operator=(const MessageBoxReader&) = delete;
    ~MessageBoxReader() {
        m_isEnding = true;
        m_thread.join();
    }

    // As long as it is held it lets boxes stand. May be called by another thread.
    void Hold(bool held) { m_isHeld = held; }
    // The texts since the last call.
    std::vector<std::string> Texts() {
        const std::lock_guard lock(m_mutex);
        return std::exchange(m_texts, {});
    }
    void CloseForms(bool closes) { m_closesForms = closes; }
    // The captions since the last call, each with a stroke behind it.
    std::string ClosedForms() {
        const std::lock_guard lock(m_mutex);
        return std::exchange(m_closed, {});
    }
    // The visible window of the class that this process shows; null without one.
    static HWND Shown(const wchar_t* className) {
        const HWND window = FindWindowW(className, nullptr);
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        return process == GetCurrentProcessId() && IsWindowVisible(window) != 0 ? window : nullptr;
    }

 private:
    void Run() {
        for (HWND closed = nullptr; !m_isEnding; Sleep(5)) {
            if (const HWND box = m_isHeld ? nullptr : Shown(L"#32770"); box != nullptr) {
                Note(m_texts, TextOf(GetDlgItem(box, 0xFFFF)));
                PostMessageW(box, WM_COMMAND, IDOK, 0);
                WaitForEndOf(box);
            }
            const HWND form = m_closesForms ? Shown(L"KRVForm") : nullptr;
            if (form != nullptr && form != closed) {
                std::array<wchar_t, 256> caption{};
                // Without asking the thread of the window, which may be waiting for this one.
                InternalGetWindowText(form, caption.data(), static_cast<int>(caption.size()));
                const std::lock_guard lock(m_mutex);
                m_closed += windows::ToUtf8(caption.data()) + '|';
                PostMessageW(form, WM_CLOSE, 0, 0);
            }
            closed = form;
        }
    }
    void Note(std::vector<std::string>& texts, std::string text) {
        const std::lock_guard lock(m_mutex);
        texts.push_back(std::move(text));
    }
    static void WaitForEndOf(HWND box) {
        for (int tries = 0; tries < 400 && IsWindow(box) != 0; ++tries) {
            Sleep(5);
        }
    }
    static std::string TextOf(HWND window) {
        std::array<wchar_t, 1024> text{};
        GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
        return windows::ToUtf8(text.data());
    }

    std::mutex m_mutex;
    std::vector<std::string> m_texts;
    std::string m_closed;
    std::atomic<bool> m_closesForms{false};
    std::atomic<bool> m_isHeld{false};
    std::atomic<bool> m_isEnding{false};
    std::thread m_thread;
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
