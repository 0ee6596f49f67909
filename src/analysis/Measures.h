// Measures: the figures of a waveform. Magnitudes are shares of full scale; x stands for I + jQ.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "analysis/Signal.h"

namespace krv::analysis {

struct CodesUsed {
    std::int32_t smallest = 0;
    std::int32_t largest = 0;
    // How many different ones; nothing where there are more than 16 bits.
    std::optional<std::size_t> different;
};

struct Measures {
    // Of |x|, and of the larger of |I| and |Q|, which the codes limit.
    double peak = 0;
    double peakValue = 0;
    double rms = 0;
    // Of the envelope, in decibels; at the carrier's frequency it is 3.01 more. Nothing for
    // silence.
    std::optional<double> papr;
    double meanI = 0;
    double meanQ = 0;
    // Points with I or Q at or beyond the limit of the codes, and the longest run of them.
    std::size_t clipped = 0;
    std::size_t longestClip = 0;
    // From the last point to the first, where the waveform is played again, and the largest from a
    // point to the next.
    double wrapStep = 0;
    double largestStep = 0;
    // Without the means: the level of I over that of Q in decibels, and how far the angle between
    // them is from 90 degrees. Nothing where I or Q stays as it is.
    std::optional<double> gainImbalance;
    std::optional<double> quadratureError;
    // Nothing where the values are no integers.
    std::optional<CodesUsed> codes;
};

// The signal has a point at least.
[[nodiscard]] Measures Measure(const Signal& signal);

}  // namespace krv::analysis
