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
};

// Passes the signal by in blocks, from its first point to its last.
template <class Take>
void ForBlocks(const Signal& signal, const Take& take) {
    constexpr std::size_t Most = 16384;
    std::vector<double> i(Most);
    std::vector<double> q(Most);
    for (std::size_t at = 0; at < signal.points;) {
        const std::size_t count = signal.points - at < Most ? signal.points - at : Most;
        const std::span<double> iBlock = std::span(i).first(count);
        const std::span<double> qBlock = std::span(q).first(count);
        signal.copy(at, iBlock, qBlock);
        take(at, std::span<const double>(iBlock), std::span<const double>(qBlock));
        at += count;
    }
}

}  // namespace krv::analysis
