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

BOOL WINAPI OnConsoleEvent(DWORD event) {
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT && event != CTRL_CLOSE_EVENT) {
        return FALSE;
    }
    const std::scoped_lock hold(g_lock);
    if (g_callback == nullptr) {
        return FALSE;
    }
    g_callback(g_context);
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
        SetConsoleCtrlHandler(OnConsoleEvent, FALSE);
        const std::scoped_lock hold(g_lock);
        g_callback = nullptr;
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
