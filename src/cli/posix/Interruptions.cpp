#include "cli/Interruptions.h"

#include <signal.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstring>

#include "common/TemporaryFile.h"

namespace krv::cli {
namespace {

// The last one comes when the terminal is closed.
constexpr std::array<int, 3> WatchedSignals{SIGINT, SIGTERM, SIGHUP};

// A signal handler reaches nothing but globals. They are written while the signals are blocked or
// not yet handled.
Interruptions::Callback g_callback = nullptr;
void* g_context = nullptr;

void OnSignal(int /*signal*/) {
    if (g_callback != nullptr) {
        g_callback(g_context);
    }
}

class PosixInterruptions final : public Interruptions {
 public:
    ~PosixInterruptions() override { StopWatching(); }

    void Watch(Callback callback, void* context) override {
        StopWatching();
        g_callback = callback;
        g_context = context;
        struct sigaction action {};
        action.sa_handler = OnSignal;
        // A terminal's read is not restarted: Ctrl-C also ends the wait for an answer.
        action.sa_flags = 0;
        sigemptyset(&action.sa_mask);
        for (const int signal : WatchedSignals) {
            sigaddset(&action.sa_mask, signal);
        }
        for (std::size_t at = 0; at < WatchedSignals.size(); ++at) {
            sigaction(WatchedSignals[at], nullptr, &m_previous[at]);
            // As nohup has it, the program outlives its terminal.
            if (WatchedSignals[at] != SIGHUP || m_previous[at].sa_handler != SIG_IGN) {
                sigaction(WatchedSignals[at], &action, nullptr);
            }
        }
        m_watching = true;
    }

    void StopWatching() override {
        if (m_watching) {
            for (std::size_t at = 0; at < WatchedSignals.size(); ++at) {
                sigaction(WatchedSignals[at], &m_previous[at], nullptr);
            }
            m_watching = false;
            g_callback = nullptr;
        }
    }

    void Warn(const char* text) noexcept override {
        if (write(STDERR_FILENO, text, std::strlen(text)) < 0) {
            return;
        }
    }

    void EndProgram(int exitCode) noexcept override {
        TemporaryFile::RemoveAll();
        _exit(exitCode);
    }

 private:
    bool m_watching = false;
    std::array<struct sigaction, WatchedSignals.size()> m_previous{};
};

}  // namespace

std::unique_ptr<Interruptions> ProcessInterruptions() {
    return std::make_unique<PosixInterruptions>();
}

}  // namespace krv::cli
