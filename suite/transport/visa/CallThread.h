// CallThread: calls into a library that can't be interrupted. They run one after the other on a
// thread of their own, so that whoever waits for one can go away. The library's own time-outs end
// the call afterwards.
#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include "suite/transport/Patience.h"
#include "suite/transport/Transport.h"

namespace krv::suite {

class CallThread {
 public:
    // Throws Error when the system has no thread left.
    CallThread();
    // The thread ends with the call that is under way.
    ~CallThread();
    CallThread(const CallThread&) = delete;
    CallThread& operator=(const CallThread&) = delete;

    // Runs the call and waits for it. False when it hasn't come back by then; throws what the
    // watcher, which may be null, throws. In both cases the call goes on, and the only thing left
    // to do is Finish. What a call refers to is shared with it.
    [[nodiscard]] bool Run(std::function<void()> call, Patience::Clock::time_point deadline,
                           WaitWatcher* watcher);
    // Runs a last call behind the one that may be under way, and waits at most so long for it.
    void Finish(std::function<void()> last, std::chrono::milliseconds patience) noexcept;

 private:
    struct Shared;
    std::shared_ptr<Shared> m_shared;
};

}  // namespace krv::suite
