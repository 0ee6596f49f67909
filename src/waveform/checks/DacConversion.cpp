#include "waveform/checks/DacConversion.h"

#include <array>
#include <cmath>

#include "waveform/ModelFamily.h"
#include "waveform/checks/DacKernels.h"

namespace krv {
namespace {

// A hair below 32767.5 and 8191.5: the peak itself rounds down to full scale whatever the errors
// of the multiplications.
constexpr double NewFullScale = 32767.499;
constexpr double OldFullScale = 8191.499;
// Brings the smallest magnitudes, for which 1 / peak is infinite, to where it isn't. A power of
// two, so that the values change in their exponent only.
constexpr double TinyPeakScale = 0x1p+300;
constexpr std::int16_t OffsetBits = 0x3FFF;

BadValue Described(std::span<const double> values, std::size_t index) noexcept {
    return {index,
            std::isfinite(values[index]) ? BadValueKind::OutOfRange : BadValueKind::NotFinite};
}

// The loops tell only that there is a bad value, which keeps them fast; this looks for it.
std::optional<BadValue> ConvertByRule(std::span<const double> values, const kernels::CodeRule& rule,
                                      std::span<std::int16_t> codes) noexcept {
    if (kernels::best::Convert(values, rule, codes)) {
        return std::nullopt;
    }
    const auto isBad = [&rule](double value) {
        const std::int32_t code = kernels::RoundToInt32(value * rule.factor + rule.offset);
        return code < rule.low || code > rule.high;
    };
    const auto bad = std::ranges::find_if(values, isBad);
    return Described(values, static_cast<std::size_t>(bad - values.begin()));
}

std::optional<BadValue> ConvertPreScaled(std::span<const double> values, const Scaling& scaling,
                                         std::span<std::int16_t> codes) noexcept {
    std::array<double, 512> scaled;
    for (std::size_t done = 0; done < values.size(); done += scaled.size()) {
        const auto part = values.subspan(done, std::min(scaled.size(), values.size() - done));
        std::ranges::transform(part, scaled.begin(),
                               [&](double value) { return value * scaling.preScale; });
        auto bad = ConvertByRule(std::span(scaled).first(part.size()),
                                 {scaling.factor, scaling.offset}, codes.subspan(done));
        if (bad) {
            return Described(values, done + bad->index);
        }
    }
    return std::nullopt;
}

// Arithmetic in 16 bits throughout: the whole part of the quarter, and 1 more where the last two
// bits are above a half, or are a half and the whole part is odd.
constexpr std::int16_t QuarterHalfEven(std::int16_t code) noexcept {
    const int quarter = code >> 2;
    return static_cast<std::int16_t>(quarter + (((code & 3) + (quarter & 1) + 1) >> 2));
}

}  // namespace

double ValueRange::Peak() const noexcept {
    return minimum > maximum ? 0.0 : std::max(std::abs(minimum), std::abs(maximum));
}

std::optional<BadValue> AddToRange(std::span<const double> values, ValueRange& range) noexcept {
    const kernels::Extremes extremes = kernels::best::FindExtremes(values);
    if (!extremes.finite) {
        const auto bad =
            std::ranges::find_if(values, [](double value) { return !std::isfinite(value); });
        return Described(values, static_cast<std::size_t>(bad - values.begin()));
    }
    range.minimum = std::min(range.minimum, extremes.minimum);
    range.maximum = std::max(range.maximum, extremes.maximum);
    return std::nullopt;
}

Scaling ScalingFor(double peak, double percent, bool newModel) noexcept {
    const double fullScale = newModel ? NewFullScale : OldFullScale;
    const double divisor = peak == 0 ? 1.0 : peak;
    Scaling scaling;
    scaling.offset = ZeroCode(newModel);
    scaling.factor = (1 / divisor) * (percent / 100) * fullScale;
    if (!std::isfinite(scaling.factor)) {
        scaling.preScale = TinyPeakScale;
        scaling.factor = (1 / (divisor * TinyPeakScale)) * (percent / 100) * fullScale;
    }
    return scaling;
}

std::optional<BadValue> ScaleToCodes(std::span<const double> values, const Scaling& scaling,
                                     std::span<std::int16_t> codes) noexcept {
    if (scaling.preScale != 1) {
        return ConvertPreScaled(values, scaling, codes);
    }
    return ConvertByRule(values, {scaling.factor, scaling.offset}, codes);
}

std::optional<BadValue> RoundToCodes(std::span<const double> values, CodeBounds bounds,
                                     std::span<std::int16_t> codes) noexcept {
    return ConvertByRule(values, {.low = bounds.low, .high = bounds.high}, codes);
}

FinalStep FinalStepFor(bool fourteenBit, bool newModel) noexcept {
    if (fourteenBit) {
        return newModel ? FinalStep::OffsetToSigned : FinalStep::OffsetKept;
    }
    return newModel ? FinalStep::None : FinalStep::SignedToOffset;
}

std::optional<BadValue> ApplyFinalStep(FinalStep step, std::span<std::int16_t> codes) noexcept {
    if (step == FinalStep::SignedToOffset) {
        for (std::int16_t& code : codes) {
            const int shifted = QuarterHalfEven(code) + ZeroCode(false);
            code = static_cast<std::int16_t>(std::min<int>(shifted, OffsetBits));
        }
    }
    if (step == FinalStep::None || step == FinalStep::SignedToOffset) {
        return std::nullopt;
    }
    std::int16_t seen = 0;
    for (const std::int16_t code : codes) {
        seen = static_cast<std::int16_t>(seen | code);
    }
    if ((seen & ~OffsetBits) != 0) {
        const auto bad = std::ranges::find_if(
            codes, [](std::int16_t code) { return (code & ~OffsetBits) != 0; });
        return BadValue{static_cast<std::size_t>(bad - codes.begin()), BadValueKind::OutOfRange};
    }
    if (step == FinalStep::OffsetToSigned) {
        for (std::int16_t& code : codes) {
            code = static_cast<std::int16_t>((code - ZeroCode(false)) * 4);
        }
    }
    return std::nullopt;
}

void MaskMarkers(std::int16_t mask, std::span<std::int16_t> codes) noexcept {
    for (std::int16_t& code : codes) {
        code = static_cast<std::int16_t>(code & mask);
    }
}

void CodeRange::Add(std::span<const std::int16_t> codes) noexcept {
    std::int16_t low = smallest;
    std::int16_t high = largest;
    for (const std::int16_t code : codes) {
        low = std::min(low, code);
        high = std::max(high, code);
    }
    smallest = low;
    largest = high;
}

}  // namespace krv
