// The wire's order of 16-bit codes: most significant byte first.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

namespace krv::suite {

[[nodiscard]] constexpr std::uint16_t WireOrder(std::uint16_t code) noexcept {
    if constexpr (std::endian::native == std::endian::big) {
        return code;
    }
    return static_cast<std::uint16_t>((code << 8) | (code >> 8));
}

// Plain loops over aligned arrays, which compilers turn into vector code.
inline void CopyToWireOrder(std::span<const std::int16_t> codes, std::uint16_t* wire) noexcept {
    for (std::size_t index = 0; index < codes.size(); ++index) {
        wire[index] = WireOrder(static_cast<std::uint16_t>(codes[index]));
    }
}

// The bytes are those of `codes.size()` codes and may begin at an odd address.
inline void CopyFromWireOrder(const std::byte* wire, std::span<std::int16_t> codes) noexcept {
    for (std::size_t index = 0; index < codes.size(); ++index) {
        std::uint16_t code;
        std::memcpy(&code, wire + index * sizeof code, sizeof code);
        codes[index] = static_cast<std::int16_t>(WireOrder(code));
    }
}

}  // namespace krv::suite
