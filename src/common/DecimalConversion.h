// An integer times a power of ten as a double, correctly rounded, halves to even: the arithmetic
// behind every conversion of text to a number.
//
// Two ways, both exact. Where integer and power are doubles themselves, one multiplication or
// division of the processor rounds once. Else the integer is multiplied with 128 leading bits of
// the power in integer arithmetic (the method of Eisel and Lemire), which tells when these bits
// don't decide. Pure functions; nothing allocates or throws. They stand here to be inlined: calls
// took a tenth of the conversion of 17 digits.
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

struct Product {
    std::uint64_t high = 0;
    std::uint64_t low = 0;
};

[[nodiscard]] constexpr Product MultiplyInHalves(std::uint64_t a, std::uint64_t b) noexcept {
    constexpr std::uint64_t Half = 0xFFFFFFFF;
    const std::uint64_t low = (a & Half) * (b & Half);
    const std::uint64_t middle = (a >> 32U) * (b & Half) + (low >> 32U);
    const std::uint64_t other = (a & Half) * (b >> 32U) + (middle & Half);
    return {(a >> 32U) * (b >> 32U) + (middle >> 32U) + (other >> 32U),
            other << 32U | (low & Half)};
}

[[nodiscard]] inline Product Multiply(std::uint64_t a, std::uint64_t b) noexcept {
#ifdef __SIZEOF_INT128__
    __extension__ using Int128 = unsigned __int128;
    const Int128 product = static_cast<Int128>(a) * b;
    return {static_cast<std::uint64_t>(product >> 64U), static_cast<std::uint64_t>(product)};
#else
    return MultiplyInHalves(a, b);
#endif
}

class DecimalProduct {
 public:
    // Powers beyond this are not looked up.
    static constexpr std::int64_t LargestPower = 64;

    // False, with `value` untouched, when the power is beyond the table or its leading bits don't
    // decide. The integer isn't 0.
    [[nodiscard]] static bool Convert(std::uint64_t integer, std::int64_t power,
                                      double& value) noexcept {
        if (power < -LargestPower || power > LargestPower) {
            return false;
        }
        const int zeros = std::countl_zero(integer);
        const Product product = LeadingBits(integer << zeros, power);
        if (product.low == UINT64_MAX && (power < -27 || power > 55)) {
            return false;
        }
        const auto upper = static_cast<int>(product.high >> 63U);
        const int shift = upper + static_cast<int>(SpareBits);
        std::uint64_t mantissa = product.high >> shift;
        // A tie, which only these powers can lead to, goes down when that is even.
        if (product.low <= 1 && power >= -4 && power <= 23 && (mantissa & 3U) == 1 &&
            mantissa << shift == product.high) {
            --mantissa;
        }
        mantissa = (mantissa + (mantissa & 1U)) >> 1U;
        // The binary exponent of a power of ten: 217706 / 65536 is a little less than log2(10).
        const auto exponent =
            static_cast<std::int64_t>((217706 * power) >> 16) + 63 - zeros + upper + 1023;
        // Rounding up to the next power of two carries into the exponent by itself.
        value = std::bit_cast<double>((static_cast<std::uint64_t>(exponent - 1) << 52U) + mantissa);
        return true;
    }

 private:
    // Five to the powers of -64 to 64, as their leading bits. Those of ten have the same.
    using Table = std::array<Product, 2 * LargestPower + 1>;
    static const Table Powers;

    // Of the double's 53 bits, one to round by and what normalising may take, this many bits of a
    // word are left: only when they are all ones can what follows carry into the others.
    static constexpr unsigned SpareBits = 9;
    static constexpr std::uint64_t SpareMask = (std::uint64_t{1} << SpareBits) - 1;

    static Product LeadingBits(std::uint64_t integer, std::int64_t power) noexcept {
        const Product& factor = Powers[static_cast<std::size_t>(power + LargestPower)];
        Product product = Multiply(integer, factor.high);
        if ((product.high & SpareMask) == SpareMask) {
            const std::uint64_t carry = Multiply(integer, factor.low).high;
            product.low += carry;
            product.high += product.low < carry ? 1 : 0;
        }
        return product;
    }
};

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
    return DecimalProduct::Convert(integer, power, value);
}

}  // namespace krv
