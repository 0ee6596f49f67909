#include <algorithm>
#include <cstddef>

#include "waveform/checks/DacKernels.h"

namespace krv::waveform::kernels {
namespace {

// Adding 1.5 * 2^52 leaves no bits for a fraction, so the addition itself rounds, halves to even.
constexpr double RoundingWeight = 6755399441055744.0;

}  // namespace

std::int32_t RoundToInt32(double value) noexcept {
    const bool fits = value > -2147483648.5 && value < 2147483647.5;
    const double rounded = ((fits ? value : 0.0) + RoundingWeight) - RoundingWeight;
    return fits ? static_cast<std::int32_t>(rounded) : INT32_MIN;
}

namespace scalar {

Extremes FindExtremes(std::span<const double> values) noexcept {
    Extremes extremes;
    // Zero for finite values, not a number for the others, and that stays in a sum.
    double poison = 0;
    for (const double value : values) {
        extremes.minimum = value < extremes.minimum ? value : extremes.minimum;
        extremes.maximum = value > extremes.maximum ? value : extremes.maximum;
        poison += value - value;
    }
    extremes.finite = poison == 0;
    // Turns a negative zero into the positive one, whatever the order of the two was.
    extremes.minimum += 0.0;
    extremes.maximum += 0.0;
    return extremes;
}

Converted Convert(std::span<const double> values, const CodeRule& rule,
                  std::span<std::int16_t> codes, Finish finish) noexcept {
    Converted result;
    for (std::size_t index = 0; index < values.size(); ++index) {
        const std::int32_t rounded = RoundToInt32(values[index] * rule.factor + rule.offset);
        const auto code = static_cast<std::int16_t>(rounded & 0xFFFF);
        codes[index] = Finished(finish, code);
        result.good = result.good && rounded >= rule.low && rounded <= rule.high;
        result.smallest = std::min(result.smallest, code);
        result.largest = std::max(result.largest, code);
    }
    return result;
}

}  // namespace scalar
}  // namespace krv::waveform::kernels
