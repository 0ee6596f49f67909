// PlotSheet: a look at a waveform: I and Q over time with the markers, spectrum, constellation and
// CCDF.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "analysis/Signal.h"
#include "plots/Canvas.h"

namespace krv::plots {

// In units of the sheet.
namespace SheetSize {
inline constexpr int Width = 1200;
inline constexpr int Height = 800;
}  // namespace SheetSize

struct PlotSubject {
    const analysis::Signal& signal;
    // One a point, or none.
    std::span<const std::uint8_t> markers;
    std::string title;
};

void DrawSheet(const PlotSubject& subject, Canvas& canvas);

// I and Q over time and the spectrum as text, so many characters wide; with Braille patterns, or
// with nothing but ASCII.
[[nodiscard]] std::string SheetAsText(const PlotSubject& subject, int width, bool hasBraille);

}  // namespace krv::plots
