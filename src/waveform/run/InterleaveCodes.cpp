#include "waveform/run/InterleaveCodes.h"

#include <algorithm>
#include <cstddef>

namespace krv {

SampleBuffer<std::int16_t> InterleaveCodes(std::span<const std::int16_t> iCodes,
                                           std::span<const std::int16_t> qCodes,
                                           std::int16_t zeroCode) {
    const std::size_t points = std::max(iCodes.size(), qCodes.size());
    const std::size_t pairs = std::min(iCodes.size(), qCodes.size());
    SampleBuffer<std::int16_t> interleaved(2 * points);
    interleaved.Resize(2 * points);
    std::int16_t* out = interleaved.Data();
    for (std::size_t point = 0; point < pairs; ++point) {
        out[2 * point] = iCodes[point];
        out[2 * point + 1] = qCodes[point];
    }
    for (std::size_t point = pairs; point < points; ++point) {
        out[2 * point] = point < iCodes.size() ? iCodes[point] : zeroCode;
        out[2 * point + 1] = point < qCodes.size() ? qCodes[point] : zeroCode;
    }
    return interleaved;
}

}  // namespace krv
