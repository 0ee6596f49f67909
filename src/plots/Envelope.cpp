#include "plots/Envelope.h"

#include <algorithm>
#include <array>
#include <utility>

namespace krv::plots {
namespace {

// The ranges of one channel, from column to column.
class ColumnRanges {
 public:
    ColumnRanges(std::size_t points, std::size_t columns) : m_points(points), m_columns(columns) {
        m_ranges.reserve(columns);
    }

    void Take(std::size_t first, std::span<const double> values) {
        for (std::size_t at = 0; at < values.size();) {
            if (first + at == m_end) {
                BeginColumn(values[at]);
            }
            const std::size_t count = std::min(values.size() - at, m_end - (first + at));
            Widen(values.subspan(at, count));
            at += count;
        }
    }
    [[nodiscard]] std::vector<Extent>& Ranges() noexcept { return m_ranges; }

 private:
    void BeginColumn(double value) {
        const double before = m_ranges.empty() ? value : m_last;
        m_ranges.push_back({before, before});
        // A point belongs to the column that its place times the columns falls into.
        const std::uint64_t next = std::uint64_t{m_ranges.size()} * m_points;
        m_end = static_cast<std::size_t>((next + m_columns - 1) / m_columns);
    }
    void Widen(std::span<const double> values) {
        // Side by side, since each comparison waits for the one before.
        constexpr std::size_t Lanes = 8;
        std::array<double, Lanes> lowest{};
        std::array<double, Lanes> highest{};
        lowest.fill(m_ranges.back().lowest);
        highest.fill(m_ranges.back().highest);
        const std::size_t whole = values.size() / Lanes * Lanes;
        const double* const value = values.data();
        for (std::size_t at = 0; at < whole; at += Lanes) {
            for (std::size_t lane = 0; lane < Lanes; ++lane) {
                const double each = value[at + lane];
                lowest[lane] = each < lowest[lane] ? each : lowest[lane];
                highest[lane] = each > highest[lane] ? each : highest[lane];
            }
        }
        for (std::size_t at = whole; at < values.size(); ++at) {
            lowest[0] = std::min(lowest[0], value[at]);
            highest[0] = std::max(highest[0], value[at]);
        }
        m_ranges.back() = {*std::ranges::min_element(lowest), *std::ranges::max_element(highest)};
        m_last = values.back();
    }

    std::uint64_t m_points;
    std::uint64_t m_columns;
    std::vector<Extent> m_ranges;
    std::size_t m_end = 0;
    double m_last = 0;
};

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
        std::uint8_t& column = bits[static_cast<std::size_t>(std::uint64_t{at} * columns / points)];
        column = static_cast<std::uint8_t>(column | markers[at]);
    }
    return bits;
}

}  // namespace krv::plots
