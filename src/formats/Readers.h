// The readers of the formats. Each pair is what Format asks for: whether a file is of the format,
// by its content, and the recording of one that is.
#pragma once

#include <memory>

#include "formats/Formats.h"

namespace krv::formats {

[[nodiscard]] bool IsWav(const Opening& opening);
[[nodiscard]] std::unique_ptr<Recording> OpenWav(const Opening& opening);

[[nodiscard]] bool IsNumpyArray(const Opening& opening);
[[nodiscard]] std::unique_ptr<Recording> OpenNumpyArray(const Opening& opening);

// An archive whose first member is an array.
[[nodiscard]] bool IsNumpyArchive(const Opening& opening);
[[nodiscard]] std::unique_ptr<Recording> OpenNumpyArchive(const Opening& opening);

// Either file of a pair.
[[nodiscard]] bool IsSigmf(const Opening& opening);
[[nodiscard]] std::unique_ptr<Recording> OpenSigmf(const Opening& opening);

[[nodiscard]] bool IsSigmfArchive(const Opening& opening);
[[nodiscard]] std::unique_ptr<Recording> OpenSigmfArchive(const Opening& opening);

// Null where this build reads MATLAB files; otherwise what it lacks.
[[nodiscard]] const char* MissingToReadMatlab() noexcept;
[[nodiscard]] bool IsMatlab(const Opening& opening);
[[nodiscard]] std::unique_ptr<Recording> OpenMatlab(const Opening& opening);

// Raw files have no mark: their names' endings tell, unless the user does.
[[nodiscard]] bool IsRaw(const Opening& opening);
[[nodiscard]] std::unique_ptr<Recording> OpenRaw(const Opening& opening);

// Numbers in columns. Text that is no table, such as numbers between blanks, is one, too.
[[nodiscard]] bool IsTable(const Opening& opening);
[[nodiscard]] std::unique_ptr<Recording> OpenTable(const Opening& opening);

}  // namespace krv::formats
