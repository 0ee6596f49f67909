// DAC conversion: from sample values to the 16-bit codes that the instrument takes.
//
// Pure functions on spans of any length and alignment, without allocation, one thread; whatever the
// thread's rounding mode is, it stays so and doesn't count. Nothing is thrown on bad data: each
// function returns which value is the first bad one; the codes in front of it are good, the others
// mean nothing. Output spans are at least as long as the input.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>

#include "waveform/data/Codes.h"
#include "waveform/data/ModelFamily.h"

namespace krv::waveform {

struct BadValue {
    std::size_t index = 0;
};

// --- scalable values ---------------------------------------------------------------------------

// The smallest and largest value so far.
struct ValueRange {
    double minimum = std::numeric_limits<double>::infinity();
    double maximum = -std::numeric_limits<double>::infinity();

    // The largest magnitude of both ends; 0 without a value.
    [[nodiscard]] double Peak() const noexcept;
};

// Widens the range by the values, all of which must be finite.
[[nodiscard]] std::optional<BadValue> AddToRange(std::span<const double> values,
                                                 ValueRange& range) noexcept;

// code = round(value * preScale * factor + offset).
struct Scaling {
    double factor = 1;
    double offset = 0;
    // A power of two other than 1 only where the factor alone would leave the double range.
    double preScale = 1;
};

// Brings values up to `peak` in magnitude to `percent` of the model's full output range; a peak of
// 0 counts as 1. Factor, offset and codes are computed in double precision throughout: peaks at
// 100 % give exactly 32767 and -32767, or 16383 and 1. A percentage far beyond 100 may give an
// infinite factor, which makes every value a bad one.
[[nodiscard]] Scaling ScalingFor(double peak, double percent, bool newModel) noexcept;

// Halves go to the even neighbour; a result outside 16 bits is a bad value. `range` is widened by
// the codes.
[[nodiscard]] std::optional<BadValue> ScaleToCodes(std::span<const double> values,
                                                   const Scaling& scaling,
                                                   std::span<std::int16_t> codes,
                                                   CodeRange& range) noexcept;

// --- internal values -----------------------------------------------------------------------------

// What a value may be once it has been rounded to a whole number, halves to even.
struct CodeBounds {
    std::int32_t low = INT16_MIN;
    std::int32_t high = INT16_MAX;
};

// I data is checked widely for either family: signed and unsigned 16-bit codes are both welcome.
inline constexpr CodeBounds IBounds{INT16_MIN, UINT16_MAX};
inline constexpr CodeBounds OldQBounds{0, LargestOldCode};
inline constexpr CodeBounds NewQBounds{INT16_MIN, INT16_MAX};
inline constexpr CodeBounds MarkerBounds{0, 15};

// Rounds each value; what lies above 32767 becomes the signed code of the same 16 bits. `range` is
// widened by the codes.
[[nodiscard]] std::optional<BadValue> RoundToCodes(std::span<const double> values,
                                                   CodeBounds bounds, std::span<std::int16_t> codes,
                                                   CodeRange& range) noexcept;

// What remains to be done to checked internal codes before they suit the model.
enum class FinalStep : std::uint8_t {
    None,
    // 14-bit offset binary to 16-bit two's complement: (code - 8192) * 4.
    OffsetToSigned,
    // 14-bit offset binary stays as it is.
    OffsetKept,
    // 16-bit two's complement to 14-bit offset binary: code / 4, halves to even, + 8192, at most
    // 16383.
    SignedToOffset,
};

[[nodiscard]] FinalStep FinalStepFor(bool fourteenBit, bool newModel) noexcept;

// In place. `range` is what the codes span, before and after. OffsetToSigned and OffsetKept demand
// codes of 0 to 16383, and change none when one is bad.
[[nodiscard]] std::optional<BadValue> ApplyFinalStep(FinalStep step, std::span<std::int16_t> codes,
                                                     CodeRange& range) noexcept;

// RoundToCodes and ApplyFinalStep in one pass, which saves up to a third of the time of two. False,
// with `range` untouched and codes that mean nothing, when a value is bad: the two functions say
// which.
[[nodiscard]] bool RoundToFinalCodes(std::span<const double> values, CodeBounds bounds,
                                     FinalStep step, std::span<std::int16_t> codes,
                                     CodeRange& range) noexcept;

// --- values that are 16 bits wide already -------------------------------------------------------

// Whether values pass the bounds and then the step, by the range of their bits taken as signed
// numbers; unsigned values are meant as 0 to 65535.
[[nodiscard]] bool AllPass(CodeRange range, bool isUnsigned, CodeBounds bounds,
                           FinalStep step) noexcept;

// Whether the step leaves codes as they are.
[[nodiscard]] constexpr bool KeepsCodes(FinalStep step) noexcept {
    return step == FinalStep::None || step == FinalStep::OffsetKept;
}

// What the step makes of codes that pass it, and of their range.
void FinishCodes(FinalStep step, std::span<const std::int16_t> codes,
                 std::span<std::int16_t> finished) noexcept;
[[nodiscard]] CodeRange FinishedRange(FinalStep step, CodeRange range) noexcept;

// --- markers -------------------------------------------------------------------------------------

// The bits that a model's marker codes have.
[[nodiscard]] constexpr std::int16_t MarkerMask(bool newModel) noexcept {
    return newModel ? std::int16_t{15} : std::int16_t{3};
}
void MaskMarkers(std::int16_t mask, std::span<std::int16_t> codes) noexcept;

}  // namespace krv::waveform
