// Numbers in text, and the conversions between number types, with the rules that the dialogs and
// readers share. Nothing here reads or writes the C locale.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace krv {

// How the platform writes numbers. The separator is an ASCII character; '.' is accepted besides it.
struct NumberFormat {
    char decimalSeparator = '.';
};

enum class NumberTextError : std::uint8_t { None, NotNumeric, OutOfRange };

struct ParsedNumber {
    double value = 0;
    NumberTextError error = NumberTextError::None;
};

// Converts a whole token: optional sign, decimal digits with at most one decimal separator,
// optional exponent (e, E, d or D, with optional sign). No blanks, no group separators, no
// hexadecimal, no "nan" or "inf". Correctly rounded to double, halves to even; underflow gives zero
// or a subnormal. A value beyond the double range gives OutOfRange, never infinity. Never
// allocates, never throws.
[[nodiscard]] ParsedNumber ParseNumber(std::string_view token, NumberFormat format = {}) noexcept;

// The number that a user typed in a text box. Blanks at both ends are ignored. Throws Error 13 when
// the text is not numeric and 6 when it is out of range.
[[nodiscard]] double TextToDouble(std::string_view text, NumberFormat format = {});

// Nearest integer, halves to the even neighbour, independent of the rounding mode in force.
[[nodiscard]] double RoundHalfEven(double value) noexcept;

// RoundHalfEven into the type. Each throws Error 6 when the result does not fit or is not finite.
[[nodiscard]] std::int16_t ToInt16(double value);
[[nodiscard]] std::int32_t ToInt32(double value);

// Rounded half to even at the given number of decimals (0 to 15), as messages round.
[[nodiscard]] double RoundDecimals(double value, int decimals) noexcept;

// The shortest form that messages use: up to 15 significant digits, no trailing zeros, the format's
// decimal separator, no blank in front; exponent form ("1E+20") from 1E+15 on and below 1E-4.
[[nodiscard]] std::string NumberToText(double value, NumberFormat format = {});

}  // namespace krv
