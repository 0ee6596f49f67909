#include "plots/Panel.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "common/Numbers.h"

namespace krv::plots {
namespace {

// From the frame to the middle of a label.
constexpr double LabelGap = 14;
constexpr double AxisLabelGap = 34;
constexpr double TitleGap = 14;
// What a character of a label takes, and what there is for one behind the frame.
constexpr double CharacterWidth = 12;
constexpr double RoomBehind = 28;
// A tick takes so much room.
constexpr double TickWidth = 70;
constexpr double TickHeight = 30;

std::string TickText(double value) {
    return NumberToText(value == 0 ? 0 : value);
}

}  // namespace

std::vector<double> TicksOf(const Axis& axis, int most) {
    const double range = axis.to - axis.from;
    const double least = range / std::max(most, 1);
    const double power = std::pow(10, std::floor(std::log10(least)));
    double step = 10 * power;
    for (const double factor : {5.0, 2.0, 1.0}) {
        step = factor * power >= least ? factor * power : step;
    }
    std::vector<double> ticks;
    const double end = axis.to + 1e-9 * range;
    for (double index = std::ceil(axis.from / step - 1e-9); index * step <= end; ++index) {
        // Without what the multiplication leaves behind the digits.
        ticks.push_back(std::abs(index) < 0.5 ? 0 : index * step);
    }
    return ticks;
}

Panel::Panel(Canvas& canvas, Spot leftTop, Spot rightBottom, Axis x, Axis y)
    : m_canvas(canvas),
      m_leftTop(leftTop),
      m_rightBottom(rightBottom),
      m_x(std::move(x)),
      m_y(std::move(y)) {}

Spot Panel::Place(Spot value) const {
    const double x = std::clamp((value.x - m_x.from) / (m_x.to - m_x.from), 0.0, 1.0);
    const double y = std::clamp((value.y - m_y.from) / (m_y.to - m_y.from), 0.0, 1.0);
    return {m_leftTop.x + x * (m_rightBottom.x - m_leftTop.x),
            m_rightBottom.y - y * (m_rightBottom.y - m_leftTop.y)};
}

void Panel::DrawFrame(std::string_view title, bool hasPowersOfTen) {
    DrawXTicks();
    DrawYTicks(hasPowersOfTen);
    const std::array<Spot, 5> frame{{m_leftTop,
                                     {m_rightBottom.x, m_leftTop.y},
                                     m_rightBottom,
                                     {m_leftTop.x, m_rightBottom.y},
                                     m_leftTop}};
    m_canvas.Line(frame, Ink::Frame);
    m_canvas.Write({m_leftTop.x, m_leftTop.y - TitleGap}, title, Anchor::Left);
    m_canvas.Write({(m_leftTop.x + m_rightBottom.x) / 2, m_rightBottom.y + AxisLabelGap}, m_x.label,
                   Anchor::Centre);
}

// Fewer where their texts are wide.
std::vector<double> Panel::XTicks() const {
    std::vector<double> ticks = TicksOf(m_x, static_cast<int>(Width() / TickWidth));
    std::size_t widest = 0;
    for (const double tick : ticks) {
        widest = std::max(widest, TickText(tick).size());
    }
    const double width = CharacterWidth * static_cast<double>(widest + 1);
    return width > TickWidth ? TicksOf(m_x, static_cast<int>(Width() / width)) : ticks;
}

void Panel::DrawXTicks() {
    for (const double tick : XTicks()) {
        const double x = Place({tick, m_y.from}).x;
        const std::array<Spot, 2> line{{{x, m_leftTop.y}, {x, m_rightBottom.y}}};
        m_canvas.Line(line, Ink::Grid);
        const std::string text = TickText(tick);
        const double y = m_rightBottom.y + LabelGap;
        const double end = m_rightBottom.x + RoomBehind;
        if (x + CharacterWidth * static_cast<double>(text.size()) / 2 > end) {
            m_canvas.Write({end, y}, text, Anchor::Right);
        } else {
            m_canvas.Write({x, y}, text, Anchor::Centre);
        }
    }
}

void Panel::DrawYTicks(bool hasPowersOfTen) {
    const double height = m_rightBottom.y - m_leftTop.y;
    for (const double tick : TicksOf(m_y, static_cast<int>(height / TickHeight))) {
        const double y = Place({m_x.from, tick}).y;
        const std::array<Spot, 2> line{{{m_leftTop.x, y}, {m_rightBottom.x, y}}};
        m_canvas.Line(line, Ink::Grid);
        const std::string text = TickText(hasPowersOfTen ? std::pow(10, tick) : tick);
        m_canvas.Write({m_leftTop.x - LabelGap / 2, y}, text, Anchor::Right);
    }
}

void Panel::Line(const std::vector<Spot>& points, Ink ink) {
    std::vector<Spot> spots;
    spots.reserve(points.size());
    for (const Spot& point : points) {
        spots.push_back(Place(point));
    }
    m_canvas.Line(spots, ink);
}

void Panel::Fill(Spot corner, Spot opposite, Ink ink) {
    m_canvas.Fill(Place(corner), Place(opposite), ink);
}

}  // namespace krv::plots
