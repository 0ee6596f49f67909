// Spectrum: how a waveform's power is spread over the frequencies, by Welch's method: blocks of one
// length that overlap by half, within a Hann window. The waveform is taken as the generator plays
// it: behind its last point the first one follows.
#pragma once

#include <cstddef>
#include <vector>

#include "analysis/Signal.h"

namespace krv::analysis {

struct Spectrum {
    // Of 1024 points in half overlap these are 2 million.
    static constexpr std::size_t MostBlocks = 4096;

    // The power of each band, of full scale's; their sum is the mean of |x|^2. From minus half the
    // sample rate on, so that frequency 0 stands at half the size.
    std::vector<double> power;
    // The power of a tone in the middle of a band is so many times what the band holds of it: the
    // rest lies in the bands beside it.
    double bandsOfATone = 1;

    // Of a band's middle, as a share of the sample rate.
    [[nodiscard]] double FrequencyOf(std::size_t band) const noexcept {
        const auto bands = static_cast<double>(power.size());
        return static_cast<double>(band) / bands - 0.5;
    }
    // In decibels of full scale, as a tone's level: one of full scale in the middle of a band has
    // 0.
    [[nodiscard]] double LevelOf(double bandPower) const noexcept;
};

inline constexpr std::size_t MostBands = 1024;

// The number of bands is a power of two, at most `mostBands` and a quarter of the points, but one
// at least.
[[nodiscard]] Spectrum SpectrumOf(const Signal& signal, std::size_t mostBands = MostBands);

// The width of the band that holds all but half a per cent of the power on either side, as a share
// of the sample rate; 0 for silence.
[[nodiscard]] double OccupiedBandwidth(const Spectrum& spectrum) noexcept;

}  // namespace krv::analysis
