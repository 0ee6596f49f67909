// Checksums as text: eight hexadecimal digits, e.g. "0001F00D".
#pragma once

#include <cstdint>
#include <string>

namespace krv::bench {

[[nodiscard]] inline std::string Hexadecimal(std::uint32_t value) {
    std::string text(8, '0');
    for (auto digit = text.rbegin(); digit != text.rend(); ++digit, value >>= 4) {
        *digit = "0123456789ABCDEF"[value & 0xFU];
    }
    return text;
}

}  // namespace krv::bench
