// SharedInterruptions: Ctrl-C for several runs, each of which watches for it as if it were alone.
#pragma once

#include <atomic>
#include <cstddef>
#include <memory>
#include <vector>

#include "cli/Interruptions.h"

namespace krv::cli {

class SharedInterruptions {
 public:
    // The interruptions outlive this, and this outlives the runs.
    SharedInterruptions(Interruptions& interruptions, std::size_t runs);
    SharedInterruptions(const SharedInterruptions&) = delete;
    SharedInterruptions& operator=(const SharedInterruptions&) = delete;
    ~SharedInterruptions();

    [[nodiscard]] Interruptions& For(std::size_t run);
    // From now on a press reaches all runs.
    void Watch();
    [[nodiscard]] bool HasBeenPressed() const noexcept { return m_isPressed; }
    // Before the first of the runs is gone.
    void StopWatching() { m_interruptions.StopWatching(); }

 private:
    class Share;

    Interruptions& m_interruptions;
    std::vector<std::unique_ptr<Share>> m_shares;
    std::atomic<bool> m_hasWarned{false};
    std::atomic<bool> m_isPressed{false};
};

}  // namespace krv::cli
