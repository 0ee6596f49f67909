#include "analysis/Measures.h"

#include <algorithm>
#include <bitset>
#include <cmath>
#include <complex>
#include <cstdint>
#include <memory>
#include <numbers>
#include <span>

namespace krv::analysis {
namespace {

constexpr double LargestCodeScale = 32768;

// Sums and extremes of all points, taken block by block.
class Sums {
 public:
    explicit Sums(const Signal& signal)
        : m_signal(signal),
          m_countsCodes(signal.fullScaleCode > 0),
          m_upperLimit(m_countsCodes ? 1 - 1 / signal.fullScaleCode : 1),
          m_hasSmallCodes(m_countsCodes && signal.fullScaleCode <= LargestCodeScale) {
        if (m_hasSmallCodes) {
            m_seen = std::make_unique<SeenCodes>();
        }
    }

    void Take(std::span<const double> i, std::span<const double> q) {
        for (std::size_t k = 0; k < i.size(); ++k) {
            TakePoint({i[k], q[k]});
        }
        if (m_countsCodes) {
            TakeCodes(i);
            if (m_signal.hasQ) {
                TakeCodes(q);
            }
        }
    }

    [[nodiscard]] Measures Result() const {
        const auto count = static_cast<double>(m_signal.points);
        Measures measures;
        measures.peak = std::sqrt(m_peakPower);
        measures.peakValue = std::max(m_largest, -m_smallest);
        const double power = (m_iPower + m_qPower) / count;
        measures.rms = std::sqrt(power);
        if (power > 0) {
            measures.papr = 10 * std::log10(m_peakPower / power);
        }
        measures.meanI = m_iSum / count;
        measures.meanQ = m_qSum / count;
        measures.clipped = m_clipped;
        measures.longestClip = m_longestClip;
        measures.wrapStep = std::abs(m_first - m_last);
        measures.largestStep = std::sqrt(m_largestStep);
        TakeBalance(measures, count);
        if (m_countsCodes) {
            measures.codes = Codes();
        }
        return measures;
    }

 private:
    using SeenCodes = std::bitset<65536>;

    void TakePoint(std::complex<double> x) {
        m_iSum += x.real();
        m_qSum += x.imag();
        m_iPower += x.real() * x.real();
        m_qPower += x.imag() * x.imag();
        m_product += x.real() * x.imag();
        m_peakPower = std::max(m_peakPower, std::norm(x));
        const double largest = std::max(x.real(), x.imag());
        const double smallest = std::min(x.real(), x.imag());
        m_largest = std::max(m_largest, largest);
        m_smallest = std::min(m_smallest, smallest);
        TakeClip(largest >= m_upperLimit || smallest <= -1);
        if (m_isBegun) {
            m_largestStep = std::max(m_largestStep, std::norm(x - m_last));
        } else {
            m_first = x;
            m_isBegun = true;
        }
        m_last = x;
    }

    void TakeClip(bool isClipped) {
        m_clipped += isClipped ? 1 : 0;
        m_clip = isClipped ? m_clip + 1 : 0;
        m_longestClip = std::max(m_longestClip, m_clip);
    }

    void TakeCodes(std::span<const double> values) {
        for (const double value : values) {
            const double code = value * m_signal.fullScaleCode;
            m_largestCode = std::max(m_largestCode, code);
            m_smallestCode = std::min(m_smallestCode, code);
            if (m_hasSmallCodes) {
                m_seen->set(static_cast<std::uint16_t>(static_cast<std::int32_t>(code)));
            }
        }
    }

    [[nodiscard]] CodesUsed Codes() const {
        CodesUsed codes;
        codes.smallest = static_cast<std::int32_t>(m_smallestCode + m_signal.zeroCode);
        codes.largest = static_cast<std::int32_t>(m_largestCode + m_signal.zeroCode);
        if (m_hasSmallCodes) {
            codes.different = m_seen->count();
        }
        return codes;
    }

    void TakeBalance(Measures& measures, double count) const {
        const double i = m_iPower / count - measures.meanI * measures.meanI;
        const double q = m_qPower / count - measures.meanQ * measures.meanQ;
        // What rounding leaves of a constant is no signal.
        const double least = 1e-15 * (m_iPower + m_qPower) / count;
        if (!m_signal.hasQ || !(i > least && q > least)) {
            return;
        }
        const double product = m_product / count - measures.meanI * measures.meanQ;
        measures.gainImbalance = 10 * std::log10(i / q);
        measures.quadratureError =
            std::asin(std::clamp(product / std::sqrt(i * q), -1.0, 1.0)) * 180 / std::numbers::pi;
    }

    const Signal& m_signal;
    bool m_countsCodes;
    double m_upperLimit;
    bool m_hasSmallCodes;
    std::unique_ptr<SeenCodes> m_seen;
    bool m_isBegun = false;
    std::complex<double> m_first;
    std::complex<double> m_last;
    double m_iSum = 0;
    double m_qSum = 0;
    double m_iPower = 0;
    double m_qPower = 0;
    double m_product = 0;
    double m_peakPower = 0;
    double m_largest = 0;
    double m_smallest = 0;
    // Squared.
    double m_largestStep = 0;
    double m_largestCode = -1e300;
    double m_smallestCode = 1e300;
    std::size_t m_clipped = 0;
    std::size_t m_clip = 0;
    std::size_t m_longestClip = 0;
};

}  // namespace

Measures Measure(const Signal& signal) {
    Sums sums(signal);
    ForBlocks(signal, [&](std::size_t, std::span<const double> i, std::span<const double> q) {
        sums.Take(i, q);
    });
    return sums.Result();
}

}  // namespace krv::analysis
