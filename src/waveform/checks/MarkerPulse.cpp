#include "waveform/checks/MarkerPulse.h"

#include <algorithm>
#include <cstddef>
#include <span>

#include "common/Error.h"

namespace krv::waveform {

void BuildMarkerPulse(SampleBuffer<double>& markers, std::int16_t start, std::int16_t length,
                      std::int32_t count) {
    if (start < 0 || length < 0 || count < 0) {
        throw Error(ErrorNumber::SubscriptOutOfRange);
    }
    const std::size_t size = static_cast<std::size_t>(count) + 1;
    // Fresh pages read as zero, so only the pulse itself is written.
    markers.Reset(size);
    markers.Resize(size);
    const std::size_t first = std::min(static_cast<std::size_t>(start), size);
    const std::size_t pulse = std::min(static_cast<std::size_t>(length), size - first);
    std::ranges::fill(markers.Span().subspan(first, pulse), 1.0);
}

}  // namespace krv::waveform
