#include "common/DecimalConversion.h"

#include <bit>

namespace krv {
namespace {

struct Product {
    std::uint64_t high = 0;
    std::uint64_t low = 0;
};

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
constexpr Product LeadingBits(const Wide& wide) {
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

// Five to the powers of -64 to 64, as their leading bits. Those of ten have the same.
constexpr std::array<Product, 2 * LargestTablePower + 1> PowersOfFive = [] {
    std::array<Product, 2 * LargestTablePower + 1> powers;
    Wide power;
    power.limbs[0] = 1;
    powers[LargestTablePower] = LeadingBits(power);
    for (std::size_t exponent = 1; exponent <= LargestTablePower; ++exponent) {
        power.Multiply(5, 0);
        powers[LargestTablePower + exponent] = LeadingBits(power);
        powers[LargestTablePower - exponent] = ReciprocalBits(power);
    }
    return powers;
}();

[[maybe_unused]] constexpr Product MultiplyInHalves(std::uint64_t a, std::uint64_t b) noexcept {
    constexpr std::uint64_t Half = 0xFFFFFFFF;
    const std::uint64_t low = (a & Half) * (b & Half);
    const std::uint64_t middle = (a >> 32U) * (b & Half) + (low >> 32U);
    const std::uint64_t other = (a & Half) * (b >> 32U) + (middle & Half);
    return {(a >> 32U) * (b >> 32U) + (middle >> 32U) + (other >> 32U),
            other << 32U | (low & Half)};
}

Product Multiply(std::uint64_t a, std::uint64_t b) noexcept {
#ifdef __SIZEOF_INT128__
    __extension__ using Int128 = unsigned __int128;
    const Int128 product = static_cast<Int128>(a) * b;
    return {static_cast<std::uint64_t>(product >> 64U), static_cast<std::uint64_t>(product)};
#else
    return MultiplyInHalves(a, b);
#endif
}

// Of the double's 53 bits, one to round by and what normalising may take, this many bits of a word
// are left: only when they are all ones can what follows carry into the others.
constexpr unsigned SpareBits = 9;
constexpr std::uint64_t SpareMask = (std::uint64_t{1} << SpareBits) - 1;

Product LeadingProduct(std::uint64_t integer, const Product& power) noexcept {
    Product product = Multiply(integer, power.high);
    if ((product.high & SpareMask) == SpareMask) {
        const std::uint64_t carry = Multiply(integer, power.low).high;
        product.low += carry;
        product.high += product.low < carry ? 1 : 0;
    }
    return product;
}

}  // namespace

bool ConvertByProduct(std::uint64_t integer, std::int64_t power, double& value) noexcept {
    if (power < -LargestTablePower || power > LargestTablePower) {
        return false;
    }
    const int zeros = std::countl_zero(integer);
    const Product product = LeadingProduct(
        integer << zeros, PowersOfFive[static_cast<std::size_t>(power + LargestTablePower)]);
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
    const std::uint64_t bits = (static_cast<std::uint64_t>(exponent - 1) << 52U) + mantissa;
    value = std::bit_cast<double>(bits);
    return true;
}

}  // namespace krv
