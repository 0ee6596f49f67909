// Envelope: a waveform in as many columns as a picture has, each with the range of its points, so
// that nothing is lost of what there are more points of than columns.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "analysis/Signal.h"

namespace krv::plots {

struct Extent {
    double lowest = 0;
    double highest = 0;
};

struct Envelope {
    std::vector<Extent> i;
    std::vector<Extent> q;
};

// As many columns as asked for, but no more than there are points. Each begins with the last point
// of the one before, so that their ranges meet.
[[nodiscard]] Envelope EnvelopeOf(const analysis::Signal& signal, std::size_t columns);

// The bits that any marker of a column has.
[[nodiscard]] std::vector<std::uint8_t> MarkersOf(std::span<const std::uint8_t> markers,
                                                  std::size_t points, std::size_t columns);

}  // namespace krv::plots
