// Numbers in text, separated by white space: the inner loop of the ASCII reader.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "common/Numbers.h"
#include "waveform/readers/AsciiWindow.h"

namespace krv::waveform {

[[nodiscard]] std::size_t TokenLength(std::string_view text) noexcept;
[[nodiscard]] std::string_view SkipSeparators(std::string_view text) noexcept;

struct ConvertedNumbers {
    // How many of the values were stored.
    std::size_t count = 0;
    // Where conversion stopped: at a token or at the end.
    std::string_view rest;
    NumberTextError error = NumberTextError::None;
};

// Converts the tokens of the text that a separator follows; a token that reaches the text's end may
// go on in the next block and is left in `rest`. Stops early when all values are stored, and with
// an error in front of the first token that does not convert. Never throws or allocates. The values
// and errors are ParseNumber's, whatever the window.
template <class Window>
[[nodiscard]] ConvertedNumbers ConvertNumbersBy(std::string_view text, std::span<double> values,
                                                NumberFormat format) noexcept;

extern template ConvertedNumbers ConvertNumbersBy<ScalarWindow>(std::string_view, std::span<double>,
                                                                NumberFormat) noexcept;
#if KRV_HAS_SSE2
extern template ConvertedNumbers ConvertNumbersBy<Sse2Window>(std::string_view, std::span<double>,
                                                              NumberFormat) noexcept;
#endif

[[nodiscard]] inline ConvertedNumbers ConvertNumbers(std::string_view text,
                                                     std::span<double> values,
                                                     NumberFormat format) noexcept {
    return ConvertNumbersBy<BestWindow>(text, values, format);
}

}  // namespace krv::waveform
