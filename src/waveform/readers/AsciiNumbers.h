// Numbers in text, separated by white space: the inner loop of the ASCII reader.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "common/Numbers.h"

namespace krv::waveform {

// Blank, tab, carriage return, line feed and Ctrl-Z.
[[nodiscard]] constexpr bool IsSeparator(char character) noexcept {
    return character == ' ' || character == '\t' || character == '\r' || character == '\n' ||
           character == '\x1A';
}

// How many characters stand in front of the first separator, or of the text's end.
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
// and errors are ParseNumber's.
[[nodiscard]] ConvertedNumbers ConvertNumbers(std::string_view text, std::span<double> values,
                                              NumberFormat format) noexcept;

}  // namespace krv::waveform
