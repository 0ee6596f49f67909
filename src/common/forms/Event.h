// What a control raises its events through: at most one handler, which the form sets.
#pragma once

#include <functional>

namespace krv::forms {

using EventHandler = std::function<void()>;

// Calls the handler, when there is one.
inline void Raise(const EventHandler& handler) {
    if (handler) {
        handler();
    }
}

}  // namespace krv::forms
