// The resolution of the screen that a device context draws on.
#pragma once

#include "ports/desktop/ControlSurface.h"

namespace krv::ports {

struct PixelsPerInch {
    int horizontal = 0;
    int vertical = 0;
};

class ScreenResolution {
 public:
    virtual ~ScreenResolution() = default;
    // Logical pixels, which are never 0; without a context (0) those of the whole screen.
    virtual PixelsPerInch Of(DeviceContext context) = 0;
};

}  // namespace krv::ports
