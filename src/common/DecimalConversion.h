// An integer times a power of ten as a double, correctly rounded, halves to even: the arithmetic
// behind every conversion of text to a number.
//
// Two ways, both exact. Where integer and power are doubles themselves, one multiplication or
// division of the processor rounds once. Else the integer is multiplied with 128 leading bits of
// the power in integer arithmetic (the method of Eisel and Lemire), which tells when these bits
// don't decide. Pure functions; nothing allocates or throws.
#pragma once

#include <array>
#include <cfloat>
#include <cstdint>

namespace krv {

// The powers of ten that a double holds exactly.
inline constexpr std::array<double, 23> ExactPowersOfTen{
    1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
    1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
inline constexpr std::int64_t LargestExactPower = 22;

// Powers beyond this are not looked up.
inline constexpr std::int64_t LargestTablePower = 64;

// False, with `value` untouched, when the power is beyond the table or its leading bits don't
// decide. The integer isn't 0.
[[nodiscard]] bool ConvertByProduct(std::uint64_t integer, std::int64_t power,
                                    double& value) noexcept;

// False, with `value` untouched, for the few numbers that take arithmetic of more digits.
[[nodiscard]] inline bool DecimalToDouble(std::uint64_t integer, std::int64_t power,
                                          double& value) noexcept {
    // Registers wider than a double would round twice.
    if constexpr (FLT_EVAL_METHOD == 0) {
        if (integer <= std::uint64_t{1} << DBL_MANT_DIG && power >= -LargestExactPower &&
            power <= LargestExactPower) {
            const auto exact = static_cast<double>(static_cast<std::int64_t>(integer));
            value = power < 0 ? exact / ExactPowersOfTen[static_cast<std::size_t>(-power)]
                              : exact * ExactPowersOfTen[static_cast<std::size_t>(power)];
            return true;
        }
    }
    if (integer == 0) {
        value = 0;
        return true;
    }
    return ConvertByProduct(integer, power, value);
}

}  // namespace krv
