// What a file is by its first bytes, as far as users take such files for waveform files.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

namespace krv::waveform {

// The number of bytes from the beginning of a file that FileLook needs.
inline constexpr std::size_t FileLookBytes = 128;

// "a WAV file", "a NumPy file", ...; empty for what has none of the known beginnings.
[[nodiscard]] std::string_view FileLook(std::span<const std::byte> beginning) noexcept;

}  // namespace krv::waveform
