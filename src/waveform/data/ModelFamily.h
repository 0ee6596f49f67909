// The two families of instrument models and what they are sent.
#pragma once

#include <cstdint>
#include <string_view>

#include "common/Text.h"

namespace krv::waveform {

// The new family takes 16-bit codes and may take I and Q interleaved in one source. The model is
// compared after trimming blanks.
[[nodiscard]] inline bool IsNewModelName(std::string_view model) noexcept {
    const std::string_view name = TrimBlanks(model);
    return name == "M7718C" || name == "M9920C";
}

// Models that are written with the interleaved call. The M9920D is one of them although its data is
// checked and coded like the old family's.
[[nodiscard]] inline bool IsSentInterleaved(std::string_view model) noexcept {
    return IsNewModelName(model) || TrimBlanks(model) == "M9920D";
}

// Codes of the old family run from 0 to this; those of the new one fill 16 bits.
inline constexpr std::int16_t LargestOldCode = 16383;

// The code that stands for a zero sample.
[[nodiscard]] constexpr std::int16_t ZeroCode(bool newModel) noexcept {
    return newModel ? std::int16_t{0} : std::int16_t{8192};
}

}  // namespace krv::waveform
