// The loops behind DacConversion, in two forms with the same results bit for bit: plain code, and
// SSE2 where the processor's baseline has it. For DacConversion and for tests that compare the two.
//
// Pure functions without allocation; spans need no alignment. Rounding is to nearest, halves to
// even, which the caller's rounding mode must be; the files are compiled without fused
// multiply-add, which would round once too little.
#pragma once

#include <cstdint>
#include <limits>
#include <span>

#include "common/HasSse2.h"

namespace krv::waveform::kernels {

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

// What is done to a code before it is written: nothing; from 14-bit offset binary to 16-bit two's
// complement; from that to 14-bit offset binary. All keep the order of codes.
enum class Finish : std::uint8_t { None, OffsetToSigned, SignedToOffset };

inline constexpr std::int16_t OffsetZero = 8192;

// Adding 1 before two bits are cut off rounds up what is above a half; adding 1 more where the
// whole part is odd takes the halves there along. The two largest codes would end beyond the limit,
// so they stop in front of it, and nothing leaves 16 bits on the way.
inline constexpr std::int16_t LargestToOffset = 32765;

[[nodiscard]] constexpr std::int16_t Finished(Finish finish, std::int16_t code) noexcept {
    switch (finish) {
        case Finish::OffsetToSigned:
            return static_cast<std::int16_t>((code - OffsetZero) * 4);
        case Finish::SignedToOffset: {
            const int limited = code < LargestToOffset ? code : LargestToOffset;
            return static_cast<std::int16_t>(((limited + ((limited >> 2) & 1) + 1) >> 2) +
                                             OffsetZero);
        }
        default:
            return code;
    }
}

// The extremes of the codes before they were finished; without any code, the smallest above the
// largest.
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
                                std::span<std::int16_t> codes,
                                Finish finish = Finish::None) noexcept;
}  // namespace scalar

#if KRV_HAS_SSE2
namespace sse2 {
[[nodiscard]] Extremes FindExtremes(std::span<const double> values) noexcept;
[[nodiscard]] Converted Convert(std::span<const double> values, const CodeRule& rule,
                                std::span<std::int16_t> codes,
                                Finish finish = Finish::None) noexcept;
}  // namespace sse2
namespace best = sse2;
#else
namespace best = scalar;
#endif

}  // namespace krv::waveform::kernels
