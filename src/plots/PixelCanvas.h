// PixelCanvas: a sheet as pixels.
#pragma once

#include "plots/Canvas.h"
#include "plots/Palette.h"
#include "suite/picture/Picture.h"

namespace krv::plots {

class PixelCanvas final : public Canvas {
 public:
    // A picture of so many pixels; a unit of the sheet is `scale` pixels wide, and lines and dots
    // of letters are whole pixels.
    PixelCanvas(int width, int height, double scale, Theme theme);

    void Line(std::span<const Spot> spots, Ink ink) override;
    void Fill(Spot corner, Spot opposite, Ink ink) override;
    void Write(Spot at, std::string_view text, Anchor anchor) override;

    [[nodiscard]] const suite::picture::Picture& Pixels() const noexcept { return m_picture; }

 private:
    // What lies off the picture is cut off.
    void FillPixels(int left, int top, int right, int bottom, Ink ink);

    Palette m_palette;
    double m_scale;
    int m_lineWidth;
    int m_dot;
    suite::picture::Picture m_picture;
};

}  // namespace krv::plots
