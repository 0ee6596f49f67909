// The pictures of picture buttons, drawn at the size they are shown in, so that they stay crisp at
// any resolution.
#pragma once

#include <windows.h>

#include <string>

namespace krv::windows {

// "CaptureSelection": a grid of cells with an arrow that takes the marked ones. Other names draw
// nothing.
void DrawPicture(HDC context, const RECT& place, const std::string& picture, bool enabled);

}  // namespace krv::windows
