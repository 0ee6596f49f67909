// Lets the platform deliver what is waiting: window messages, a terminal's interrupt, a script's
// next action. Handlers of forms may run inside.
#pragma once

namespace krv::ports {

class EventPump {
 public:
    virtual ~EventPump() = default;
    virtual void ProcessPendingEvents() = 0;
    // For loops that ask thousands of times a second: what comes in may wait for a moment that
    // nobody notices, 16 ms at most.
    virtual void ProcessEventsInLoop() { ProcessPendingEvents(); }
};

}  // namespace krv::ports
