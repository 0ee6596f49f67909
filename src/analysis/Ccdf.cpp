#include "analysis/Ccdf.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <span>

namespace krv::analysis {
namespace {

// A single point among 2^31 is 93 dB above the mean.
constexpr std::size_t MostCcdfSteps = 1000;

}  // namespace

Ccdf CcdfOf(const Signal& signal, double meanPower) {
    if (!(meanPower > 0)) {
        return {};
    }
    // The counts of the points that exceed a step, but not the next one.
    std::vector<std::uint64_t> counts(MostCcdfSteps, 0);
    ForBlocks(signal, [&](std::size_t, std::span<const double> i, std::span<const double> q) {
        for (std::size_t k = 0; k < i.size(); ++k) {
            const double ratio = (i[k] * i[k] + q[k] * q[k]) / meanPower;
            if (ratio > 1) {
                const double step = std::ceil(10 * std::log10(ratio) / Ccdf::StepDb) - 1;
                const auto at = static_cast<std::size_t>(std::max(step, 0.0));
                ++counts[std::min(at, MostCcdfSteps - 1)];
            }
        }
    });
    Ccdf ccdf;
    std::uint64_t above = 0;
    for (std::size_t step = MostCcdfSteps; step-- > 0;) {
        above += counts[step];
        ccdf.shares.push_back(static_cast<double>(above) / static_cast<double>(signal.points));
    }
    std::ranges::reverse(ccdf.shares);
    // One step behind the last that is exceeded.
    const auto end = std::ranges::find(ccdf.shares, 0.0);
    ccdf.shares.erase(end, ccdf.shares.end());
    ccdf.shares.push_back(0);
    return ccdf;
}

}  // namespace krv::analysis
