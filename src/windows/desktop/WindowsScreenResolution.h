// The resolution of Windows' screens.
#pragma once

#include "ports/desktop/ScreenResolution.h"

namespace krv::windows {

class WindowsScreenResolution final : public ports::ScreenResolution {
 public:
    ports::PixelsPerInch Of(ports::DeviceContext context) override;
};

}  // namespace krv::windows
