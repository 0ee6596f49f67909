// The toolbar control as its container sees it: the front's object, which the core hands to whoever
// asks where the control lies.
#pragma once

#include <cstdint>
#include <memory>

namespace krv::ports {

// A native device context handle that is only handed through; 0 means none.
using DeviceContext = std::intptr_t;

class ControlSurface {
 public:
    virtual ~ControlSurface() = default;
    // The pointer that the mouse has over the control: the hourglass, or its usual one.
    virtual void SetBusyPointer(bool isBusy) = 0;
    // The control's device context, valid as long as the control.
    virtual DeviceContext ContextHandle() = 0;
    // The control lives at least as long as what this gives.
    virtual std::shared_ptr<void> KeepAlive() = 0;
};

}  // namespace krv::ports
