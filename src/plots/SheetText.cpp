// The sheet as text: dots of Braille patterns, four high and two wide in each character.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "analysis/Ccdf.h"
#include "analysis/Spectrum.h"
#include "plots/Cells.h"
#include "plots/Envelope.h"
#include "plots/PlotSheet.h"

namespace krv::plots {
namespace {

constexpr std::size_t RowsOfText = 8;
constexpr double LowestDb = -100;
// 15 dB.
constexpr std::size_t StepsOfCcdf = 150;
constexpr double DecadesOfCcdf = 4;

class DotGrid {
 public:
    DotGrid(std::size_t columns, std::size_t rows)
        : m_columns(columns), m_rows(rows), m_bits(columns * rows, 0) {}

    [[nodiscard]] std::size_t Width() const noexcept { return 2 * m_columns; }
    [[nodiscard]] std::size_t Height() const noexcept { return 4 * m_rows; }

    // All dots of a column between two heights, from 0 at the bottom to 1.
    void Bar(std::size_t x, double from, double to) {
        const auto dot = [this](double height) {
            const double top = static_cast<double>(Height() - 1);
            return static_cast<std::size_t>(std::lround((1 - std::clamp(height, 0.0, 1.0)) * top));
        };
        for (std::size_t y = dot(std::max(from, to)); y <= dot(std::min(from, to)); ++y) {
            Dot(x, y);
        }
    }
    // From the left top corner.
    void Dot(std::size_t x, std::size_t y) {
        static constexpr unsigned char Dots[4][2] = {
            {0x01, 0x08}, {0x02, 0x10}, {0x04, 0x20}, {0x40, 0x80}};
        unsigned char& cell = m_bits[y / 4 * m_columns + x / 2];
        cell = static_cast<unsigned char>(cell | Dots[y % 4][x % 2]);
    }

    [[nodiscard]] std::string Text(bool hasBraille) const {
        std::string text;
        for (std::size_t row = 0; row < m_rows; ++row) {
            for (std::size_t column = 0; column < m_columns; ++column) {
                const unsigned char bits = m_bits[row * m_columns + column];
                // U+2800 and the dots, in UTF-8.
                const std::string pattern{'\xE2', static_cast<char>(0xA0 | bits >> 6U),
                                          static_cast<char>(0x80 | (bits & 0x3FU))};
                text += hasBraille ? pattern : std::string(1, bits == 0 ? ' ' : '#');
            }
            text += '\n';
        }
        return text;
    }

 private:
    std::size_t m_columns;
    std::size_t m_rows;
    std::vector<unsigned char> m_bits;
};

std::string RangesAsText(const std::vector<Extent>& ranges, std::size_t columns, bool hasBraille) {
    DotGrid grid(columns, RowsOfText);
    for (std::size_t x = 0; x < grid.Width(); ++x) {
        const Extent& range = ranges[x * ranges.size() / grid.Width()];
        grid.Bar(x, (range.lowest + 1) / 2, (range.highest + 1) / 2);
    }
    return grid.Text(hasBraille);
}

// A row for each marker that is used: where a character holds it.
std::string MarkersAsText(const PlotSubject& subject, std::size_t columns) {
    const std::vector<std::uint8_t> bits =
        MarkersOf(subject.markers, subject.signal.points, columns);
    constexpr unsigned Markers = 4;
    std::string text;
    for (unsigned marker = 0; marker < Markers && !subject.markers.empty(); ++marker) {
        std::string row;
        for (std::size_t column = 0; column < columns; ++column) {
            const unsigned held = bits[column * bits.size() / columns];
            row += (held >> marker & 1U) != 0 ? '=' : ' ';
        }
        if (row.find('=') != std::string::npos) {
            text += "Marker " + std::to_string(marker + 1) + '\n' + row + '\n';
        }
    }
    return text;
}

std::string ConstellationAsText(const analysis::Signal& signal, bool hasBraille) {
    // A character is twice as high as wide, as its dots are.
    DotGrid grid(4 * RowsOfText, 2 * RowsOfText);
    const std::size_t side = grid.Width();
    const std::vector<std::uint8_t> cells = CellsOfPoints(signal, side);
    for (std::size_t cell = 0; cell < cells.size(); ++cell) {
        if (cells[cell] != 0) {
            grid.Dot(cell % side, cell / side);
        }
    }
    return grid.Text(hasBraille);
}

std::string CcdfAsText(const analysis::Ccdf& ccdf, std::size_t columns, bool hasBraille) {
    DotGrid grid(columns, RowsOfText);
    for (std::size_t x = 0; x < grid.Width(); ++x) {
        const std::size_t step = x * StepsOfCcdf / grid.Width();
        const double share = step < ccdf.shares.size() ? ccdf.shares[step] : 0;
        if (share > 0) {
            grid.Bar(x, 0, 1 + std::log10(share) / DecadesOfCcdf);
        }
    }
    return grid.Text(hasBraille);
}

std::string SpectrumAsText(const analysis::Signal& signal, std::size_t columns, bool hasBraille) {
    const analysis::Spectrum spectrum = analysis::SpectrumOf(signal);
    const std::size_t bands = spectrum.power.size();
    DotGrid grid(columns, RowsOfText);
    for (std::size_t x = 0; x < grid.Width(); ++x) {
        const std::size_t from = x * bands / grid.Width();
        const std::size_t to = std::max(from + 1, (x + 1) * bands / grid.Width());
        double power = 0;
        for (std::size_t band = from; band < std::min(to, bands); ++band) {
            power = std::max(power, spectrum.power[band]);
        }
        grid.Bar(x, 0, 1 - spectrum.LevelOf(power) / LowestDb);
    }
    return grid.Text(hasBraille);
}

}  // namespace

std::string SheetAsText(const PlotSubject& subject, int width, bool hasBraille) {
    const auto columns = static_cast<std::size_t>(std::max(width, 16));
    const Envelope envelope = EnvelopeOf(subject.signal, 2 * columns);
    std::string text =
        "I, from -1 to 1 of full scale\n" + RangesAsText(envelope.i, columns, hasBraille);
    if (subject.signal.hasQ) {
        text += "Q\n" + RangesAsText(envelope.q, columns, hasBraille);
    }
    text += MarkersAsText(subject, columns);
    text +=
        "Spectrum from minus to plus half the sample rate, -100 to 0 dB of full scale, Hann "
        "window\n" +
        SpectrumAsText(subject.signal, columns, hasBraille);
    text +=
        "Q over I, from -1 to 1 of full scale\n" + ConstellationAsText(subject.signal, hasBraille);
    return text + "CCDF from 0 to 15 dB above the mean, 0.0001 to 1\n" +
           CcdfAsText(analysis::CcdfOf(subject.signal), columns, hasBraille);
}

}  // namespace krv::plots
