// The resolution of Windows' screens.
#pragma once

#include "ports/desktop/ScreenResolution.h"

namespace krv::windows {

class WindowsScreenResolution final : public desktop::ScreenResolution {
 public:
    desktop::PixelsPerInch Of(desktop::DeviceContext context) override;
};

}  // namespace krv::windows
