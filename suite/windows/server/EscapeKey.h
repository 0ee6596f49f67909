// EscapeKey: Esc as the key that ends a wait on the user-interface thread. It looks at the keyboard
// and dispatches no messages, so that nothing else runs meanwhile.
#pragma once

#include <memory>
#include <string>

#include "suite/scpi/ScpiInstrument.h"
#include "suite/transport/Transport.h"

namespace krv::suite {

class EscapeKey final : public WaitWatcher {
 public:
    // A press before this doesn't count. The text is that of the error.
    explicit EscapeKey(std::string whatEnded);
    // A press that ended a wait doesn't close the dialog, too.
    ~EscapeKey() override;
    EscapeKey(const EscapeKey&) = delete;
    EscapeKey& operator=(const EscapeKey&) = delete;

    // Throws Error 1001 when Esc has been pressed in a window of this thread.
    void Waiting() override;

 private:
    std::string m_whatEnded;
    bool m_pressed = false;
};

// As long as it lives, the Esc key ends the instrument's waits; the connection is then closed. The
// key and the text are those of EscapeKey.
class EscapeEndsWaits {
 public:
    EscapeEndsWaits(std::shared_ptr<ScpiInstrument> instrument, std::string whatEnded);
    ~EscapeEndsWaits();
    EscapeEndsWaits(const EscapeEndsWaits&) = delete;
    EscapeEndsWaits& operator=(const EscapeEndsWaits&) = delete;

 private:
    EscapeKey m_key;
    std::shared_ptr<ScpiInstrument> m_instrument;
};

}  // namespace krv::suite
