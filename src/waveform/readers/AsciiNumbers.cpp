#include "waveform/readers/AsciiNumbers.h"

#include "common/NearestRounding.h"
#include "common/QuickNumbers.h"

namespace krv::waveform {
namespace {

// The end of a number that a separator follows; null when ParseNumber is to judge it.
const char* ConvertQuickly(const char* at, char decimalSeparator, double& value) noexcept {
    double number = 0;
    const char* const end = quick::ReadNumber(at, decimalSeparator, number);
    if (end == nullptr || !IsSeparator(*end)) {
        return nullptr;
    }
    value = number;
    return end;
}

// The last separator that a whole word follows; the text's beginning when there is none. Tokens in
// front of it can be converted quickly.
const char* QuickEnd(std::string_view text) noexcept {
    std::size_t at = text.size() > quick::WordDigits ? text.size() - quick::WordDigits - 1 : 0;
    while (at > 0 && !IsSeparator(text[at])) {
        --at;
    }
    return text.data() + at;
}

}  // namespace

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
    const NearestRounding nearest;
    const char* const quickEnd = QuickEnd(text);
    // No token holds a separator of tokens, and quick conversion must not lead beyond one.
    const char decimalSeparator =
        IsSeparator(format.decimalSeparator) ? '.' : format.decimalSeparator;
    std::size_t count = 0;
    for (text = SkipSeparators(text); count < values.size(); text = SkipSeparators(text)) {
        const char* end = nullptr;
        if (text.data() < quickEnd) {
            end = ConvertQuickly(text.data(), decimalSeparator, values[count]);
        }
        if (end == nullptr) {
            const std::size_t length = TokenLength(text);
            if (length == text.size()) {
                break;
            }
            const ParsedNumber number = ParseNumber(text.substr(0, length), format);
            if (number.error != NumberTextError::None) {
                return {count, text, number.error};
            }
            values[count] = number.value;
            end = text.data() + length;
        }
        text.remove_prefix(static_cast<std::size_t>(end - text.data()));
        ++count;
    }
    return {count, text, NumberTextError::None};
}

}  // namespace krv::waveform
