// WaveformView: codes as they are looked at in a window: their figures, their picture, and which
// part of the time the picture shows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "analysis/Figures.h"
#include "analysis/Signal.h"
#include "plots/Palette.h"
#include "plots/PlotSheet.h"
#include "suite/picture/Picture.h"
#include "waveform/data/DacCodes.h"

namespace krv::preview {

// In pixels, with so many of them a unit of the sheet.
struct PictureSize {
    int width = 0;
    int height = 0;
    double scale = 1;
};

class WaveformView {
 public:
    // The codes have a point at least.
    explicit WaveformView(const waveform::DacCodes& codes);

    // "points 250 to 749 of 1000".
    [[nodiscard]] std::string RangeText() const;
    // See FiguresAsText.
    [[nodiscard]] std::string Figures() const;
    [[nodiscard]] suite::picture::Picture Draw(PictureSize size, plots::Theme theme) const;

    // Where a pixel lies on the time axis of a picture: 0 at its beginning, 1 at its end.
    [[nodiscard]] static double TimeShareAt(PictureSize size, int x) noexcept;

    // Shows 1 / factor times as many points; what lies at the share of the time axis stays there.
    void Zoom(double factor, double share);
    // Moves on by a share of what is shown; back for a negative one.
    void Move(double share);
    void ShowAll();

 private:
    [[nodiscard]] plots::SheetView SheetFor(PictureSize size) const;
    void Show(double first, double points);

    analysis::Signal m_signal;
    std::vector<std::uint8_t> m_markers;
    plots::SheetContent m_content;
    analysis::Figures m_figures;
    std::size_t m_first = 0;
    std::size_t m_points;
};

}  // namespace krv::preview
