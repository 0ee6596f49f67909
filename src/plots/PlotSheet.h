// PlotSheet: a look at a waveform: I and Q over time with the markers, spectrum, constellation with
// trajectory, and CCDF.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "analysis/Ccdf.h"
#include "analysis/Signal.h"
#include "analysis/Spectrum.h"
#include "plots/Canvas.h"

namespace krv::plots {

struct PlotSubject {
    const analysis::Signal& signal;
    // One a point, or none.
    std::span<const std::uint8_t> markers;
    std::string title;
};

// What a sheet shows of the whole waveform: found once, however often the sheet is drawn.
struct SheetContent {
    analysis::Spectrum spectrum;
    analysis::Ccdf ccdf;
    // Squares of cells from -1 to 1, row by row from the largest Q: those that points lie in, and
    // those that the way from point to point crosses.
    std::vector<std::uint8_t> points;
    std::vector<std::uint8_t> path;
};
[[nodiscard]] SheetContent ContentOf(const analysis::Signal& signal);

struct SheetView {
    static constexpr int UsualWidth = 1200;
    static constexpr int UsualHeight = 800;

    // In units of the sheet.
    int width = UsualWidth;
    int height = UsualHeight;
    // What is shown over time.
    std::size_t firstPoint = 0;
    std::size_t points = 0;

    // All points.
    [[nodiscard]] static SheetView Of(const analysis::Signal& signal) {
        return {UsualWidth, UsualHeight, 0, signal.points};
    }
};

void DrawSheet(const PlotSubject& subject, const SheetContent& content, const SheetView& view,
               Canvas& canvas);

// Where a place on the sheet lies on the time axis: 0 at its beginning, 1 at its end.
[[nodiscard]] double TimeShareAt(const SheetView& view, double x) noexcept;

// The same diagrams as text, so many characters wide; with Braille patterns, or with nothing but
// ASCII.
[[nodiscard]] std::string SheetAsText(const PlotSubject& subject, int width, bool hasBraille);

}  // namespace krv::plots
