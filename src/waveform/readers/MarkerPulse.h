// The marker pulse that stands in for a marker file, and the fields that describe it.
#pragma once

#include <cstdint>
#include <string_view>

#include "common/Numbers.h"
#include "waveform/data/Channel.h"

namespace krv::waveform {

// The text of a field as a whole number of points, 0 to 32767. Throws Error 13 when it is not
// numeric, 6 when it is outside; the description names the field and the limit.
[[nodiscard]] std::int16_t MarkerFieldValue(std::string_view field, std::string_view text,
                                            NumberFormat format);

// Values for the indexes 0 to `count`, one more than the points they go with: 1 at the indexes
// start to start + length - 1, 0 elsewhere. The start counts points from 0. A pulse that reaches
// beyond the array is cut there: that it is too long is for the checks to warn about. Throws Error
// 9 for a negative start, length or count, and std::bad_alloc.
[[nodiscard]] InternalValues BuildMarkerPulse(std::int16_t start, std::int16_t length,
                                              std::int32_t count);

}  // namespace krv::waveform
