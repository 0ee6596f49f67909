// PixelCanvas: a sheet as pixels.
#pragma once

#include "plots/Canvas.h"
#include "plots/Palette.h"
#include "suite/picture/Picture.h"

namespace krv::plots {

class PixelCanvas final : public Canvas {
 public:
    // A unit of the sheet is `scale` pixels wide.
    PixelCanvas(int width, int height, int scale, Theme theme);

    void Line(std::span<const Spot> spots, Ink ink) override;
    void Fill(Spot corner, Spot opposite, Ink ink) override;
    void Write(Spot at, std::string_view text, Anchor anchor) override;

    [[nodiscard]] const suite::picture::Picture& Pixels() const noexcept { return m_picture; }

 private:
    // What lies off the picture is cut off.
    void FillPixels(int left, int top, int right, int bottom, Ink ink);

    Palette m_palette;
    int m_scale;
    suite::picture::Picture m_picture;
};

}  // namespace krv::plots
