// The toolbar control as its container sees it. The front implements it; the core passes it to the
// suite's utilities, which find the window and the document that the control lies in.
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
    // The control lives at least as long as the returned object.
    virtual std::shared_ptr<void> KeepAlive() = 0;
};

}  // namespace krv::ports
