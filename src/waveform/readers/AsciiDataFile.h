// The reader of numbers as text: waveform and marker files.
#pragma once

#include <cstdint>
#include <limits>

#include "waveform/readers/FileReading.h"

namespace krv::waveform {

// Reads the numbers of a file, separated by blanks, tabs, line ends or Ctrl-Z, any number a line.
// A file without a number is a conversion error, too. The progress message is shown, and a cancel
// asked for, at the counts that NextCheckpoint gives.
[[nodiscard]] Channel ReadAsciiDataFile(
    const FileToRead& file, const ReadServices& services,
    std::int32_t maximumPoints = std::numeric_limits<std::int32_t>::max());

// The counts at which a reader looks up from its work: 1, 1000, 2000 to 20000, 30000 and so on.
inline constexpr std::int64_t FirstCheckpoint = 1;
[[nodiscard]] constexpr std::int64_t NextCheckpoint(std::int64_t checkpoint) noexcept {
    const std::int64_t step = checkpoint < 20000 ? 1000 : 10000;
    return checkpoint + step - checkpoint % step;
}

}  // namespace krv::waveform
