// The date last modified at the file system's full resolution, which the standard library does not
// give on every platform. The platform's part is in the folders `posix` and `windows`.
#pragma once

#include <cstdint>
#include <filesystem>
#include <system_error>

namespace krv::files {

// In ticks of the platform; 0 with `error` set when the file can't be asked.
[[nodiscard]] std::int64_t ModificationTicks(const std::filesystem::path& path,
                                             std::error_code& error) noexcept;

}  // namespace krv::files
