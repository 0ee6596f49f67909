#include "plots/Envelope.h"

#include <algorithm>
#include <utility>

namespace krv::plots {
namespace {

void Widen(Extent& extent, double value) {
    extent.lowest = std::min(extent.lowest, value);
    extent.highest = std::max(extent.highest, value);
}

// The ranges of one channel.
class ColumnRanges {
 public:
    ColumnRanges(std::size_t points, std::size_t columns) : m_points(points), m_ranges(columns) {}

    void Take(std::size_t first, std::span<const double> values) {
        for (std::size_t k = 0; k < values.size(); ++k) {
            const std::size_t column = (first + k) * m_ranges.size() / m_points;
            if (column != m_column || first + k == 0) {
                m_column = column;
                const double before = first + k == 0 ? values[k] : m_last;
                m_ranges[column] = {before, before};
            }
            Widen(m_ranges[column], values[k]);
            m_last = values[k];
        }
    }
    [[nodiscard]] std::vector<Extent>& Ranges() noexcept { return m_ranges; }

 private:
    std::size_t m_points;
    std::vector<Extent> m_ranges;
    std::size_t m_column = 0;
    double m_last = 0;
};

std::size_t CellOf(double value, std::size_t side) {
    const double place = (value + 1) / 2 * static_cast<double>(side);
    return static_cast<std::size_t>(std::clamp(place, 0.0, static_cast<double>(side - 1)));
}

}  // namespace

Envelope EnvelopeOf(const analysis::Signal& signal, std::size_t columns) {
    columns = std::min(columns, signal.points);
    ColumnRanges i(signal.points, columns);
    ColumnRanges q(signal.points, columns);
    analysis::ForBlocks(signal, [&](std::size_t first, std::span<const double> iValues,
                                    std::span<const double> qValues) {
        i.Take(first, iValues);
        q.Take(first, qValues);
    });
    return {std::move(i.Ranges()), std::move(q.Ranges())};
}

std::vector<std::uint8_t> MarkersOf(std::span<const std::uint8_t> markers, std::size_t points,
                                    std::size_t columns) {
    columns = std::min(columns, points);
    std::vector<std::uint8_t> bits(columns, 0);
    for (std::size_t at = 0; at < std::min(markers.size(), points); ++at) {
        std::uint8_t& column = bits[at * columns / points];
        column = static_cast<std::uint8_t>(column | markers[at]);
    }
    return bits;
}

std::vector<std::uint32_t> DensityOf(const analysis::Signal& signal, std::size_t side) {
    std::vector<std::uint32_t> cells(side * side, 0);
    analysis::ForBlocks(
        signal, [&](std::size_t, std::span<const double> i, std::span<const double> q) {
            for (std::size_t k = 0; k < i.size(); ++k) {
                ++cells[(side - 1 - CellOf(q[k], side)) * side + CellOf(i[k], side)];
            }
        });
    return cells;
}

}  // namespace krv::plots
