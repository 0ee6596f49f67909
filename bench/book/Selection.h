// Selection: what is selected on a sheet. There is always at least one area; one of them is
// current: it holds the active cell and is the one that is extended. Owned by its workbook.
#pragma once

#include <cstddef>
#include <vector>

#include "bench/book/CellArea.h"

namespace krv::bench {

class Selection {
 public:
    [[nodiscard]] const std::vector<CellArea>& Areas() const { return m_areas; }
    [[nodiscard]] CellPosition ActiveCell() const { return m_active; }
    // Where the user looks: the corner that moved, or the active cell of what code has selected.
    [[nodiscard]] CellPosition CellToShow() const { return m_toShow; }
    [[nodiscard]] bool Contains(CellPosition cell) const;

    // The areas must not be empty and must lie on the sheet. The first one's first cell becomes
    // active.
    void Select(std::vector<CellArea> areas);
    // A click; with Ctrl it adds an area.
    void MoveTo(CellPosition cell, bool addArea = false);
    // A drag, or a click with Shift: the current area reaches from the active cell to this one.
    void ExtendTo(CellPosition cell);
    // An arrow key, which stops at the sheet's edges.
    void Step(std::int32_t rows, std::int32_t columns, bool extend);

 private:
    std::vector<CellArea> m_areas{CellArea{}};
    std::size_t m_current = 0;
    CellPosition m_active;
    CellPosition m_toShow;
};

}  // namespace krv::bench
