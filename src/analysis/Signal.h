// Signal: the points that are measured and drawn, wherever they are kept. One thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

namespace krv::analysis {

struct Signal {
    std::size_t points = 0;
    // Without Q its values are zeros.
    bool hasQ = true;
    // Copies the values from a point on, as shares of full scale; both spans have one size.
    std::function<void(std::size_t first, std::span<double> i, std::span<double> q)> copy;
    // In hertz.
    std::optional<double> sampleRate;
    // The codes that full scale stands for, of integers; 0 for other numbers.
    double fullScaleCode = 0;
    // The code that stands for zero.
    double zeroCode = 0;
};

// Passes the signal by in blocks, from its first point to its last. Of one that has more blocks
// than `most` only so many are taken, spread over all of it.
template <class Take>
void ForBlocks(const Signal& signal, const Take& take, std::size_t most = SIZE_MAX) {
    constexpr std::size_t BlockPoints = 16384;
    const std::size_t blocks = (signal.points + BlockPoints - 1) / BlockPoints;
    const std::size_t taken = blocks < most ? blocks : most;
    std::vector<double> i(BlockPoints);
    std::vector<double> q(BlockPoints);
    for (std::size_t block = 0; block < taken; ++block) {
        const auto place = std::uint64_t{block} * blocks / taken;
        const std::size_t at = static_cast<std::size_t>(place) * BlockPoints;
        const std::size_t count =
            signal.points - at < BlockPoints ? signal.points - at : BlockPoints;
        const std::span<double> iBlock = std::span(i).first(count);
        const std::span<double> qBlock = std::span(q).first(count);
        signal.copy(at, iBlock, qBlock);
        take(at, std::span<const double>(iBlock), std::span<const double>(qBlock));
    }
}

// What diagrams of a whole signal are made of, so that long ones don't take long: 4 million points.
inline constexpr std::size_t BlocksOfDiagrams = 256;

}  // namespace krv::analysis
