// The pictures of the toolbar's buttons, drawn at the size they are shown in, so that they stay
// crisp at any resolution.
#pragma once

#include <windows.h>

#include <string>

#include "windows/base/Handles.h"

namespace krv::windows {

// The picture of a button's name as a square of this many pixels: 32 bits each, from the top, with
// premultiplied transparency. Greyed where the button is disabled. Null for other names, and where
// memory is lacking.
[[nodiscard]] Bitmap NewToolbarPicture(const std::string& picture, int side, bool enabled);

// Draws the picture into the largest square that is centred in the place, on what is there. Other
// names draw nothing.
void DrawToolbarPicture(HDC context, const RECT& place, const std::string& picture, bool enabled);

}  // namespace krv::windows
