// The pictures of the toolbar's buttons, drawn at the size they are shown in, so that they stay
// crisp at any resolution.
#pragma once

#include <windows.h>

#include <string>

namespace krv::windows {

// Draws the picture of a button's name into the largest square that is centred in the place; greyed
// where the button is disabled, on the background of buttons. Other names draw nothing.
void DrawToolbarPicture(HDC context, const RECT& place, const std::string& picture, bool enabled);

}  // namespace krv::windows
