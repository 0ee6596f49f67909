#include "bench/book/Selection.h"

#include <algorithm>
#include <utility>

namespace krv::bench {
namespace {

CellPosition Moved(CellPosition from, Direction direction, std::int32_t cells) {
    switch (direction) {
        case Direction::Up:
            return {from.row - cells, from.column};
        case Direction::Down:
            return {from.row + cells, from.column};
        case Direction::Left:
            return {from.row, from.column - cells};
        case Direction::Right:
            return {from.row, from.column + cells};
    }
    return from;
}

bool IsUsed(const Sheet& sheet, CellPosition cell) {
    return IsOnSheet(cell) && !std::holds_alternative<EmptyValue>(sheet.At(cell));
}

// Beyond the used cells there is nothing to look for.
bool IsBeyondUse(const Sheet& sheet, CellPosition cell, Direction direction) {
    return !IsOnSheet(cell) || (direction == Direction::Down && cell.row >= sheet.UsedRows()) ||
           (direction == Direction::Right && cell.column >= sheet.UsedColumns());
}

CellPosition EdgeOfSheet(CellPosition from, Direction direction) {
    return OnSheet(Moved(from, direction, SheetLimit::Rows));
}

}  // namespace

bool Selection::Contains(CellPosition cell) const {
    return std::any_of(m_areas.begin(), m_areas.end(),
                       [cell](const CellArea& area) { return area.Contains(cell); });
}

void Selection::Select(std::vector<CellArea> areas) {
    m_areas = std::move(areas);
    m_current = 0;
    m_active = m_toShow = m_areas.front().First();
    m_corner = m_areas.front().Last();
}

void Selection::MoveTo(CellPosition cell, bool addArea) {
    if (!addArea) {
        m_areas.clear();
    }
    m_areas.push_back({cell.row, cell.column, 1, 1});
    m_current = m_areas.size() - 1;
    m_active = m_corner = m_toShow = cell;
}

void Selection::ExtendTo(CellPosition cell) {
    m_areas[m_current] = AreaBetween(m_active, cell);
    m_corner = m_toShow = cell;
}

void Selection::SelectColumns(std::int32_t column, bool extend, bool addArea) {
    if (!extend) {
        MoveTo({0, column}, addArea);
    }
    m_areas[m_current] = AreaBetween({0, m_active.column}, {SheetLimit::Rows - 1, column});
    m_corner = m_toShow = {m_active.row, column};
}

void Selection::SelectRows(std::int32_t row, bool extend, bool addArea) {
    if (!extend) {
        MoveTo({row, 0}, addArea);
    }
    m_areas[m_current] = AreaBetween({m_active.row, 0}, {row, SheetLimit::Columns - 1});
    m_corner = m_toShow = {row, m_active.column};
}

void Selection::Step(Direction direction, std::int32_t cells, bool extend) {
    GoTo(OnSheet(Moved(extend ? m_corner : m_active, direction, cells)), extend);
}

void Selection::Jump(const Sheet& sheet, Direction direction, bool extend) {
    GoTo(EndOfData(sheet, extend ? m_corner : m_active, direction), extend);
}

void Selection::GoTo(CellPosition cell, bool extend) {
    if (extend) {
        ExtendTo(cell);
    } else {
        MoveTo(cell);
    }
}

CellPosition EndOfData(const Sheet& sheet, CellPosition from, Direction direction) {
    CellPosition at = from;
    CellPosition next = Moved(at, direction, 1);
    if (IsUsed(sheet, at) && IsUsed(sheet, next)) {
        while (IsUsed(sheet, next)) {
            at = std::exchange(next, Moved(next, direction, 1));
        }
        return at;
    }
    while (!IsBeyondUse(sheet, next, direction)) {
        if (IsUsed(sheet, next)) {
            return next;
        }
        next = Moved(next, direction, 1);
    }
    return EdgeOfSheet(from, direction);
}

}  // namespace krv::bench
