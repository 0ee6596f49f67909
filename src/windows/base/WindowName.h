// The name by which a window is found from another process: tests and assistive programs know the
// parts of a dialog by the names of its controls, which don't change with language or layout.
#pragma once

#include <windows.h>

#include <string_view>

namespace krv::windows {

// A window has any number of names. They cost a property each; RemoveWindowName takes one back,
// which must happen before the window goes.
void AddWindowName(HWND window, std::string_view name);
void RemoveWindowName(HWND window, std::string_view name);
// Also for windows of other processes.
[[nodiscard]] bool HasWindowName(HWND window, std::string_view name);

}  // namespace krv::windows
