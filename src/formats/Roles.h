// Roles: which columns of a recording are I, Q, markers and time.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "formats/Recording.h"

namespace krv::formats {

inline constexpr double LargestMarker = 15;

struct Roles {
    std::size_t i = 0;
    std::optional<std::size_t> q;
    std::optional<std::size_t> markers;
    std::optional<std::size_t> time;
    // Of the time column, in seconds; 0 where it only counts the points, or has an unknown unit.
    double timeUnit = 1;
    // As the time column's heading has it, where it isn't known.
    std::string unknownUnit;
    // A sentence on columns that are none of these though the user hasn't chosen; empty for none.
    std::string leftOut;
};

// The columns for I, Q and markers as the user has named them, by name or by number from 1; an
// empty name leaves a column out. With no names the recording's own tell, its first frames where
// they have none. Throws Error 321 in the file's name where there is no such column, or where the
// user has to choose.
[[nodiscard]] Roles FindRoles(const std::string& file, const About& about,
                              const std::vector<std::string>& named,
                              std::span<const double> firstFrames);

// "column 2 'I (V)'".
[[nodiscard]] std::string DescribeColumn(const About& about, std::size_t column);

}  // namespace krv::formats
