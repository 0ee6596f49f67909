#include "plots/Cells.h"

#include <algorithm>
#include <cstdlib>
#include <span>
#include <utility>

namespace krv::plots {
namespace {

// The way of a quarter of a million points says what there is to be seen.
constexpr std::size_t BlocksOfPath = 16;

struct CellPlace {
    int column = 0;
    int row = 0;
};

class CellSquare {
 public:
    explicit CellSquare(std::size_t side)
        : m_side(static_cast<int>(side)),
          m_half(static_cast<double>(side) / 2),
          m_cells(side * side, 0) {}

    [[nodiscard]] CellPlace PlaceOf(double i, double q) const {
        return {Along(i), m_side - 1 - Along(q)};
    }
    void Mark(CellPlace at) {
        m_cells[static_cast<std::size_t>(at.row) * static_cast<std::size_t>(m_side) +
                static_cast<std::size_t>(at.column)] = 1;
    }
    // All cells behind one of them up to the other, as many as the longer of both distances.
    void MarkWay(CellPlace from, CellPlace to) {
        const int columns = to.column - from.column;
        const int rows = to.row - from.row;
        const int steps = std::max(std::abs(columns), std::abs(rows));
        if (steps == 0) {
            return;
        }
        // In 65536ths of a cell, from the middle of the first one on.
        constexpr int One = 65536;
        int column = from.column * One + One / 2;
        int row = from.row * One + One / 2;
        const int columnStep = columns * One / steps;
        const int rowStep = rows * One / steps;
        for (int step = 0; step < steps; ++step) {
            column += columnStep;
            row += rowStep;
            Mark({column / One, row / One});
        }
    }
    [[nodiscard]] std::vector<std::uint8_t>& Cells() noexcept { return m_cells; }

 private:
    [[nodiscard]] int Along(double value) const {
        const double place = (value + 1) * m_half;
        return static_cast<int>(std::clamp(place, 0.0, static_cast<double>(m_side - 1)));
    }

    int m_side;
    double m_half;
    std::vector<std::uint8_t> m_cells;
};

}  // namespace

std::vector<std::uint8_t> CellsOfPoints(const analysis::Signal& signal, std::size_t side) {
    CellSquare square(side);
    analysis::ForBlocks(signal,
                        [&](std::size_t, std::span<const double> i, std::span<const double> q) {
                            for (std::size_t k = 0; k < i.size(); ++k) {
                                square.Mark(square.PlaceOf(i[k], q[k]));
                            }
                        });
    return std::move(square.Cells());
}

std::vector<std::uint8_t> CellsOfPath(const analysis::Signal& signal, std::size_t side) {
    CellSquare square(side);
    analysis::ForBlocks(
        signal,
        [&](std::size_t, std::span<const double> i, std::span<const double> q) {
            CellPlace last = square.PlaceOf(i[0], q[0]);
            for (std::size_t k = 1; k < i.size(); ++k) {
                const CellPlace next = square.PlaceOf(i[k], q[k]);
                square.MarkWay(last, next);
                last = next;
            }
        },
        BlocksOfPath);
    return std::move(square.Cells());
}

}  // namespace krv::plots
