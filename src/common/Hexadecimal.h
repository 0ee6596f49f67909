// Numbers in hexadecimal digits, e.g. checksums as "0001F00D".
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace krv {

enum class HexLetters : std::uint8_t { Capital, Small };

// The number's last digits.
[[nodiscard]] inline std::string Hexadecimal(std::uint32_t value, std::size_t digits = 8,
                                             HexLetters letters = HexLetters::Capital) {
    const char* const symbols =
        letters == HexLetters::Capital ? "0123456789ABCDEF" : "0123456789abcdef";
    std::string text(digits, '0');
    for (auto digit = text.rbegin(); digit != text.rend(); ++digit, value >>= 4) {
        *digit = symbols[value & 0xFU];
    }
    return text;
}

}  // namespace krv
