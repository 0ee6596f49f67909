#include "cli/CancelKey.h"

#include "cli/ExitCode.h"
#include "common/Error.h"

namespace krv::cli {

// The callback runs in a signal handler, where only lock-free atomics may be touched.
static_assert(std::atomic<int>::is_always_lock_free && std::atomic<bool>::is_always_lock_free);

CancelKey::CancelKey(Interruptions& interruptions) : m_interruptions(interruptions) {
    m_interruptions.Watch(OnInterruption, this);
}

CancelKey::~CancelKey() {
    m_interruptions.StopWatching();
}

bool CancelKey::Take() noexcept {
    if (m_taken || !Pressed()) {
        return false;
    }
    m_taken = true;
    return true;
}

void CancelKey::Waiting() {
    if (Pressed()) {
        throw CancelError();
    }
}

void CancelKey::OnInterruption(void* context) noexcept {
    auto& key = *static_cast<CancelKey*>(context);
    if (++key.m_presses > 1) {
        key.m_interruptions.EndProgram(ExitCode::Cancelled);
    } else if (key.m_unattended) {
        key.m_interruptions.Warn("\nWaiting for the instrument; Ctrl-C again ends the program.\n");
    }
}

}  // namespace krv::cli
