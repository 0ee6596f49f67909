// The texts of the bench's windows, and the font that they are written with.
#pragma once

#include <windows.h>

#include <string>

namespace krv::bench {

// The caller deletes it.
[[nodiscard]] HFONT NewMessageFont(UINT dotsPerInch);

// The content of a box, or the caption of a window, as UTF-8.
[[nodiscard]] std::string TextOf(HWND window);

}  // namespace krv::bench
