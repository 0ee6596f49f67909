#include "waveform/readers/AsciiNumbers.h"

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

#include "common/DecimalConversion.h"
#include "common/NearestRounding.h"

namespace krv::waveform {
namespace {

constexpr std::size_t WordDigits = sizeof(std::uint64_t);
// As many digits as always fit into 64 bits.
constexpr std::ptrdiff_t MostDigits = 19;
constexpr std::ptrdiff_t MostExponentDigits = 4;

bool IsDigit(char character) noexcept {
    return character >= '0' && character <= '9';
}

constexpr std::uint64_t Zeros = 0x3030303030303030;
constexpr std::array<std::uint64_t, WordDigits> WordPowersOfTen{
    1, 10, 100, 1'000, 10'000, 100'000, 1'000'000, 10'000'000};

// How many digits a word begins with, its first character in the lowest byte. One that isn't a
// digit sets the topmost bit of its byte in one of the terms; what it carries changes only bytes
// behind it.
std::size_t CountDigits(std::uint64_t word) noexcept {
    const std::uint64_t others =
        ((word + 0x4646464646464646) | (word - Zeros)) & 0x8080808080808080;
    return static_cast<std::size_t>(std::countr_zero(others)) / 8;
}

// Eight digits' values, the first one in the lowest byte. Adding neighbours pair by pair takes
// three multiplications for all eight.
std::uint64_t ValueOfDigits(std::uint64_t word) noexcept {
    word = word * 10 + (word >> 8U);
    constexpr std::uint64_t Pairs = 0x000000FF000000FF;
    return ((word & Pairs) * (100 + (std::uint64_t{1000000} << 32U)) +
            ((word >> 16U) & Pairs) * (1 + (std::uint64_t{10000} << 32U))) >>
           32U;
}

// These step over a part of a number. They stop at a separator at the latest, and may look at as
// many characters behind it as a word has.

// Signs come in no order that a branch could be predicted by.
const char* SkipSign(const char* at, bool& isNegative) noexcept {
    isNegative = *at == '-';
    return at + (static_cast<int>(isNegative) | static_cast<int>(*at == '+'));
}

// Appends the digits to the integer, which wraps around when there are more than MostDigits.
const char* ReadDigits(const char* at, std::uint64_t& integer) noexcept {
    for (; IsDigit(*at); ++at) {
        integer = integer * 10 + static_cast<std::uint64_t>(*at - '0');
    }
    return at;
}

// The same for what has some digits as a rule.
const char* ReadFraction(const char* at, std::uint64_t& integer) noexcept {
    if constexpr (std::endian::native != std::endian::little) {
        return ReadDigits(at, integer);
    }
    std::uint64_t word = 0;
    std::memcpy(&word, at, WordDigits);
    if (const std::size_t digits = CountDigits(word); digits > 0 && digits < WordDigits) {
        // Zeros come in front of the digits, and what stands behind these goes.
        integer = integer * WordPowersOfTen[digits] +
                  ValueOfDigits((word - Zeros) << (WordDigits - digits) * 8);
        return at + digits;
    }
    for (; CountDigits(word) == WordDigits; std::memcpy(&word, at, WordDigits)) {
        integer = integer * 100'000'000 + ValueOfDigits(word - Zeros);
        at += WordDigits;
    }
    return ReadDigits(at, integer);
}

// Adds the exponent to the power, if there is one. Null when what stands there is not an exponent.
const char* ReadExponent(const char* at, std::int64_t& power) noexcept {
    // 0x21 makes one letter of D, d, E and e.
    if ((*at | 0x21) != 'e') {
        return at;
    }
    bool isNegative = false;
    const char* const digits = SkipSign(at + 1, isNegative);
    std::uint64_t exponent = 0;
    at = ReadDigits(digits, exponent);
    if (at == digits || at - digits > MostExponentDigits) {
        return nullptr;
    }
    power +=
        isNegative ? -static_cast<std::int64_t>(exponent) : static_cast<std::int64_t>(exponent);
    return at;
}

// Converts a token of a form that files are made of: a sign, digits with or without a decimal
// separator, an exponent. Returns the token's end; null, with `value` untouched, when ParseNumber
// is to judge it.
const char* ConvertQuickly(const char* at, char decimalSeparator, double& value) noexcept {
    bool isNegative = false;
    const char* const first = SkipSign(at, isNegative);
    std::uint64_t integer = 0;
    at = ReadDigits(first, integer);
    std::ptrdiff_t digits = at - first;
    std::int64_t power = 0;
    if (*at == '.' || *at == decimalSeparator) {
        const char* const fraction = at + 1;
        at = ReadFraction(fraction, integer);
        digits += at - fraction;
        power = fraction - at;
    }
    if (digits == 0 || digits > MostDigits) {
        return nullptr;
    }
    at = ReadExponent(at, power);
    double magnitude = 0;
    if (at == nullptr || !IsSeparator(*at) || !DecimalToDouble(integer, power, magnitude)) {
        return nullptr;
    }
    value = std::bit_cast<double>(std::bit_cast<std::uint64_t>(magnitude) |
                                  std::uint64_t{isNegative} << 63U);
    return at;
}

// The last separator that a whole word follows; the text's beginning when there is none. Tokens in
// front of it can be converted quickly.
const char* QuickEnd(std::string_view text) noexcept {
    std::size_t at = text.size() > WordDigits ? text.size() - WordDigits - 1 : 0;
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
