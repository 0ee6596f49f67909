// Ctrl-C and the request to terminate, as the platform delivers them: in a signal handler or on a
// thread of its own, at any moment.
#pragma once

#include <memory>

namespace krv::cli {

class Interruptions {
 public:
    using Callback = void (*)(void* context) noexcept;

    virtual ~Interruptions() = default;
    // One watcher at a time. The callback does only what a signal handler may do.
    virtual void Watch(Callback callback, void* context) = 0;
    // When it has returned, no call of the callback is running and none will follow.
    virtual void StopWatching() = 0;

    // Both may be called from the callback. Writes to the process's standard error.
    virtual void Warn(const char* text) noexcept = 0;
    // Ends the program at once, without unwinding.
    virtual void EndProgram(int exitCode) noexcept = 0;
};

// The process's own.
[[nodiscard]] std::unique_ptr<Interruptions> ProcessInterruptions();

}  // namespace krv::cli
