// Numbers in hexadecimal digits, e.g. checksums as "0001F00D".
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace krv {

// The number's last digits, in capital letters.
[[nodiscard]] inline std::string Hexadecimal(std::uint32_t value, std::size_t digits = 8) {
    std::string text(digits, '0');
    for (auto digit = text.rbegin(); digit != text.rend(); ++digit, value >>= 4) {
        *digit = "0123456789ABCDEF"[value & 0xFU];
    }
    return text;
}

}  // namespace krv
