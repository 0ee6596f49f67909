// AutoName: the destination name that the dialog makes up for a waveform.
#pragma once

#include <string>
#include <string_view>

namespace krv::waveform {

// The names used where there is no file to name a waveform after.
inline constexpr std::string_view SpreadsheetAutoName = "RANGE";
inline constexpr std::string_view UnnamedAutoName = "WAVEFORM";

// The I file's name without folder and extension, in characters that every instrument takes
// (letters, digits, "_", "-", "."), at most 23 of them; any other character becomes "_".
[[nodiscard]] std::string AutoName(std::string_view iFileName);

}  // namespace krv::waveform
