// What the name of a waveform file inside the instrument must keep to.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace krv::waveform {

inline constexpr std::size_t MaxDestinationNameCharacters = 23;

// The message for a name, blanks trimmed, that may not be used; empty for one that may.
[[nodiscard]] std::string DestinationNameFault(std::string_view name);

// The same for a name that equals, apart from case, the file that the instrument has selected for
// playing, which it can't overwrite.
[[nodiscard]] std::string SelectedFileFault(std::string_view name, std::string_view selectedFile);

}  // namespace krv::waveform
