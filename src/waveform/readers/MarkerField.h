// The numbers that describe a marker pulse, as the user enters them.
#pragma once

#include <cstdint>
#include <string_view>

#include "common/Numbers.h"

namespace krv::waveform {

// The text of a field as a whole number of points, 0 to 32767. Throws Error 13 when it is not
// numeric, 6 when it is outside; the description names the field and the limit.
[[nodiscard]] std::int16_t MarkerFieldValue(std::string_view field, std::string_view text,
                                            NumberFormat format);

}  // namespace krv::waveform
