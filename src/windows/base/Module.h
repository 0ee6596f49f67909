// The module (program or library) that holds this code.
#pragma once

#include <windows.h>

#include <string>

namespace krv::windows {

// Characters of the longest path that the system gives, with its NUL.
inline constexpr DWORD LongestPath = 32768;

[[nodiscard]] HMODULE ThisModule() noexcept;
// The full path of its file.
[[nodiscard]] std::wstring ThisModulePath();

}  // namespace krv::windows
