// Quantities with units, as a command line and a terminal have them.
#pragma once

#include <string>
#include <string_view>

#include "common/Numbers.h"

namespace krv::cli {

// Hertz, from a number with or without a unit, e.g. "2.4GHz", "2.4 ghz", "2400000000". Throws
// UsageError, which names the option.
[[nodiscard]] double ParseFrequency(std::string_view option, std::string_view text,
                                    NumberFormat format);
// dBm, from e.g. "-10" or "-10 dBm". Throws UsageError likewise.
[[nodiscard]] double ParseLevel(std::string_view option, std::string_view text,
                                NumberFormat format);

// In the largest unit that leaves at least 1, e.g. "2.4 GHz".
[[nodiscard]] std::string FrequencyText(double hertz);

}  // namespace krv::cli
