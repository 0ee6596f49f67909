#include "formats/Samples.h"

#include <algorithm>

namespace krv::formats {

Samples::Samples(std::size_t capacity, bool areCodes) {
    if (areCodes) {
        m_values = SampleBuffer<std::int16_t>(capacity);
    } else {
        m_values = SampleBuffer<double>(capacity);
    }
}

void Samples::Append(std::span<const double> values, std::size_t stride, std::size_t count) {
    std::visit(
        [&]<class T>(SampleBuffer<T>& buffer) {
            const std::size_t done = buffer.Size();
            buffer.Resize(done + count);
            T* const to = buffer.Data() + done;
            for (std::size_t k = 0; k < count; ++k) {
                to[k] = static_cast<T>(values[k * stride]);
            }
        },
        m_values);
}

std::size_t Samples::Size() const noexcept {
    return std::visit([](const auto& buffer) { return buffer.Size(); }, m_values);
}

double Samples::operator[](std::size_t at) const noexcept {
    return std::visit([&](const auto& buffer) { return static_cast<double>(buffer[at]); },
                      m_values);
}

void Samples::CopyTo(std::size_t first, std::span<double> values, double factor) const noexcept {
    std::visit(
        [&](const auto& buffer) {
            const auto* const from = buffer.Data() + first;
            double* const to = values.data();
            for (std::size_t k = 0; k < values.size(); ++k) {
                to[k] = static_cast<double>(from[k]) * factor;
            }
        },
        m_values);
}

}  // namespace krv::formats
