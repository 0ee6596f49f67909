// The readers of binary files without a header: waveforms of 16-bit samples, and markers.
#pragma once

#include <cstdint>

#include "waveform/readers/FileReading.h"

namespace krv::waveform {

inline constexpr std::uint64_t MaximumBinaryPoints = std::uint64_t{1} << 26;

// Which of the two formats of 16-bit samples a file has: low byte first and signed, or high byte
// first and unsigned.
enum class SampleFormat : std::uint8_t { LittleEndianSigned, BigEndianUnsigned };

// Both read into InternalValues, two bytes a point in memory.

// Reads two bytes a point.
[[nodiscard]] Channel ReadBinaryDacFile(const FileToRead& file, SampleFormat format,
                                        const ReadServices& services);

// Reads one byte a point, 0 to 255. The file's size is that of a waveform of as many points, two
// bytes each; only its first half is read.
[[nodiscard]] Channel ReadBinaryMarkerFile(const FileToRead& file, const ReadServices& services);

}  // namespace krv::waveform
