// The error of a file that isn't what it should be: a line that says where and why.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "common/Error.h"

namespace krv::formats {

// Error 321, "FILE: REASON".
[[nodiscard]] Error FileFault(const std::string& file, std::string_view reason);
// Error 321, "FILE, byte N: REASON". Bytes count from 0.
[[nodiscard]] Error ByteFault(const std::string& file, std::uint64_t byte, std::string_view reason);
// Error 321, "FILE, line L, column C: REASON". Both count from 1; columns count characters.
[[nodiscard]] Error LineFault(const std::string& file, std::uint64_t line, std::size_t column,
                              std::string_view reason);

}  // namespace krv::formats
