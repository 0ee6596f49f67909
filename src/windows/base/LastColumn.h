// The last column of a list, up to the list's right edge: the header has no piece without a column
// behind it.
#pragma once

#include <windows.h>

namespace krv::windows {

// Called when the list's size or its rows have changed.
void ExtendLastColumn(HWND list);

}  // namespace krv::windows
