// The module (program or library) that holds this code.
#pragma once

#include <windows.h>

#include <string>

namespace krv::windows {

[[nodiscard]] HMODULE ThisModule() noexcept;
// The full path of its file.
[[nodiscard]] std::wstring ThisModulePath();

}  // namespace krv::windows
