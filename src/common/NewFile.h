// Files opened to be written in ways that the standard library does not know on every platform. The
// platform's part is in the folders `posix` and `windows`.
#pragma once

#include <cstdio>
#include <filesystem>

namespace krv {

// Makes the file; null with errno set (EEXIST) when the name is taken, also by a link.
[[nodiscard]] std::FILE* OpenNewFile(const std::filesystem::path& path) noexcept;
// Opens what is there without making or cutting it; null with errno set. A pipe that nobody reads
// from is waited for, two seconds at most; then errno is ENXIO.
[[nodiscard]] std::FILE* OpenExistingFile(const std::filesystem::path& path) noexcept;

}  // namespace krv
