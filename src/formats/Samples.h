// Samples: the values of one channel, in two bytes each where they are codes of up to 16 bits and
// as doubles otherwise. Move-only; one thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <variant>

#include "common/memory/SampleBuffer.h"

namespace krv::formats {

class Samples {
 public:
    Samples() = default;
    // Room for so many values, which takes memory only as they come. Throws std::bad_alloc.
    Samples(std::size_t capacity, bool areCodes);
    explicit Samples(SampleBuffer<double> values) : m_values(std::move(values)) {}

    // Every `stride`-th of the values, from the first on, until there are `count`; codes are
    // integers from -32768 to 32767.
    void Append(std::span<const double> values, std::size_t stride, std::size_t count);

    [[nodiscard]] std::size_t Size() const noexcept;
    [[nodiscard]] double operator[](std::size_t at) const noexcept;
    // Copies the values from `first` on into the span, times the factor.
    void CopyTo(std::size_t first, std::span<double> values, double factor = 1) const noexcept;

 private:
    std::variant<SampleBuffer<double>, SampleBuffer<std::int16_t>> m_values;
};

}  // namespace krv::formats
