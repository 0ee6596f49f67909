// An integer times a power of ten as a double, correctly rounded, halves to even: the arithmetic
// behind the conversion of text to a number, as far as the processor does it in one step.
// Pure functions; nothing allocates or throws. They stand here to be inlined.
#pragma once

#include <array>
#include <bit>
#include <cfloat>
#include <cstddef>
#include <cstdint>

namespace krv {

// The powers of ten that a double holds exactly.
inline constexpr std::array<double, 23> ExactPowersOfTen{
    1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
    1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
inline constexpr std::int64_t LargestExactPower = 22;

#ifdef __SIZEOF_INT128__
// The first 64 bits of a power of ten, of which the topmost one is set; what follows is cut off.
inline constexpr std::int64_t LargestPower = 280;
inline constexpr std::array<std::uint64_t, 2 * LargestPower + 1> BitsOfPowersOfTen = [] {
    __extension__ using Wide = unsigned __int128;
    std::array<std::uint64_t, 2 * LargestPower + 1> bits{};
    // Each step loses less than a unit of the last 8 of 128 bits.
    Wide up = Wide{1} << 127U;
    Wide down = up;
    for (std::size_t step = 0; step <= LargestPower; ++step) {
        bits[LargestPower + step] = static_cast<std::uint64_t>(up >> 64U);
        bits[LargestPower - step] = static_cast<std::uint64_t>(down >> 64U);
        up = (up >> 3U) * 5;
        up <<= (up >> 127U) == 0 ? 1U : 0U;
        down /= 5;
        down <<= (down >> 125U) == 0 ? 3U : 2U;
    }
    return bits;
}();

// The integer, at least 1, times ten to the power, which is at most LargestPower either way. False,
// with `value` untouched, when the bits of the power don't tell which of two doubles is nearer.
[[nodiscard]] inline bool TimesPowerOfTen(std::uint64_t integer, std::int64_t power,
                                          double& value) noexcept {
    __extension__ using Wide = unsigned __int128;
    const int zeros = std::countl_zero(integer);
    const std::uint64_t bits = BitsOfPowersOfTen[static_cast<std::size_t>(power + LargestPower)];
    const Wide product = Wide{integer << zeros} * bits;
    // The first 63 bits, ten more than a double has. The true product is less than two units of the
    // 64th beyond them.
    const int shift = (product >> 127U) != 0 ? 65 : 64;
    const auto first = static_cast<std::int64_t>(product >> shift);
    constexpr std::int64_t Below = (1 << 10) - 1;
    constexpr std::int64_t Half = 1 << 9;
    if (const std::int64_t below = first & Below; below >= Half - 2 && below <= Half) {
        return false;
    }
    // 217706 / 2^16 is the binary logarithm of ten.
    const std::int64_t exponent = ((power * 217706) >> 16) - 63 - zeros + shift;
    const auto scale =
        std::bit_cast<double>(static_cast<std::uint64_t>(DBL_MAX_EXP - 1 + exponent) << 52U);
    value = static_cast<double>(first) * scale;
    return true;
}
#endif

// False, with `value` untouched, for numbers that take arithmetic of more digits.
[[nodiscard]] inline bool DecimalToDouble(std::uint64_t integer, std::int64_t power,
                                          double& value) noexcept {
    // Registers wider than a double would round twice.
    if constexpr (FLT_EVAL_METHOD != 0) {
        return false;
    }
    if (integer <= std::uint64_t{1} << DBL_MANT_DIG && power >= -LargestExactPower &&
        power <= LargestExactPower) {
        const auto exact = static_cast<double>(static_cast<std::int64_t>(integer));
        value = power < 0 ? exact / ExactPowersOfTen[static_cast<std::size_t>(-power)]
                          : exact * ExactPowersOfTen[static_cast<std::size_t>(power)];
        return true;
    }
#ifdef __SIZEOF_INT128__
    if (integer != 0 && power >= -LargestPower && power <= LargestPower) {
        return TimesPowerOfTen(integer, power, value);
    }
#endif
    return false;
}

}  // namespace krv
