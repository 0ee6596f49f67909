#include "formats/TimeSteps.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "common/Numbers.h"

namespace krv::formats {
namespace {

// Of the mean step. Times are often written with few digits.
constexpr double TolerableStep = 0.05;

}  // namespace

void TimeSteps::Add(std::span<const double> values, std::size_t stride, std::size_t count) {
    for (std::size_t k = 0; k < count; ++k, ++m_count) {
        const double time = values[k * stride];
        if (m_count == 0) {
            m_first = time;
            m_smallest = std::numeric_limits<double>::infinity();
            m_largest = -m_smallest;
        } else {
            const double step = time - m_last;
            m_smallest = std::min(m_smallest, step);
            if (step > m_largest) {
                m_largest = step;
                m_largestAt = m_count;
            }
        }
        m_last = time;
    }
}

double TimeSteps::Mean() const {
    return (m_last - m_first) / static_cast<double>(m_count - 1);
}

std::optional<double> TimeSteps::Rate(double unit) const {
    if (m_count < 2 || !(Mean() > 0) || unit == 0) {
        return std::nullopt;
    }
    // Without the digits that only the times' binary form brings along.
    const double rate = 1 / (Mean() * unit);
    const double rounded = RoundHalfEven(rate);
    return std::abs(rate - rounded) < 1e-9 * rate ? rounded : rate;
}

std::string TimeSteps::Unevenness(double unit) const {
    if (m_count < 3 || m_largest - m_smallest <= TolerableStep * Mean()) {
        return {};
    }
    return "The steps of time are uneven: from " + NumberToText(m_smallest * unit) + " s to " +
           NumberToText(m_largest * unit) + " s, in front of point " + std::to_string(m_largestAt) +
           ". The sample rate is that of their mean.";
}

}  // namespace krv::formats
