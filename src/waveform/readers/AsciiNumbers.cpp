#include "waveform/readers/AsciiNumbers.h"

namespace krv {

std::size_t TokenLength(std::string_view text) noexcept {
    std::size_t length = 0;
    while (length < text.size() && !IsSeparator(text[length])) {
        ++length;
    }
    return length;
}

std::string_view SkipSeparators(std::string_view text) noexcept {
    std::size_t skipped = 0;
    while (skipped < text.size() && IsSeparator(text[skipped])) {
        ++skipped;
    }
    return text.substr(skipped);
}

ConvertedNumbers ConvertNumbers(std::string_view text, std::span<double> values,
                                NumberFormat format) noexcept {
    std::size_t count = 0;
    text = SkipSeparators(text);
    while (count < values.size()) {
        const std::size_t length = TokenLength(text);
        if (length == text.size()) {
            break;
        }
        const ParsedNumber number = ParseNumber(text.substr(0, length), format);
        if (number.error != NumberTextError::None) {
            return {count, text, number.error};
        }
        values[count] = number.value;
        ++count;
        text = SkipSeparators(text.substr(length));
    }
    return {count, text, NumberTextError::None};
}

}  // namespace krv
