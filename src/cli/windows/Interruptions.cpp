#include "cli/Interruptions.h"

#include <windows.h>

#include <cstring>
#include <mutex>

namespace krv::cli {
namespace {

// The system calls the handler on a thread of its own; the lock makes StopWatching wait for it.
std::mutex g_lock;
Interruptions::Callback g_callback = nullptr;
void* g_context = nullptr;

bool IsWatched() {
    const std::scoped_lock hold(g_lock);
    return g_callback != nullptr;
}

// The system ends the program when the handler returns from this event, and 5 s after it anyhow.
void WaitForTheEndOfWork() {
    constexpr DWORD PauseMs = 20;
    constexpr ULONGLONG LongestMs = 5000;
    const ULONGLONG begin = GetTickCount64();
    while (IsWatched() && GetTickCount64() - begin < LongestMs) {
        Sleep(PauseMs);
    }
}

BOOL WINAPI OnConsoleEvent(DWORD event) {
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT && event != CTRL_CLOSE_EVENT) {
        return FALSE;
    }
    {
        const std::scoped_lock hold(g_lock);
        if (g_callback == nullptr) {
            return FALSE;
        }
        g_callback(g_context);
    }
    if (event == CTRL_CLOSE_EVENT) {
        WaitForTheEndOfWork();
    }
    return TRUE;
}

class WindowsInterruptions final : public Interruptions {
 public:
    ~WindowsInterruptions() override { StopWatching(); }

    void Watch(Callback callback, void* context) override {
        StopWatching();
        {
            const std::scoped_lock hold(g_lock);
            g_callback = callback;
            g_context = context;
        }
        SetConsoleCtrlHandler(OnConsoleEvent, TRUE);
    }

    void StopWatching() override {
        {
            const std::scoped_lock hold(g_lock);
            g_callback = nullptr;
        }
        // Last: it may wait for a handler that waits for this.
        SetConsoleCtrlHandler(OnConsoleEvent, FALSE);
    }

    void Warn(const char* text) noexcept override {
        DWORD written = 0;
        WriteFile(GetStdHandle(STD_ERROR_HANDLE), text, static_cast<DWORD>(std::strlen(text)),
                  &written, nullptr);
    }

    void EndProgram(int exitCode) noexcept override {
        TerminateProcess(GetCurrentProcess(), static_cast<UINT>(exitCode));
    }
};

}  // namespace

std::unique_ptr<Interruptions> ProcessInterruptions() {
    return std::make_unique<WindowsInterruptions>();
}

}  // namespace krv::cli
