// Pictures of windows as they stand on the screen, with whatever lies over them.
#pragma once

#include <windows.h>

#include <string>

namespace krv::bench {

// Writes the window's place on the screen as a PNG file, once it has stopped changing. Throws
// UserError when there is no picture to be had or the file can't be written.
void SavePicture(HWND window, const std::string& file);

}  // namespace krv::bench
