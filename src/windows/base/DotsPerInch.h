// The resolution of the monitor that a window is on.
#pragma once

#include <windows.h>

namespace krv::windows {

// The resolution that layouts in pixels are written for.
inline constexpr int UsualDotsPerInch = 96;

// The resolution of the monitor that shows the window; of the system for a null window and on
// systems that know only one resolution.
[[nodiscard]] UINT DotsPerInch(HWND window);

}  // namespace krv::windows
