// Lets the platform deliver what is waiting: window messages, a terminal's interrupt, a script's
// next action. Handlers of forms may run inside.
#pragma once

namespace krv::ports {

class EventPump {
 public:
    virtual ~EventPump() = default;
    virtual void ProcessPendingEvents() = 0;
    // For loops that call it thousands of times a second: an event may wait up to 16 ms.
    virtual void ProcessEventsInLoop() { ProcessPendingEvents(); }
};

}  // namespace krv::ports
