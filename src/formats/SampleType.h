// SampleType: how a binary file stores one value.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

namespace krv::formats {

enum class SampleKind : std::uint8_t { Signed, Unsigned, Float };

struct SampleType {
    SampleKind kind = SampleKind::Signed;
    // 1, 2, 3, 4 or 8 of an integer, 4 or 8 of a float.
    std::uint8_t bytes = 2;
    bool isBigEndian = false;

    friend bool operator==(const SampleType&, const SampleType&) = default;
};

// What one sample of a raw or SigMF file is made of.
struct SampleLayout {
    SampleType type;
    bool isComplex = false;
};

// "ci16_le", "rf32_be", "cu8": c or r, f, i or u, the bits of one value, the byte order; without
// one it is little endian. Nothing for any other text.
[[nodiscard]] std::optional<SampleLayout> ParseSampleLayout(std::string_view name);

// "16-bit integers", "32-bit floats, big endian".
[[nodiscard]] std::string DescribeType(SampleType type);

// The magnitude at full scale: 32768 for 16 bits, 1 for floats. 0 for 64-bit integers, which are
// numbers as a program keeps them and not those of a converter.
[[nodiscard]] double FullScaleOf(SampleType type) noexcept;
// What stands for zero: the middle of the range of unsigned values, except for 64-bit ones.
[[nodiscard]] double ZeroOf(SampleType type) noexcept;

// Converts as many values as the span has; `bytes` holds all of them. What stands for
// zero is taken off. All are exact up to 2^53.
void Decode(SampleType type, std::span<const std::byte> bytes, std::span<double> values) noexcept;

// The value of the type, of two or more bytes, that the bytes begin with.
template <class T>
[[nodiscard]] T LoadAs(std::span<const std::byte> bytes, bool isBigEndian) noexcept {
    using Bits =
        std::conditional_t<sizeof(T) == 2, std::uint16_t,
                           std::conditional_t<sizeof(T) == 4, std::uint32_t, std::uint64_t>>;
    Bits bits = 0;
    for (std::size_t k = 0; k < sizeof(T); ++k) {
        const std::size_t place = isBigEndian ? sizeof(T) - 1 - k : k;
        bits = static_cast<Bits>(bits | std::to_integer<Bits>(bytes[place]) << (8 * k));
    }
    return std::bit_cast<T>(bits);
}

}  // namespace krv::formats
