#include "bench/book/windows/GridKeys.h"

#include <optional>

namespace krv::bench {
namespace {

std::optional<Direction> ArrowOf(WPARAM key) {
    switch (key) {
        case VK_UP:
            return Direction::Up;
        case VK_DOWN:
            return Direction::Down;
        case VK_LEFT:
            return Direction::Left;
        case VK_RIGHT:
            return Direction::Right;
        default:
            return std::nullopt;
    }
}

void Arrow(Selection& selection, const Sheet& sheet, Direction direction, HeldKeys held) {
    if (held.control) {
        selection.Jump(sheet, direction, held.shift);
    } else {
        selection.Step(direction, 1, held.shift);
    }
}

void Home(Selection& selection, HeldKeys held) {
    const CellPosition from = held.shift ? selection.MovingCorner() : selection.ActiveCell();
    selection.GoTo({held.control ? 0 : from.row, 0}, held.shift);
}

void Space(Selection& selection, HeldKeys held) {
    if (held.control) {
        selection.SelectColumns(selection.ActiveCell().column, false);
    } else {
        selection.SelectRows(selection.ActiveCell().row, false);
    }
}

bool Apply(Selection& selection, const Sheet& sheet, WPARAM key, HeldKeys held, std::int32_t page) {
    switch (key) {
        case VK_PRIOR:
            selection.Step(Direction::Up, page, held.shift);
            return true;
        case VK_NEXT:
            selection.Step(Direction::Down, page, held.shift);
            return true;
        case VK_RETURN:
            selection.Step(held.shift ? Direction::Up : Direction::Down, 1, false);
            return true;
        case VK_TAB:
            selection.Step(held.shift ? Direction::Left : Direction::Right, 1, false);
            return true;
        case VK_HOME:
            Home(selection, held);
            return true;
        case VK_END:
            selection.GoTo(OnSheet({sheet.UsedRows() - 1, sheet.UsedColumns() - 1}), held.shift);
            return true;
        case 'A':
            selection.Select({WholeSheet});
            return true;
        case VK_SPACE:
            Space(selection, held);
            return true;
        default:
            return false;
    }
}

bool TakesKey(WPARAM key, HeldKeys held) {
    const bool needsControl = key == VK_END || key == 'A';
    return (!needsControl || held.control) && (key != VK_SPACE || held.control || held.shift);
}

}  // namespace

bool SelectByKey(Workbook& book, WPARAM key, HeldKeys held, std::int32_t page) {
    Selection selection = book.Selected();
    if (const auto direction = ArrowOf(key)) {
        Arrow(selection, book.Cells(), *direction, held);
    } else if (!TakesKey(key, held) || !Apply(selection, book.Cells(), key, held, page)) {
        return false;
    }
    book.ChangeSelection([&](Selection& current) { current = selection; });
    return true;
}

}  // namespace krv::bench
