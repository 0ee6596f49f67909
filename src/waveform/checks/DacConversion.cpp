#include "waveform/checks/DacConversion.h"

#include <array>
#include <cmath>

#include "common/NearestRounding.h"
#include "waveform/checks/DacKernels.h"
#include "waveform/data/ModelFamily.h"

namespace krv::waveform {
namespace {

// A hair below 32767.5 and 8191.5: the peak itself rounds down to full scale whatever the errors
// of the multiplications.
constexpr double NewFullScale = 32767.499;
constexpr double OldFullScale = 8191.499;
// Brings the smallest magnitudes, for which 1 / peak is infinite, to where it isn't. A power of
// two, so that the values change in their exponent only.
constexpr double TinyPeakScale = 0x1p+300;

// The loops find only that there is a bad value, which keeps them fast; this finds which one.
std::optional<BadValue> ConvertByRule(std::span<const double> values, const kernels::CodeRule& rule,
                                      std::span<std::int16_t> codes, CodeRange& range) noexcept {
    const kernels::Converted converted = kernels::best::Convert(values, rule, codes);
    if (converted.good) {
        range.Add({converted.smallest, converted.largest});
        return std::nullopt;
    }
    const auto isBad = [&rule](double value) {
        const std::int32_t code = kernels::RoundToInt32(value * rule.factor + rule.offset);
        return code < rule.low || code > rule.high;
    };
    const auto bad = std::ranges::find_if(values, isBad);
    return BadValue{static_cast<std::size_t>(bad - values.begin())};
}

std::optional<BadValue> ConvertPreScaled(std::span<const double> values, const Scaling& scaling,
                                         std::span<std::int16_t> codes, CodeRange& range) noexcept {
    std::array<double, 512> scaled;
    CodeRange all;
    for (std::size_t done = 0; done < values.size(); done += scaled.size()) {
        const auto part = values.subspan(done, std::min(scaled.size(), values.size() - done));
        std::ranges::transform(part, scaled.begin(),
                               [&](double value) { return value * scaling.preScale; });
        auto bad = ConvertByRule(std::span(scaled).first(part.size()),
                                 {scaling.factor, scaling.offset}, codes.subspan(done), all);
        if (bad) {
            return BadValue{done + bad->index};
        }
    }
    range.Add(all);
    return std::nullopt;
}

static_assert(kernels::OffsetZero == ZeroCode(false));

constexpr kernels::Finish FinishOf(FinalStep step) noexcept {
    switch (step) {
        case FinalStep::OffsetToSigned:
            return kernels::Finish::OffsetToSigned;
        case FinalStep::SignedToOffset:
            return kernels::Finish::SignedToOffset;
        default:
            return kernels::Finish::None;
    }
}

constexpr bool SuitsStep(FinalStep step, CodeRange range) noexcept {
    const bool isOffset = step == FinalStep::OffsetToSigned || step == FinalStep::OffsetKept;
    return !isOffset || (range.smallest >= 0 && range.largest <= LargestOldCode);
}

template <kernels::Finish Step>
void FinishEach(std::span<const std::int16_t> codes, std::span<std::int16_t> finished) noexcept {
    std::ranges::transform(codes, finished.begin(),
                           [](std::int16_t code) { return Finished(Step, code); });
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
        return BadValue{static_cast<std::size_t>(bad - values.begin())};
    }
    range.minimum = std::min(range.minimum, extremes.minimum);
    range.maximum = std::max(range.maximum, extremes.maximum);
    return std::nullopt;
}

Scaling ScalingFor(double peak, double percent, bool newModel) noexcept {
    const NearestRounding nearest;
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
                                     std::span<std::int16_t> codes, CodeRange& range) noexcept {
    const NearestRounding nearest;
    if (scaling.preScale != 1) {
        return ConvertPreScaled(values, scaling, codes, range);
    }
    return ConvertByRule(values, {scaling.factor, scaling.offset}, codes, range);
}

std::optional<BadValue> RoundToCodes(std::span<const double> values, CodeBounds bounds,
                                     std::span<std::int16_t> codes, CodeRange& range) noexcept {
    const NearestRounding nearest;
    return ConvertByRule(values, {.low = bounds.low, .high = bounds.high}, codes, range);
}

FinalStep FinalStepFor(bool fourteenBit, bool newModel) noexcept {
    if (fourteenBit) {
        return newModel ? FinalStep::OffsetToSigned : FinalStep::OffsetKept;
    }
    return newModel ? FinalStep::None : FinalStep::SignedToOffset;
}

std::optional<BadValue> ApplyFinalStep(FinalStep step, std::span<std::int16_t> codes,
                                       CodeRange& range) noexcept {
    if (codes.empty() || step == FinalStep::None) {
        return std::nullopt;
    }
    if (!SuitsStep(step, range)) {
        const auto isBad = [](std::int16_t code) { return code < 0 || code > LargestOldCode; };
        const auto bad = std::ranges::find_if(codes, isBad);
        return BadValue{static_cast<std::size_t>(bad - codes.begin())};
    }
    FinishCodes(step, codes, codes);
    range = FinishedRange(step, range);
    return std::nullopt;
}

bool RoundToFinalCodes(std::span<const double> values, CodeBounds bounds, FinalStep step,
                       std::span<std::int16_t> codes, CodeRange& range) noexcept {
    const NearestRounding nearest;
    const kernels::Finish finish = FinishOf(step);
    const kernels::Converted converted =
        kernels::best::Convert(values, {.low = bounds.low, .high = bounds.high}, codes, finish);
    const CodeRange codeRange{converted.smallest, converted.largest};
    if (!converted.good || (!values.empty() && !SuitsStep(step, codeRange))) {
        return false;
    }
    if (!values.empty()) {
        range.Add(FinishedRange(step, codeRange));
    }
    return true;
}

// Only bounds of all 16 bits are wider than either kind of number.
bool AllPass(CodeRange range, bool isUnsigned, CodeBounds bounds, FinalStep step) noexcept {
    if (range.smallest > range.largest) {
        return true;
    }
    const std::int32_t low = isUnsigned ? std::max(bounds.low, 0) : bounds.low;
    const bool within = bounds.high == UINT16_MAX
                            ? bounds.low <= (isUnsigned ? 0 : INT16_MIN)
                            : range.smallest >= low && range.largest <= bounds.high;
    return within && SuitsStep(step, range);
}

void FinishCodes(FinalStep step, std::span<const std::int16_t> codes,
                 std::span<std::int16_t> finished) noexcept {
    switch (step) {
        case FinalStep::OffsetToSigned:
            return FinishEach<kernels::Finish::OffsetToSigned>(codes, finished);
        case FinalStep::SignedToOffset:
            return FinishEach<kernels::Finish::SignedToOffset>(codes, finished);
        default:
            return FinishEach<kernels::Finish::None>(codes, finished);
    }
}

// A step keeps the order of codes, so the range's ends stay its ends.
CodeRange FinishedRange(FinalStep step, CodeRange range) noexcept {
    const kernels::Finish finish = FinishOf(step);
    return {Finished(finish, range.smallest), Finished(finish, range.largest)};
}

void MaskMarkers(std::int16_t mask, std::span<std::int16_t> codes) noexcept {
    for (std::int16_t& code : codes) {
        code = static_cast<std::int16_t>(code & mask);
    }
}

}  // namespace krv::waveform
