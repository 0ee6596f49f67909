// Selection: what is selected on a sheet, and how keys and the mouse change it. There is always at
// least one area; one of them is current: it holds the active cell and is the one that is extended.
// Owned by its workbook.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "bench/book/CellArea.h"
#include "bench/book/Sheet.h"

namespace krv::bench {

enum class Direction : std::uint8_t { Up, Down, Left, Right };

class Selection {
 public:
    [[nodiscard]] const std::vector<CellArea>& Areas() const { return m_areas; }
    [[nodiscard]] CellPosition ActiveCell() const { return m_active; }
    // The corner that moves when the selection is extended.
    [[nodiscard]] CellPosition MovingCorner() const { return m_corner; }
    // Where the user looks: the corner that moved, or the active cell of what code has selected.
    [[nodiscard]] CellPosition CellToShow() const { return m_toShow; }
    [[nodiscard]] bool Contains(CellPosition cell) const;

    // The areas must not be empty and must lie on the sheet.
    void Select(std::vector<CellArea> areas);
    // A click; with Ctrl it adds an area.
    void MoveTo(CellPosition cell, bool addArea = false);
    // A drag, or a click with Shift: the current area reaches from the active cell to this one.
    void ExtendTo(CellPosition cell);
    // Clicks on headings; extending goes from the active cell.
    void SelectColumns(std::int32_t column, bool extend, bool addArea = false);
    void SelectRows(std::int32_t row, bool extend, bool addArea = false);

    // An arrow key, `cells` at a time, or a page.
    void Step(Direction direction, std::int32_t cells, bool extend);
    // Ctrl with an arrow key: to the end of the data in this direction, or to where data begins
    // again.
    void Jump(const Sheet& sheet, Direction direction, bool extend);
    // Home: the first column; Ctrl+Home: the first cell; Ctrl+End: the last cell in use.
    void GoTo(CellPosition cell, bool extend);

 private:
    std::vector<CellArea> m_areas{CellArea{}};
    std::size_t m_current = 0;
    CellPosition m_active;
    CellPosition m_corner;
    CellPosition m_toShow;
};

// Where Ctrl with an arrow key leads.
[[nodiscard]] CellPosition EndOfData(const Sheet& sheet, CellPosition from, Direction direction);

}  // namespace krv::bench
