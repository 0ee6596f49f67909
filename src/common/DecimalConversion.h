// An integer times a power of ten as a double, correctly rounded, halves to even: the arithmetic
// behind the conversion of text to a number, as far as the processor does it in one division.
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
// The powers of ten that 64 bits hold.
inline constexpr std::array<std::uint64_t, 20> IntegerPowersOfTen = [] {
    std::array<std::uint64_t, 20> powers{1};
    for (std::size_t at = 1; at < powers.size(); ++at) {
        powers[at] = powers[at - 1] * 10;
    }
    return powers;
}();
inline constexpr std::int64_t LargestIntegerPower = 19;

// The integer, at least 1, divided by ten to the power of `places`, 0 to LargestIntegerPower.
[[nodiscard]] inline double DivideByPowerOfTen(std::uint64_t integer, std::size_t places) noexcept {
    __extension__ using Wide = unsigned __int128;
    const std::uint64_t power = IntegerPowersOfTen[places];
    const int integerZeros = std::countl_zero(integer);
    const int powerZeros = std::countl_zero(power);
    const std::uint64_t dividend = integer << integerZeros;
    const std::uint64_t divisor = power << powerZeros;
    // The quotient has 63 bits, ten more than a double. The last one stands for all that follow, so
    // that the conversion to a double rounds as if it saw them.
    const int shift = dividend < divisor ? 63 : 62;
    const Wide shifted = Wide{dividend} << shift;
    const auto quotient = static_cast<std::uint64_t>(shifted / divisor);
    const bool hasRemainder = static_cast<std::uint64_t>(shifted) != quotient * divisor;
    const auto rounded =
        static_cast<double>(static_cast<std::int64_t>(quotient | std::uint64_t{hasRemainder}));
    const int exponent = DBL_MAX_EXP - 1 + powerZeros - integerZeros - shift;
    return rounded * std::bit_cast<double>(static_cast<std::uint64_t>(exponent) << 52U);
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
    if (integer != 0 && power <= 0 && power >= -LargestIntegerPower) {
        value = DivideByPowerOfTen(integer, static_cast<std::size_t>(-power));
        return true;
    }
#endif
    return false;
}

}  // namespace krv
