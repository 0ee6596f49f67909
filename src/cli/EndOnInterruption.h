// EndOnInterruption: while it is in scope Ctrl-C ends the program at once. For commands that have
// no dialog to cancel.
#pragma once

#include "cli/ExitCode.h"
#include "cli/Interruptions.h"

namespace krv::cli {

class EndOnInterruption {
 public:
    explicit EndOnInterruption(Interruptions& interruptions) : m_interruptions(interruptions) {
        m_interruptions.Watch(
            [](void* context) noexcept {
                static_cast<Interruptions*>(context)->EndProgram(ExitCode::Cancelled);
            },
            &m_interruptions);
    }
    ~EndOnInterruption() { m_interruptions.StopWatching(); }
    EndOnInterruption(const EndOnInterruption&) = delete;
    EndOnInterruption& operator=(const EndOnInterruption&) = delete;

 private:
    Interruptions& m_interruptions;
};

}  // namespace krv::cli
