// Whether a MATLAB file holds what it says it holds. The library that reads such files takes memory
// as they say, before it looks whether the data is there: so these look first. Each throws Error
// 321 with the place and the reason.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "common/Error.h"
#include "formats/ByteStreams.h"
#include "formats/Fault.h"

namespace krv::formats {

// Of structures and cells, in a whole file: of each the library keeps what unpacking it takes.
inline constexpr std::size_t MostMatlabMembers = 4096;
// Of structures and cells in one another.
inline constexpr int MostMatlabDepth = 32;

// Of a file that isn't what its first bytes say.
[[nodiscard]] inline Error MatlabDamage(const std::string& file) {
    return FileFault(file, "It can't be read as a MATLAB file: it is cut or damaged.");
}

void CheckMatlabLevel4(const InputFile& file, std::uint64_t fileBytes, bool isBigEndian);
// Level 5, and level 7, which is compressed.
void CheckMatlabLevel5(const InputFile& file, std::uint64_t fileBytes, bool isBigEndian);
// Level 7.3, which is HDF5; `path` is where the library finds it. A build without it refuses the
// file.
void CheckMatlabHdf(const InputFile& file, const std::string& path, std::uint64_t fileBytes);

}  // namespace krv::formats
