#include "plots/PixelCanvas.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "suite/picture/DotFont.h"

namespace krv::plots {
namespace {

using suite::picture::Glyph::Advance;
using suite::picture::Glyph::Height;
using suite::picture::Glyph::Width;

// Dots of a letter are so many units wide, and its capitals so many dots high.
constexpr int DotUnits = 2;
constexpr int CapitalDots = 7;

}  // namespace

PixelCanvas::PixelCanvas(int width, int height, double scale, Theme theme)
    : m_palette(PaletteOf(theme)),
      m_scale(scale),
      m_lineWidth(std::max(1, static_cast<int>(std::lround(scale)))),
      m_dot(std::max(1, static_cast<int>(std::lround(DotUnits * scale)))),
      m_picture{width, height, {}} {
    m_picture.pixels.assign(
        static_cast<std::size_t>(m_picture.width) * static_cast<std::size_t>(m_picture.height),
        m_palette.at(static_cast<std::size_t>(Ink::Background)));
}

void PixelCanvas::FillPixels(int left, int top, int right, int bottom, Ink ink) {
    left = std::clamp(left, 0, m_picture.width);
    right = std::clamp(right, left, m_picture.width);
    bottom = std::min(bottom, m_picture.height);
    for (int y = std::max(top, 0); y < bottom; ++y) {
        std::fill(m_picture.Row(y) + left, m_picture.Row(y) + right,
                  m_palette.at(static_cast<std::size_t>(ink)));
    }
}

void PixelCanvas::Fill(Spot corner, Spot opposite, Ink ink) {
    const auto pixel = [this](double place) {
        return static_cast<int>(std::lround(place * m_scale));
    };
    const int left = pixel(std::min(corner.x, opposite.x));
    const int top = pixel(std::min(corner.y, opposite.y));
    // However thin it is, it shows.
    FillPixels(left, top, std::max(pixel(std::max(corner.x, opposite.x)), left + 1),
               std::max(pixel(std::max(corner.y, opposite.y)), top + 1), ink);
}

void PixelCanvas::Line(std::span<const Spot> spots, Ink ink) {
    for (std::size_t k = 1; k < spots.size(); ++k) {
        const double dx = (spots[k].x - spots[k - 1].x) * m_scale;
        const double dy = (spots[k].y - spots[k - 1].y) * m_scale;
        const int steps = std::max(1, static_cast<int>(std::max(std::abs(dx), std::abs(dy))));
        for (int step = 0; step <= steps; ++step) {
            const int x = static_cast<int>(spots[k - 1].x * m_scale + dx * step / steps);
            const int y = static_cast<int>(spots[k - 1].y * m_scale + dy * step / steps);
            FillPixels(x, y, x + m_lineWidth, y + m_lineWidth, ink);
        }
    }
}

void PixelCanvas::Write(Spot at, std::string_view text, Anchor anchor) {
    const int width = static_cast<int>(text.size()) * Advance * m_dot;
    const int shift = anchor == Anchor::Left ? 0 : anchor == Anchor::Centre ? width / 2 : width;
    int left = static_cast<int>(at.x * m_scale) - shift;
    const int top = static_cast<int>(at.y * m_scale) - CapitalDots * m_dot / 2;
    for (const char character : text) {
        const std::string_view rows = suite::picture::GlyphRows(character);
        for (int row = 0; row < Height; ++row) {
            for (int column = 0; column < Width; ++column) {
                if (suite::picture::IsInk(rows, column, row)) {
                    const int x = left + column * m_dot;
                    const int y = top + row * m_dot;
                    FillPixels(x, y, x + m_dot, y + m_dot, Ink::Text);
                }
            }
        }
        left += Advance * m_dot;
    }
}

}  // namespace krv::plots
