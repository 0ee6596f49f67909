// The marker pulse that stands in for a marker file.
#pragma once

#include <cstdint>

#include "common/memory/SampleBuffer.h"

namespace krv::waveform {

// Makes `markers` the indexes 0 to `count`, one more than the points it goes with: 1.0 at the
// indexes start to start + length - 1, 0.0 elsewhere. The start counts points from 0. A pulse that
// reaches beyond the array is cut there: that it is too long is for the checks to warn about.
// Throws Error 9 for a negative start, length or count, which leaves the array as it was, and
// std::bad_alloc, which leaves it empty.
void BuildMarkerPulse(SampleBuffer<double>& markers, std::int16_t start, std::int16_t length,
                      std::int32_t count);

}  // namespace krv::waveform
