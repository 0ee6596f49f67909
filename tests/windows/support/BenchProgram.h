// The bench's programs as tests meet them: started beside the tests, found by their main window,
// and known as the running application where a test's registry allows it.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>
// After windows.h, which it needs.
#include <objbase.h>

#include <array>
#include <string>
#include <utility>

#include "bench/session/windows/UserDesktop.h"

namespace krv::tests {

// A class that leads to one of the bench's programs for one test, in a registry that has none.
class ClassForTests {
 public:
    ClassForTests(const wchar_t* name, const CLSID& id) : m_name(name) {
        CLSID found{};
        if (SUCCEEDED(CLSIDFromProgID(name, &found))) {
            return;
        }
        // The system takes no identity that is longer than its text and a NUL.
        std::array<wchar_t, 39> text{};
        StringFromGUID2(id, text.data(), static_cast<int>(text.size()));
        m_isMade =
            RegSetKeyValueW(HKEY_CLASSES_ROOT, (m_name + L"\\CLSID").c_str(), nullptr, REG_SZ,
                            text.data(),
                            static_cast<DWORD>(text.size() * sizeof(wchar_t))) == ERROR_SUCCESS;
    }
    ClassForTests(const ClassForTests&) = delete;
    ClassForTests& operator=(const ClassForTests&) = delete;
    ~ClassForTests() {
        if (m_isMade) {
            RegDeleteTreeW(HKEY_CLASSES_ROOT, m_name.c_str());
        }
    }
    [[nodiscard]] bool IsMade() const { return m_isMade; }

 private:
    std::wstring m_name;
    bool m_isMade = false;
};

class BenchProgram {
 public:
    // The program lies beside the tests.
    BenchProgram(const std::wstring& program, std::wstring windowClass,
                 const std::wstring& arguments)
        : m_windowClass(std::move(windowClass)) {
        std::wstring command = program + L" " + arguments;
        STARTUPINFOW start{};
        start.cb = sizeof start;
        EXPECT_TRUE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr,
                                   nullptr, &start, &m_process));
    }
    BenchProgram(const BenchProgram&) = delete;
    BenchProgram& operator=(const BenchProgram&) = delete;
    ~BenchProgram() {
        TerminateProcess(m_process.hProcess, 99);
        CloseHandle(m_process.hThread);
        CloseHandle(m_process.hProcess);
    }

    // Its main window, once it is shown; null when it doesn't come.
    [[nodiscard]] HWND Window() const {
        HWND found = nullptr;
        bench::WaitUntil([&] {
            for (HWND window = nullptr;
                 (window = FindWindowExW(nullptr, window, m_windowClass.c_str(), nullptr)) !=
                 nullptr;) {
                DWORD owner = 0;
                GetWindowThreadProcessId(window, &owner);
                if (owner == m_process.dwProcessId && IsWindowVisible(window) != FALSE) {
                    found = window;
                }
            }
            return found != nullptr;
        });
        return found;
    }
    [[nodiscard]] DWORD Process() const { return m_process.dwProcessId; }
    // As a fault would.
    void Kill() const { TerminateProcess(m_process.hProcess, 99); }
    // STILL_ACTIVE when it doesn't end.
    [[nodiscard]] DWORD ExitCode() const {
        DWORD code = 0;
        WaitForSingleObject(m_process.hProcess, bench::PatienceMs);
        GetExitCodeProcess(m_process.hProcess, &code);
        return code;
    }

 private:
    std::wstring m_windowClass;
    PROCESS_INFORMATION m_process{};
};

}  // namespace krv::tests
