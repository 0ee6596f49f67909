// TimeUnits: the units of time that tables and oscilloscopes write.
#pragma once

#include <optional>
#include <string_view>

namespace krv::formats {

// In seconds; nothing for what is no unit of time. The name is in upper case, like "MS" or
// "SECOND".
[[nodiscard]] std::optional<double> TimeUnit(std::string_view name);

}  // namespace krv::formats
