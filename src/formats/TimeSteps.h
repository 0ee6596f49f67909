// TimeSteps: the sample rate that the times of the points give, and how even their steps are.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace krv::formats {

class TimeSteps {
 public:
    // Every `stride`-th of the values, in the unit, which is in seconds.
    void Add(std::span<const double> values, std::size_t stride, std::size_t count);

    // In hertz, from the mean step; nothing for fewer than two points or times that don't rise.
    [[nodiscard]] std::optional<double> Rate(double unit) const;
    // A sentence where the steps differ by more than the digits of the times explain.
    [[nodiscard]] std::string Unevenness(double unit) const;

 private:
    [[nodiscard]] double Mean() const;

    std::uint64_t m_count = 0;
    double m_first = 0;
    double m_last = 0;
    double m_smallest = 0;
    double m_largest = 0;
    std::uint64_t m_largestAt = 0;
};

}  // namespace krv::formats
