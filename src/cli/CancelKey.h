// CancelKey: Ctrl-C as the key that cancels. The first press waits until Take fetches it; a second
// one ends the program, since a call that blocks would keep the first from ever being seen.
#pragma once

#include <atomic>

#include "cli/Interruptions.h"
#include "suite/transport/Transport.h"

namespace krv::cli {

class CancelKey final : public suite::WaitWatcher {
 public:
    // The interruptions outlive the key.
    explicit CancelKey(Interruptions& interruptions);
    ~CancelKey() override;
    CancelKey(const CancelKey&) = delete;
    CancelKey& operator=(const CancelKey&) = delete;

    // While no dialog takes the key, a press prints how to end the program.
    void SetUnattended(bool unattended) noexcept { m_unattended = unattended; }
    // Pressed since the start.
    [[nodiscard]] bool Pressed() const noexcept { return m_presses > 0; }
    // True once for the first press.
    [[nodiscard]] bool Take() noexcept;
    // A press ends every wait for the instrument: throws Error 1001.
    void Waiting() override;

 private:
    static void OnInterruption(void* context) noexcept;

    Interruptions& m_interruptions;
    std::atomic<int> m_presses{0};
    std::atomic<bool> m_unattended{true};
    bool m_taken = false;
};

}  // namespace krv::cli
