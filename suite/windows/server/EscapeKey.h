// EscapeKey: Esc as the key that ends a wait on the user-interface thread. It looks at the keyboard
// and dispatches no messages, so that nothing else runs meanwhile.
#pragma once

#include <string>

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

}  // namespace krv::suite
