#include "suite/transport/visa/CallThread.h"

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <utility>

#include "suite/transport/Detached.h"

namespace krv::suite {
namespace {

// How often a wait asks whether it shall end.
constexpr std::chrono::milliseconds CallWatchInterval{100};

}  // namespace

struct CallThread::Shared {
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::function<void()>> calls;
    // Of the calls that were asked for, how many have come back.
    std::size_t asked = 0;
    std::size_t done = 0;
    bool isEnding = false;

    void Serve() {
        std::unique_lock lock(mutex);
        while (true) {
            changed.wait(lock, [this] { return isEnding || !calls.empty(); });
            if (calls.empty()) {
                return;
            }
            std::function<void()> call = std::move(calls.front());
            calls.pop_front();
            lock.unlock();
            call();
            // What it holds goes on this thread, too.
            call = nullptr;
            lock.lock();
            ++done;
            changed.notify_all();
        }
    }
    std::size_t Ask(std::function<void()> call) {
        const std::lock_guard lock(mutex);
        calls.push_back(std::move(call));
        changed.notify_all();
        return ++asked;
    }
    // Whether so many have come back by then.
    bool WaitFor(std::size_t number, Patience::Clock::time_point until) {
        std::unique_lock lock(mutex);
        return changed.wait_until(lock, until, [&] { return done >= number; });
    }
};

CallThread::CallThread() : m_shared(std::make_shared<Shared>()) {
    RunDetached([shared = m_shared] { shared->Serve(); });
}

CallThread::~CallThread() {
    const std::lock_guard lock(m_shared->mutex);
    m_shared->isEnding = true;
    m_shared->changed.notify_all();
}

bool CallThread::Run(std::function<void()> call, Patience::Clock::time_point deadline,
                     WaitWatcher* watcher) {
    const std::size_t number = m_shared->Ask(std::move(call));
    while (!m_shared->WaitFor(number,
                              std::min(deadline, Patience::Clock::now() + CallWatchInterval))) {
        if (watcher != nullptr) {
            watcher->Waiting();
        }
        if (Patience::Clock::now() >= deadline) {
            return false;
        }
    }
    return true;
}

void CallThread::Finish(std::function<void()> last, std::chrono::milliseconds patience) noexcept {
    try {
        const std::size_t number = m_shared->Ask(std::move(last));
        static_cast<void>(m_shared->WaitFor(number, Patience::Clock::now() + patience));
    } catch (const std::exception&) {
        // Without memory the system clears up behind the program.
        return;
    }
}

}  // namespace krv::suite
