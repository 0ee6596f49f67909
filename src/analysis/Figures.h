// Figures: what is told of a waveform: its measures, how long it takes and how wide its spectrum
// is.
#pragma once

#include <cstddef>
#include <optional>

#include "analysis/Measures.h"
#include "analysis/Signal.h"
#include "analysis/Spectrum.h"

namespace krv::analysis {

struct Figures {
    std::size_t points = 0;
    std::optional<double> sampleRate;
    Measures measures;
    // Holds 99 % of the power; a share of the sample rate.
    double occupiedShare = 0;
};

// The signal has a point at least; the spectrum is its own.
[[nodiscard]] Figures FiguresOf(const Signal& signal, const Spectrum& spectrum);
[[nodiscard]] Figures FiguresOf(const Signal& signal);

}  // namespace krv::analysis
