#include "analysis/Spectrum.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <complex>
#include <cstdint>
#include <kissfft/kissfft.hh>
#include <numbers>
#include <numeric>
#include <span>

namespace krv::analysis {
namespace {

// Both sides together hold one per cent.
constexpr double OutsideOfBand = 0.005;

std::vector<double> HannWindow(std::size_t length) {
    std::vector<double> window(length, 1);
    for (std::size_t k = 0; length > 1 && k < length; ++k) {
        const double turn =
            2 * std::numbers::pi * static_cast<double>(k) / static_cast<double>(length);
        window[k] = 0.5 - 0.5 * std::cos(turn);
    }
    return window;
}

// In half overlap, as far as there are no more than MostBlocks; longer signals are taken in blocks
// that are spread over all of them.
std::size_t BlocksOf(std::size_t points, std::size_t length) {
    const std::size_t hop = std::max<std::size_t>(length / 2, 1);
    return std::min((points + hop - 1) / hop, Spectrum::MostBlocks);
}

// A waveform repeats: behind its last point the first one follows.
void CopyRound(const Signal& signal, std::size_t first, std::span<double> i, std::span<double> q) {
    const std::size_t beforeEnd = std::min(i.size(), signal.points - first);
    signal.copy(first, i.first(beforeEnd), q.first(beforeEnd));
    if (beforeEnd < i.size()) {
        signal.copy(0, i.subspan(beforeEnd), q.subspan(beforeEnd));
    }
}

// Where the power first exceeds the share, counted in bands from the front.
double EdgeAt(const std::vector<double>& power, double share) {
    double sum = 0;
    for (std::size_t band = 0; band < power.size(); ++band) {
        if (sum + power[band] > share) {
            return static_cast<double>(band) + (share - sum) / power[band];
        }
        sum += power[band];
    }
    return static_cast<double>(power.size());
}

}  // namespace

Spectrum SpectrumOf(const Signal& signal, std::size_t mostBands) {
    const std::size_t length =
        std::bit_floor(std::clamp<std::size_t>(signal.points / 4, 1, mostBands));
    const std::vector<double> window = HannWindow(length);
    const double windowPower =
        std::inner_product(window.begin(), window.end(), window.begin(), 0.0);
    const double windowSum = std::accumulate(window.begin(), window.end(), 0.0);
    const std::size_t blocks = BlocksOf(signal.points, length);
    kissfft<double> transform(length, false);
    std::vector<double> i(length);
    std::vector<double> q(length);
    std::vector<std::complex<double>> block(length);
    std::vector<std::complex<double>> lines(length);
    Spectrum spectrum{std::vector<double>(length, 0.0),
                      static_cast<double>(length) * windowPower / (windowSum * windowSum)};
    for (std::size_t count = 0; count < blocks; ++count) {
        const auto first = std::uint64_t{count} * signal.points / blocks;
        CopyRound(signal, static_cast<std::size_t>(first), i, q);
        for (std::size_t k = 0; k < length; ++k) {
            block[k] = {window[k] * i[k], window[k] * q[k]};
        }
        transform.transform(block.data(), lines.data());
        for (std::size_t k = 0; k < length; ++k) {
            spectrum.power[(k + length / 2) % length] += std::norm(lines[k]);
        }
    }
    // The sum of the lines' squares is the length times that of the points'.
    const double scale =
        1 / (static_cast<double>(blocks) * windowPower * static_cast<double>(length));
    for (double& power : spectrum.power) {
        power *= scale;
    }
    return spectrum;
}

double Spectrum::LevelOf(double bandPower) const noexcept {
    constexpr double Silence = 1e-30;
    return 10 * std::log10(std::max(bandPower * bandsOfATone, Silence));
}

double OccupiedBandwidth(const Spectrum& spectrum) noexcept {
    const std::vector<double>& power = spectrum.power;
    const double total = std::accumulate(power.begin(), power.end(), 0.0);
    if (!(total > 0)) {
        return 0;
    }
    const double lower = EdgeAt(power, OutsideOfBand * total);
    const double upper = EdgeAt(power, (1 - OutsideOfBand) * total);
    return (upper - lower) / static_cast<double>(power.size());
}

}  // namespace krv::analysis
