// Little-endian numbers in byte strings, as the picture files have them.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace krv::suite::picture {

template <std::unsigned_integral Number>
void PutNumber(std::string& bytes, Number number) {
    for (std::size_t byte = 0; byte < sizeof number; ++byte) {
        bytes += static_cast<char>(std::uint64_t{number} >> (8 * byte) & 0xFFU);
    }
}

inline void Put16(std::string& bytes, std::integral auto number) {
    PutNumber(bytes, static_cast<std::uint16_t>(number));
}

inline void Put32(std::string& bytes, std::integral auto number) {
    PutNumber(bytes, static_cast<std::uint32_t>(number));
}

// The offset plus the number's size must lie within the bytes.
template <std::unsigned_integral Number>
[[nodiscard]] Number NumberAt(std::string_view bytes, std::size_t offset) {
    Number number = 0;
    for (std::size_t byte = 0; byte < sizeof number; ++byte) {
        const auto value = static_cast<std::uint8_t>(bytes[offset + byte]);
        number = static_cast<Number>(number | static_cast<Number>(Number{value} << (8 * byte)));
    }
    return number;
}

}  // namespace krv::suite::picture
