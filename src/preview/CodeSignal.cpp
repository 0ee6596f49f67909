#include "preview/CodeSignal.h"

#include <algorithm>
#include <cstddef>
#include <span>

#include "waveform/data/ModelFamily.h"

namespace krv::preview {
namespace {

using waveform::DacCodes;
using waveform::SharedCodes;

constexpr double NewFullScale = 32768;
constexpr double OldFullScale = 8192;

// Codes as shares of full scale.
struct CodeScale {
    double zero = 0;
    double factor = 1;

    [[nodiscard]] double ShareOf(std::int16_t code) const { return (code - zero) * factor; }
};

// Every `stride`-th code from a first one on; what is missing is zero.
void CopyCodes(std::span<const std::int16_t> codes, std::size_t first, std::size_t stride,
               CodeScale scale, std::span<double> values) {
    const std::size_t there = codes.size() > first ? (codes.size() - first - 1) / stride + 1 : 0;
    const std::size_t count = std::min(there, values.size());
    for (std::size_t k = 0; k < count; ++k) {
        values[k] = scale.ShareOf(codes[first + k * stride]);
    }
    std::fill(values.begin() + static_cast<std::ptrdiff_t>(count), values.end(), 0.0);
}

bool IsInterleaved(const DacCodes& codes) {
    return codes.isSentInterleaved && codes.q.Empty();
}

}  // namespace

analysis::Signal SignalOfCodes(const DacCodes& codes) {
    const bool isInterleaved = IsInterleaved(codes);
    const double fullScale = codes.isNewModel ? NewFullScale : OldFullScale;
    analysis::Signal signal;
    signal.points = isInterleaved ? codes.i.Size() / 2 : std::max(codes.i.Size(), codes.q.Size());
    signal.hasQ = isInterleaved || !codes.q.Empty();
    signal.fullScaleCode = fullScale;
    signal.zeroCode = waveform::ZeroCode(codes.isNewModel);
    const CodeScale scale{signal.zeroCode, 1 / fullScale};
    signal.copy = [i = codes.i, q = isInterleaved ? codes.i : codes.q, isInterleaved, scale](
                      std::size_t first, std::span<double> iValues, std::span<double> qValues) {
        const std::size_t stride = isInterleaved ? 2 : 1;
        CopyCodes(i.Span(), stride * first, stride, scale, iValues);
        CopyCodes(q.Span(), stride * first + (isInterleaved ? 1 : 0), stride, scale, qValues);
    };
    return signal;
}

std::vector<std::uint8_t> MarkersOfCodes(const DacCodes& codes, std::size_t points) {
    const std::span<const std::int16_t> markers = codes.markers.Span();
    if (!codes.isSentInterleaved ||
        std::ranges::none_of(markers, [](std::int16_t code) { return code != 0; })) {
        return {};
    }
    std::vector<std::uint8_t> bits(points, 0);
    const std::size_t count = std::min(points, markers.size());
    std::transform(markers.begin(), markers.begin() + static_cast<std::ptrdiff_t>(count),
                   bits.begin(), [](std::int16_t code) { return static_cast<std::uint8_t>(code); });
    return bits;
}

}  // namespace krv::preview
