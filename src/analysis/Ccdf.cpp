#include "analysis/Ccdf.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <span>

namespace krv::analysis {
namespace {

// A single point among 2^31 is 93 dB above the mean.
constexpr std::size_t MostCcdfSteps = 1000;

// Finds the last step that a ratio exceeds without a logarithm for each of them: the upper bits of
// a number name a range that is narrower than a step, so that at most one step begins in it.
class StepFinder {
 public:
    StepFinder() : m_steps(Ranges) {
        for (std::size_t step = 0; step <= MostCcdfSteps; ++step) {
            m_ratios.push_back(std::pow(10, Ccdf::StepDb * static_cast<double>(step) / 10));
        }
        std::size_t step = 0;
        for (std::size_t range = 0; range < Ranges; ++range) {
            const double from = std::bit_cast<double>((range + FirstRange) << RangeShift);
            while (step + 1 < MostCcdfSteps && m_ratios[step + 1] < from) {
                ++step;
            }
            m_steps[range] = static_cast<std::uint16_t>(step);
        }
    }

    // Of a ratio above 1.
    [[nodiscard]] std::size_t LastBelow(double ratio) const {
        const auto range = static_cast<std::size_t>(
            (std::bit_cast<std::uint64_t>(ratio) >> RangeShift) - FirstRange);
        const std::size_t step = m_steps[std::min(range, Ranges - 1)];
        return std::min(step + (ratio > m_ratios[step + 1] ? 1 : 0), MostCcdfSteps - 1);
    }

 private:
    // 64 ranges from a power of two to the next, from 1 on to beyond the last step.
    static constexpr unsigned RangeShift = 46;
    static constexpr std::uint64_t FirstRange = std::bit_cast<std::uint64_t>(1.0) >> RangeShift;
    static constexpr std::size_t Ranges = 64 * 40;

    std::vector<std::uint16_t> m_steps;
    std::vector<double> m_ratios;
};

struct PowerSum {
    std::size_t points = 0;
    double power = 0;
};

PowerSum PowerOf(const Signal& signal) {
    PowerSum sum;
    ForBlocks(
        signal,
        [&](std::size_t, std::span<const double> i, std::span<const double> q) {
            // Blocks are added up by themselves, which also keeps the digits of long signals.
            double block = 0;
            for (std::size_t k = 0; k < i.size(); ++k) {
                block += i[k] * i[k] + q[k] * q[k];
            }
            sum.power += block;
            sum.points += i.size();
        },
        BlocksOfDiagrams);
    return sum;
}

}  // namespace

Ccdf CcdfOf(const Signal& signal) {
    const PowerSum sum = PowerOf(signal);
    if (!(sum.power > 0)) {
        return {};
    }
    const StepFinder steps;
    // The counts of the points that exceed a step, but not the next one.
    std::vector<std::uint64_t> counts(MostCcdfSteps, 0);
    const double factor = static_cast<double>(sum.points) / sum.power;
    ForBlocks(
        signal,
        [&](std::size_t, std::span<const double> i, std::span<const double> q) {
            for (std::size_t k = 0; k < i.size(); ++k) {
                const double ratio = (i[k] * i[k] + q[k] * q[k]) * factor;
                if (ratio > 1) {
                    ++counts[steps.LastBelow(ratio)];
                }
            }
        },
        BlocksOfDiagrams);
    Ccdf ccdf;
    std::uint64_t above = 0;
    for (std::size_t step = MostCcdfSteps; step-- > 0;) {
        above += counts[step];
        ccdf.shares.push_back(static_cast<double>(above) / static_cast<double>(sum.points));
    }
    std::ranges::reverse(ccdf.shares);
    // One step behind the last that is exceeded.
    const auto end = std::ranges::find(ccdf.shares, 0.0);
    ccdf.shares.erase(end, ccdf.shares.end());
    ccdf.shares.push_back(0);
    return ccdf;
}

}  // namespace krv::analysis
