// What is done to samples on request. Resampling takes them for a waveform that is played again and
// again: its end goes over into its beginning.
#pragma once

#include <cstddef>

#include "formats/Samples.h"

namespace krv::formats {

// So many points in the time of the waveform's own, by band-limited interpolation: tones up to 0.45
// of the lower of both rates stay as they are within -80 dB. Throws std::bad_alloc.
[[nodiscard]] Samples Resampled(const Samples& samples, std::size_t points);

// Every value times the factor.
[[nodiscard]] Samples Multiplied(const Samples& samples, double factor);

}  // namespace krv::formats
