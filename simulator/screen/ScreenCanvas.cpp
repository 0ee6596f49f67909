#include "simulator/screen/ScreenCanvas.h"

#include <algorithm>

#include "suite/picture/DotFont.h"

namespace krv::simulator {

using suite::picture::GlyphRows;
using suite::picture::IsInk;
namespace Glyph = suite::picture::Glyph;

namespace {

// Rows above the base line, by which text is centred.
constexpr int CapitalHeight = 7;

}  // namespace

ScreenCanvas::ScreenCanvas(int width, int height, suite::picture::Color background)
    : m_picture{width, height, {}} {
    m_picture.pixels.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height),
                            background);
}

void ScreenCanvas::Fill(const ScreenArea& area, suite::picture::Color color) {
    const int left = std::clamp(area.left, 0, m_picture.width);
    const int right = std::clamp(area.left + area.width, left, m_picture.width);
    const int bottom = std::min(area.top + area.height, m_picture.height);
    for (int y = std::max(area.top, 0); y < bottom; ++y) {
        std::fill(m_picture.Row(y) + left, m_picture.Row(y) + right, color);
    }
}

void ScreenCanvas::Frame(const ScreenArea& area, suite::picture::Color color) {
    Fill({area.left, area.top, area.width, 1}, color);
    Fill({area.left, area.top + area.height - 1, area.width, 1}, color);
    Fill({area.left, area.top, 1, area.height}, color);
    Fill({area.left + area.width - 1, area.top, 1, area.height}, color);
}

void ScreenCanvas::Text(int left, int top, std::string_view text, int scale,
                        suite::picture::Color color) {
    for (const char character : text) {
        const std::string_view rows = GlyphRows(character);
        for (int row = 0; row < Glyph::Height; ++row) {
            for (int column = 0; column < Glyph::Width; ++column) {
                if (IsInk(rows, column, row)) {
                    Fill({left + column * scale, top + row * scale, scale, scale}, color);
                }
            }
        }
        left += Glyph::Advance * scale;
    }
}

void ScreenCanvas::TextCentred(const ScreenArea& area, std::string_view text, int scale,
                               suite::picture::Color color) {
    Text(area.left + (area.width - TextWidth(text, scale)) / 2,
         area.top + (area.height - CapitalHeight * scale) / 2, text, scale, color);
}

int TextWidth(std::string_view text, int scale) noexcept {
    return text.empty() ? 0 : (static_cast<int>(text.size()) * Glyph::Advance - 1) * scale;
}

}  // namespace krv::simulator
