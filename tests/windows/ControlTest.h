// ControlTest: KRVControl.dll, loaded as a host loads it but without registration. Each test ends
// with every object of the library gone.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <KRVControl.h>
#include <gtest/gtest.h>
#include <ole2.h>
#include <wrl/client.h>

#include <atomic>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "tests/windows/TestedLibrary.h"
#include "windows/automation/LateBound.h"
#include "windows/base/WideText.h"

namespace krv::tests {

// Presses OK in each message box of this process, as a user would, and keeps its text.
class MessageBoxReader {
 public:
    MessageBoxReader() : m_thread([this] { Run(); }) {}
    MessageBoxReader(const MessageBoxReader&) = delete;
    MessageBoxReader& operator=(const MessageBoxReader&) = delete;
    ~MessageBoxReader() {
        m_ending = true;
        m_thread.join();
    }

    // As long as it is held it lets boxes stand.
    void Hold(bool held) { m_held = held; }

    // Of texts that wait for Texts().
    std::size_t Count() {
        const std::lock_guard lock(m_mutex);
        return m_texts.size();
    }
    // The texts since the last call.
    std::vector<std::string> Texts() {
        const std::lock_guard lock(m_mutex);
        return std::exchange(m_texts, {});
    }

 private:
    void Run() {
        while (!m_ending) {
            const HWND box = FindWindowW(L"#32770", nullptr);
            DWORD process = 0;
            GetWindowThreadProcessId(box, &process);
            if (!m_held && box != nullptr && process == GetCurrentProcessId() &&
                IsWindowVisible(box) != 0) {
                Answer(box);
            }
            Sleep(5);
        }
    }

    void Answer(HWND box) {
        wchar_t text[1024] = L"";
        GetWindowTextW(GetDlgItem(box, 0xFFFF), text, 1024);
        {
            const std::lock_guard lock(m_mutex);
            m_texts.push_back(windows::ToUtf8(text));
        }
        PostMessageW(box, WM_COMMAND, IDOK, 0);
        for (int tries = 0; tries < 400 && IsWindow(box) != 0; ++tries) {
            Sleep(5);
        }
    }

    std::mutex m_mutex;
    std::vector<std::string> m_texts;
    std::atomic<bool> m_held{false};
    std::atomic<bool> m_ending{false};
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
