// CodeSignal: codes as the instrument takes them, as a signal that is measured and drawn.
#pragma once

#include <cstdint>
#include <vector>

#include "analysis/Signal.h"
#include "waveform/data/DacCodes.h"

namespace krv::preview {

// The points that the codes make: I and Q of each, shares of full scale. Where one channel ends
// before the other its zero code stands in, as in the instrument. It shares the codes' memory.
[[nodiscard]] analysis::Signal SignalOfCodes(const waveform::DacCodes& codes);

// The marker bits of each of so many points; none where no marker is set or sent.
[[nodiscard]] std::vector<std::uint8_t> MarkersOfCodes(const waveform::DacCodes& codes,
                                                       std::size_t points);

}  // namespace krv::preview
