// The texts of the bench's windows, and the font that they are written with.
#pragma once

#include <string>

#include "windows/base/Handles.h"

namespace krv::bench {

[[nodiscard]] windows::Font NewMessageFont(UINT dotsPerInch);

// The content of a box, or the caption of a window, as UTF-8.
[[nodiscard]] std::string TextOf(HWND window);

}  // namespace krv::bench
