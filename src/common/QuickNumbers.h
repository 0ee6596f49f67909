// QuickNumbers: the conversion of numbers of the forms that files are made of, for the readers of
// text. What it doesn't take is for ParseNumber, and both give the same values.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "common/DecimalConversion.h"

namespace krv::quick {

inline constexpr std::size_t WordDigits = sizeof(std::uint64_t);
// As many digits as always fit into 64 bits.
inline constexpr std::ptrdiff_t MostDigits = 19;
inline constexpr std::ptrdiff_t MostExponentDigits = 4;

inline bool IsDigit(char character) noexcept {
    return character >= '0' && character <= '9';
}

inline constexpr std::uint64_t Zeros = 0x3030303030303030;
inline constexpr std::array<std::uint64_t, WordDigits> WordPowersOfTen{
    1, 10, 100, 1'000, 10'000, 100'000, 1'000'000, 10'000'000};

// How many digits a word begins with, its first character in the lowest byte. One that isn't a
// digit sets the topmost bit of its byte in one of the terms; what it carries changes only bytes
// behind it.
inline std::size_t CountDigits(std::uint64_t word) noexcept {
    const std::uint64_t others =
        ((word + 0x4646464646464646) | (word - Zeros)) & 0x8080808080808080;
    return static_cast<std::size_t>(std::countr_zero(others)) / 8;
}

// Eight digits' values, the first one in the lowest byte. Adding neighbours pair by pair takes
// three multiplications for all eight.
inline std::uint64_t ValueOfDigits(std::uint64_t word) noexcept {
    word = word * 10 + (word >> 8U);
    constexpr std::uint64_t Pairs = 0x000000FF000000FF;
    return ((word & Pairs) * (100 + (std::uint64_t{1000000} << 32U)) +
            ((word >> 16U) & Pairs) * (1 + (std::uint64_t{10000} << 32U))) >>
           32U;
}

// These step over a part of a number. They stop at a separator at the latest, and may look at as
// many characters behind it as a word has.

// Signs come in no order that a branch could be predicted by.
inline const char* SkipSign(const char* at, bool& isNegative) noexcept {
    isNegative = *at == '-';
    return at + (static_cast<int>(isNegative) | static_cast<int>(*at == '+'));
}

// Appends the digits to the integer, which wraps around when there are more than MostDigits.
inline const char* ReadDigits(const char* at, std::uint64_t& integer) noexcept {
    for (; IsDigit(*at); ++at) {
        integer = integer * 10 + static_cast<std::uint64_t>(*at - '0');
    }
    return at;
}

// The same for what has some digits as a rule.
inline const char* ReadFraction(const char* at, std::uint64_t& integer) noexcept {
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
inline const char* ReadExponent(const char* at, std::int64_t& power) noexcept {
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

// A sign, digits with or without a decimal separator, an exponent. Returns what stands behind the
// number; null, with `value` untouched, when ParseNumber is to judge it. The rounding mode in force
// is to the nearest, and a word behind the number may be looked at.
inline const char* ReadNumber(const char* at, char decimalSeparator, double& value) noexcept {
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
    if (at == nullptr || !DecimalToDouble(integer, power, magnitude)) {
        return nullptr;
    }
    value = std::bit_cast<double>(std::bit_cast<std::uint64_t>(magnitude) |
                                  std::uint64_t{isNegative} << 63U);
    return at;
}

}  // namespace krv::quick
