#include "waveform/data/Codes.h"

namespace krv::waveform {

CodeRange RangeOf(std::span<const std::int16_t> codes) noexcept {
    CodeRange range;
    for (const std::int16_t code : codes) {
        range.smallest = std::min(range.smallest, code);
        range.largest = std::max(range.largest, code);
    }
    return range;
}

}  // namespace krv::waveform
