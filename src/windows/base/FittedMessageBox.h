// Message boxes that are wide enough for their title, and for the lines of their text. Where the
// system makes them narrower, it cuts the title off and breaks the lines.
#pragma once

#include <windows.h>

#include <string>

namespace krv::windows {

// As MessageBoxW, whose result it returns.
[[nodiscard]] int ShowFittedMessageBox(HWND owner, const std::wstring& text,
                                       const std::wstring& title, UINT style);

}  // namespace krv::windows
