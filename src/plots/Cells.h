// Cells: a constellation as a square of cells from -1 to 1, row by row from the largest Q. What is
// beyond counts for the cell at the edge.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "analysis/Signal.h"

namespace krv::plots {

// 1 for each cell that a point of the blocks of diagrams lies in.
[[nodiscard]] std::vector<std::uint8_t> CellsOfPoints(const analysis::Signal& signal,
                                                      std::size_t side);

// 1 for each cell on the straight way from a point to the next; of a long signal in blocks that are
// spread over all of it.
[[nodiscard]] std::vector<std::uint8_t> CellsOfPath(const analysis::Signal& signal,
                                                    std::size_t side);

}  // namespace krv::plots
