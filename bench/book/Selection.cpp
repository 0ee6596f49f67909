#include "bench/book/Selection.h"

#include <algorithm>
#include <utility>

namespace krv::bench {

bool Selection::Contains(CellPosition cell) const {
    return std::any_of(m_areas.begin(), m_areas.end(),
                       [cell](const CellArea& area) { return area.Contains(cell); });
}

void Selection::Select(std::vector<CellArea> areas) {
    m_areas = std::move(areas);
    m_current = 0;
    m_active = m_toShow = m_areas.front().First();
}

void Selection::MoveTo(CellPosition cell, bool addArea) {
    if (!addArea) {
        m_areas.clear();
    }
    m_areas.push_back({cell.row, cell.column, 1, 1});
    m_current = m_areas.size() - 1;
    m_active = m_toShow = cell;
}

void Selection::ExtendTo(CellPosition cell) {
    m_areas[m_current] = AreaBetween(m_active, cell);
    m_toShow = cell;
}

void Selection::Step(std::int32_t rows, std::int32_t columns, bool extend) {
    const CellPosition from = extend ? m_toShow : m_active;
    const CellPosition to = OnSheet({from.row + rows, from.column + columns});
    if (extend) {
        ExtendTo(to);
    } else {
        MoveTo(to);
    }
}

}  // namespace krv::bench
