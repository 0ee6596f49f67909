// What a number in text is worth, by way of the C library's conversion in the "C" locale.
#pragma once

#include <cmath>
#include <cstdlib>
#include <string>
#include <string_view>

#include "common/Numbers.h"

namespace krv::fuzz {

// The C library's grammar is the one wanted once names, hexadecimal and white space are excluded
// and the other separator and exponent letters are spelled its way.
inline ParsedNumber OracleNumber(std::string_view token, NumberFormat format) {
    std::string text;
    for (const char character : token) {
        if (character == format.decimalSeparator) {
            text += '.';
        } else if (character == 'd' || character == 'D') {
            text += 'e';
        } else if (std::string_view("0123456789+-.eE").find(character) != std::string_view::npos) {
            text += character;
        } else {
            return {0, NumberTextError::NotNumeric};
        }
    }
    char* end = nullptr;
    const double value = std::strtod(text.c_str(), &end);
    if (text.empty() || end != text.c_str() + text.size()) {
        return {0, NumberTextError::NotNumeric};
    }
    return std::isinf(value) ? ParsedNumber{0, NumberTextError::OutOfRange} : ParsedNumber{value};
}

}  // namespace krv::fuzz
