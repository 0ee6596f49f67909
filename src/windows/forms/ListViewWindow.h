// The window of a list of rows, brought in step with its control.
#pragma once

#include <windows.h>

#include "common/forms/ListView.h"
#include "windows/forms/Scale.h"

namespace krv::windows {

// Columns and rows.
void FillListView(HWND window, const forms::ListView& list);
void LayOutColumns(HWND window, const forms::ListView& list, const Scale& scale);

}  // namespace krv::windows
