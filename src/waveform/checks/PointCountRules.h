// The point-count rules: what the instrument's model demands of the number of points.
#pragma once

#include <cstdint>
#include <string>

namespace krv::waveform {

struct PointCounts {
    bool newModel = false;
    // A separate Q source takes part; without one qCount is not looked at.
    bool useQ = false;
    bool fromFiles = true;
    bool scalable = true;
    std::int32_t iCount = 0;
    std::int32_t qCount = 0;
    // The markers come from a start (counted from 0) and a length, not from a file.
    bool markerPulse = false;
    std::int32_t markerStart = 0;
    std::int32_t markerLength = 0;
};

// Whether the rules look at the marker's start and length.
[[nodiscard]] bool RulesNeedMarkerPulse(const PointCounts& counts) noexcept;

struct PointCountReport {
    // The sentences of the rules that fired, in their order, joined by line breaks and with the
    // counts in front where the data comes from files; empty when no rule fired.
    std::string text;
    // A rule that can't be overridden fired; false leaves the decision to the user.
    bool refused = false;
};

[[nodiscard]] PointCountReport CheckPointCounts(const PointCounts& counts);

}  // namespace krv::waveform
