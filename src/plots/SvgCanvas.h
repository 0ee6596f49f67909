// SvgCanvas: a sheet as an SVG document.
#pragma once

#include <string>

#include "plots/Canvas.h"
#include "plots/Palette.h"

namespace krv::plots {

class SvgCanvas final : public Canvas {
 public:
    SvgCanvas(int width, int height, Theme theme);

    void Line(std::span<const Spot> spots, Ink ink) override;
    void Fill(Spot corner, Spot opposite, Ink ink) override;
    void Write(Spot at, std::string_view text, Anchor anchor) override;

    // The document; the canvas is then done with.
    [[nodiscard]] std::string Take();

 private:
    [[nodiscard]] std::string ColorOf(Ink ink) const;

    Palette m_palette;
    std::string m_text;
};

}  // namespace krv::plots
