#include "formats/SampleChanges.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>
#include <vector>

namespace krv::formats {
namespace {

// Zero crossings of the kernel on each side, of the lower rate; with the window's shape they make
// the 80 dB.
constexpr int Crossings = 48;
constexpr double KaiserShape = 8.5;
// Kernel values between two crossings; those between them are interpolated.
constexpr int Fineness = 512;

// The modified Bessel function of order zero, by its series.
double BesselI0(double x) {
    double sum = 1;
    double term = 1;
    for (int k = 1; term > 1e-17 * sum; ++k) {
        term *= x * x / (4.0 * k * k);
        sum += term;
    }
    return sum;
}

// A sinc within a Kaiser window, for distances from 0 to `Crossings`.
std::vector<double> Kernel() {
    std::vector<double> kernel;
    for (int k = 0; k <= Crossings * Fineness + 1; ++k) {
        const double x = static_cast<double>(k) / Fineness;
        const double inside = std::max(0.0, 1 - x * x / (Crossings * Crossings));
        const double window = BesselI0(KaiserShape * std::sqrt(inside)) / BesselI0(KaiserShape);
        const double sinc = k == 0 ? 1 : std::sin(std::numbers::pi * x) / (std::numbers::pi * x);
        kernel.push_back(sinc * window);
    }
    return kernel;
}

double KernelAt(const std::vector<double>& kernel, double distance) {
    const double place = distance * Fineness;
    const auto at = static_cast<std::size_t>(place);
    const double part = place - static_cast<double>(at);
    return kernel[at] + part * (kernel[at + 1] - kernel[at]);
}

}  // namespace

Samples Resampled(const Samples& samples, std::size_t points) {
    const std::size_t count = samples.Size();
    const double step = static_cast<double>(count) / static_cast<double>(points);
    // Going down, the kernel is stretched to the lower rate.
    const double stretch = std::max(1.0, step);
    const auto reach = static_cast<std::ptrdiff_t>(std::ceil(Crossings * stretch));
    const std::vector<double> kernel = Kernel();
    SampleBuffer<double> result(points);
    result.Resize(points);
    const auto length = static_cast<std::ptrdiff_t>(count);
    for (std::size_t point = 0; point < points; ++point) {
        const double place = static_cast<double>(point) * step;
        const auto middle = static_cast<std::ptrdiff_t>(place);
        double sum = 0;
        for (std::ptrdiff_t at = middle - reach + 1; at <= middle + reach; ++at) {
            const double distance = std::abs(place - static_cast<double>(at)) / stretch;
            if (distance < Crossings) {
                const std::ptrdiff_t wrapped = (at % length + length) % length;
                sum += samples[static_cast<std::size_t>(wrapped)] * KernelAt(kernel, distance);
            }
        }
        result[point] = sum / stretch;
    }
    return Samples(std::move(result));
}

Samples Multiplied(const Samples& samples, double factor) {
    SampleBuffer<double> result(samples.Size());
    result.Resize(samples.Size());
    samples.CopyTo(0, result.Span());
    for (double& value : result.Span()) {
        value *= factor;
    }
    return Samples(std::move(result));
}

}  // namespace krv::formats
