// The wire's order of 16-bit codes: most significant byte first.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
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

inline void FromWireOrder(std::span<std::int16_t> codes) noexcept {
    for (std::int16_t& code : codes) {
        code = static_cast<std::int16_t>(WireOrder(static_cast<std::uint16_t>(code)));
    }
}

}  // namespace krv::suite
