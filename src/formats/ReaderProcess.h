// ReaderProcess: a process of its own that does the reading for this one and sends what it read
// through a pipe. Whatever goes wrong in it, a crash included, ends it and nothing else. It is a
// copy of this process with one thread. Not on Windows. One thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>

namespace krv::formats {

// Of a reader process.
struct ReaderLimits {
    // Besides what this process has.
    std::uint64_t memoryBytes = 0;
    // Of the processor's time.
    std::uint64_t seconds = 0;
};

class ReaderProcess {
 public:
    using Send = std::function<void(std::span<const std::byte> bytes)>;

    // Starts the work in the process, where what it prints goes nowhere and Ctrl-C has no effect.
    // Throws Error 51 where no process can be started.
    ReaderProcess(const ReaderLimits& limits, const std::function<void(const Send&)>& work);
    ReaderProcess(const ReaderProcess&) = delete;
    ReaderProcess& operator=(const ReaderProcess&) = delete;
    // Ends the process, finished or not. It ends with this one, too.
    ~ReaderProcess();

    // Fills the span with what the work has sent; false where the process ended before.
    [[nodiscard]] bool Receive(std::span<std::byte> bytes);

 private:
    int m_pipe = -1;
    int m_id = -1;
};

}  // namespace krv::formats
