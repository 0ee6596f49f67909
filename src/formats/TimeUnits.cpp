#include "formats/TimeUnits.h"

#include <algorithm>
#include <array>
#include <utility>

namespace krv::formats {

std::optional<double> TimeUnit(std::string_view name) {
    static constexpr std::array<std::pair<std::string_view, double>, 19> Units{{
        {"S", 1},
        {"SEC", 1},
        {"SECOND", 1},
        {"SECONDS", 1},
        {"MS", 1e-3},
        {"MSEC", 1e-3},
        {"MILLISECONDS", 1e-3},
        {"US", 1e-6},
        {"USEC", 1e-6},
        {"MICROSECONDS", 1e-6},
        {"\xC2\xB5S", 1e-6},
        {"\xCE\x9CS", 1e-6},
        {"\xB5S", 1e-6},
        {"NS", 1e-9},
        {"NSEC", 1e-9},
        {"NANOSECONDS", 1e-9},
        {"PS", 1e-12},
        {"PSEC", 1e-12},
        {"PICOSECONDS", 1e-12},
    }};
    const auto* const known =
        std::ranges::find(Units, name, &std::pair<std::string_view, double>::first);
    return known == Units.end() ? std::nullopt : std::optional(known->second);
}

}  // namespace krv::formats
