// Ccdf: how often a waveform's power exceeds its mean by so much.
#pragma once

#include <cstddef>
#include <vector>

#include "analysis/Signal.h"

namespace krv::analysis {

struct Ccdf {
    static constexpr double StepDb = 0.1;
    // The share of the points whose power exceeds the mean by more than 0, 0.1, 0.2 and so on
    // decibels; the last one is 0. Empty for silence.
    std::vector<double> shares;
};
// Relative to the mean of |x|^2. Both are of the blocks of diagrams.
[[nodiscard]] Ccdf CcdfOf(const Signal& signal);

}  // namespace krv::analysis
