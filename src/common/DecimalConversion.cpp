#include "common/DecimalConversion.h"

namespace krv {
namespace {

// 160 bits, lowest limb first: enough for five to the power of 64 and one bit.
struct Wide {
    std::array<std::uint32_t, 5> limbs{};

    constexpr void Multiply(std::uint32_t factor, std::uint32_t summand) {
        std::uint64_t carry = summand;
        for (std::uint32_t& limb : limbs) {
            carry += std::uint64_t{limb} * factor;
            limb = static_cast<std::uint32_t>(carry);
            carry >>= 32U;
        }
    }
    constexpr bool SubtractIfNotLess(const Wide& other) {
        Wide difference;
        std::uint64_t borrow = 0;
        for (std::size_t at = 0; at < limbs.size(); ++at) {
            const std::uint64_t limb = std::uint64_t{limbs[at]} - other.limbs[at] - borrow;
            difference.limbs[at] = static_cast<std::uint32_t>(limb);
            borrow = limb >> 63U;
        }
        if (borrow == 0) {
            limbs = difference.limbs;
        }
        return borrow == 0;
    }
    [[nodiscard]] constexpr bool Bit(unsigned at) const {
        return ((limbs[at / 32] >> (at % 32)) & 1U) != 0;
    }
};

constexpr void ShiftIn(Product& bits, bool bit) {
    bits.high = bits.high << 1U | bits.low >> 63U;
    bits.low = bits.low << 1U | (bit ? 1U : 0U);
}

constexpr bool IsFull(const Product& bits) {
    return (bits.high >> 63U) != 0;
}

// The leading 128 bits, cut off behind them.
constexpr Product LeadingBitsOf(const Wide& wide) {
    Product bits;
    for (unsigned at = 160; at > 0 && !IsFull(bits); --at) {
        ShiftIn(bits, wide.Bit(at - 1));
    }
    while (!IsFull(bits)) {
        ShiftIn(bits, false);
    }
    return bits;
}

// The leading 128 bits of 1 / divisor, rounded up.
constexpr Product ReciprocalBits(const Wide& divisor) {
    Product bits;
    Wide remainder;
    remainder.limbs[0] = 1;
    while (!IsFull(bits)) {
        remainder.Multiply(2, 0);
        ShiftIn(bits, remainder.SubtractIfNotLess(divisor));
    }
    bits.low += 1;
    bits.high += bits.low == 0 ? 1 : 0;
    return bits;
}

}  // namespace

constexpr DecimalProduct::Table DecimalProduct::Powers = [] {
    Table powers;
    Wide power;
    power.limbs[0] = 1;
    powers[LargestPower] = LeadingBitsOf(power);
    for (std::size_t exponent = 1; exponent <= LargestPower; ++exponent) {
        power.Multiply(5, 0);
        powers[LargestPower + exponent] = LeadingBitsOf(power);
        powers[LargestPower - exponent] = ReciprocalBits(power);
    }
    return powers;
}();

}  // namespace krv
