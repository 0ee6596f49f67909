// The loops behind DacConversion, in two forms with the same results bit for bit: plain code, and
// SSE2 where the processor's baseline has it. For DacConversion and for tests that compare the two.
//
// Pure functions without allocation; spans need no alignment. Rounding is to nearest, halves to
// even; the files are compiled without fused multiply-add, which would round once too little.
#pragma once

#include <cstdint>
#include <limits>
#include <span>

#include "common/HasSse2.h"

namespace krv::kernels {

// The extremes of values that are all finite; without any value, infinities that any value beats.
struct Extremes {
    double minimum = std::numeric_limits<double>::infinity();
    double maximum = -std::numeric_limits<double>::infinity();
    // False when a value is not a number or infinite; the extremes then mean nothing.
    bool finite = true;
};

// code = the low 16 bits of round(value * factor + offset), which must lie in low to high. Both
// bounds lie within -32768 to 65535.
struct CodeRule {
    double factor = 1;
    double offset = 0;
    std::int32_t low = INT16_MIN;
    std::int32_t high = INT16_MAX;
};

// The extremes of the codes; without any code, the smallest above the largest.
struct Converted {
    std::int16_t smallest = INT16_MAX;
    std::int16_t largest = INT16_MIN;
    // False when a value lay outside the rule's bounds; the extremes then mean nothing, nor does
    // what was written for that value.
    bool good = true;
};

// Nearest 32-bit integer, halves to even. INT32_MIN stands for everything that has none, such as
// infinity, as it does for the vector instruction.
[[nodiscard]] std::int32_t RoundToInt32(double value) noexcept;

namespace scalar {
[[nodiscard]] Extremes FindExtremes(std::span<const double> values) noexcept;
// Writes a code for each value; `codes` is at least as long as `values`.
[[nodiscard]] Converted Convert(std::span<const double> values, const CodeRule& rule,
                                std::span<std::int16_t> codes) noexcept;
}  // namespace scalar

#if KRV_HAS_SSE2
namespace sse2 {
[[nodiscard]] Extremes FindExtremes(std::span<const double> values) noexcept;
[[nodiscard]] Converted Convert(std::span<const double> values, const CodeRule& rule,
                                std::span<std::int16_t> codes) noexcept;
}  // namespace sse2
namespace best = sse2;
#else
namespace best = scalar;
#endif

}  // namespace krv::kernels
