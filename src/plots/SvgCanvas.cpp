#include "plots/SvgCanvas.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include "common/Hexadecimal.h"
#include "common/Numbers.h"

namespace krv::plots {
namespace {

// Tenths of a unit are finer than any screen shows.
std::string Place(double value) {
    return NumberToText(RoundDecimals(value, 1));
}

std::string Escaped(std::string_view text) {
    std::string escaped;
    for (const char character : text) {
        switch (character) {
            case '&':
                escaped += "&amp;";
                break;
            case '<':
                escaped += "&lt;";
                break;
            case '>':
                escaped += "&gt;";
                break;
            default:
                // Control characters are none of XML's.
                escaped += static_cast<unsigned char>(character) < ' ' ? ' ' : character;
        }
    }
    return escaped;
}

}  // namespace

SvgCanvas::SvgCanvas(int width, int height, Theme theme) : m_palette(PaletteOf(theme)) {
    const std::string size = std::to_string(width) + "\" height=\"" + std::to_string(height);
    m_text = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + size + "\" viewBox=\"0 0 " +
             std::to_string(width) + ' ' + std::to_string(height) +
             "\" font-family=\"sans-serif\" font-size=\"14\">\n";
    SvgCanvas::Fill({0, 0}, {static_cast<double>(width), static_cast<double>(height)},
                    Ink::Background);
}

std::string SvgCanvas::ColorOf(Ink ink) const {
    const suite::picture::Color color = m_palette.at(static_cast<std::size_t>(ink));
    return '#' + Hexadecimal(color.red, 2) + Hexadecimal(color.green, 2) +
           Hexadecimal(color.blue, 2);
}

void SvgCanvas::Line(std::span<const Spot> spots, Ink ink) {
    m_text += "<polyline fill=\"none\" stroke=\"" + ColorOf(ink) + "\" points=\"";
    for (const Spot& spot : spots) {
        m_text += Place(spot.x) + ',' + Place(spot.y) + ' ';
    }
    m_text += "\"/>\n";
}

void SvgCanvas::Fill(Spot corner, Spot opposite, Ink ink) {
    m_text += "<rect x=\"" + Place(std::min(corner.x, opposite.x)) + "\" y=\"" +
              Place(std::min(corner.y, opposite.y)) + "\" width=\"" +
              Place(std::abs(opposite.x - corner.x)) + "\" height=\"" +
              Place(std::abs(opposite.y - corner.y)) + "\" fill=\"" + ColorOf(ink) + "\"/>\n";
}

void SvgCanvas::Write(Spot at, std::string_view text, Anchor anchor) {
    constexpr double HalfCapital = 5;
    const char* const side = anchor == Anchor::Left     ? "start"
                             : anchor == Anchor::Centre ? "middle"
                                                        : "end";
    m_text += "<text x=\"" + Place(at.x) + "\" y=\"" + Place(at.y + HalfCapital) +
              "\" text-anchor=\"" + side + "\" fill=\"" + ColorOf(Ink::Text) + "\">" +
              Escaped(text) + "</text>\n";
}

std::string SvgCanvas::Take() {
    m_text += "</svg>\n";
    return std::move(m_text);
}

}  // namespace krv::plots
