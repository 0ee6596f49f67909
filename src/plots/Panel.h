// Panel: one diagram on a sheet: a frame with a title, axes with ticks, and values drawn to their
// scale.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "plots/Canvas.h"

namespace krv::plots {

struct Axis {
    double from = 0;
    double to = 1;
    std::string label;
};

// Round numbers on an axis: 1, 2 or 5 times a power of ten apart, at most `most` of them.
[[nodiscard]] std::vector<double> TicksOf(const Axis& axis, int most);

class Panel {
 public:
    // Between two corners of the sheet, its labels around it.
    Panel(Canvas& canvas, Spot leftTop, Spot rightBottom, Axis x, Axis y);

    // The frame, the grid and the labels; a logarithmic y axis holds exponents of ten.
    void DrawFrame(std::string_view title, bool hasPowersOfTen = false);
    // Through the points, each cut off at the frame.
    void Line(const std::vector<Spot>& points, Ink ink);
    // The area between two corners.
    void Fill(Spot corner, Spot opposite, Ink ink);

    [[nodiscard]] double Width() const noexcept { return m_rightBottom.x - m_leftTop.x; }

 private:
    [[nodiscard]] Spot Place(Spot value) const;
    [[nodiscard]] std::vector<double> XTicks() const;
    void DrawXTicks();
    void DrawYTicks(bool hasPowersOfTen);

    Canvas& m_canvas;
    Spot m_leftTop;
    Spot m_rightBottom;
    Axis m_x;
    Axis m_y;
};

}  // namespace krv::plots
