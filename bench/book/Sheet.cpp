#include "bench/book/Sheet.h"

#include <algorithm>

namespace krv::bench {

Value Sheet::At(CellPosition cell) const {
    return cell.column < UsedColumns()
               ? m_columns[static_cast<std::size_t>(cell.column)].At(cell.row)
               : Value{};
}

void Sheet::Set(CellPosition cell, const Value& value) {
    if (std::holds_alternative<EmptyValue>(value) && cell.column >= UsedColumns()) {
        return;
    }
    ColumnToFill(cell.column).Set(cell.row, value);
    ForgetEmptyColumns();
}

void Sheet::Clear(const CellArea& area) {
    const std::int32_t lastColumn = std::min(area.Last().column, UsedColumns() - 1);
    for (std::int32_t column = area.column; column <= lastColumn; ++column) {
        CellColumn& cells = m_columns[static_cast<std::size_t>(column)];
        // From the end, so that the column shrinks only once.
        for (std::int32_t row = std::min(area.Last().row, cells.UsedRows() - 1); row >= area.row;
             --row) {
            cells.Set(row, EmptyValue{});
        }
    }
    ForgetEmptyColumns();
}

std::int32_t Sheet::UsedRows() const {
    std::int32_t rows = 0;
    for (const CellColumn& column : m_columns) {
        rows = std::max(rows, column.UsedRows());
    }
    return rows;
}

CellColumn& Sheet::ColumnToFill(std::int32_t column) {
    const auto index = static_cast<std::size_t>(column);
    if (index >= m_columns.size()) {
        m_columns.resize(index + 1);
    }
    return m_columns[index];
}

void Sheet::ForgetEmptyColumns() {
    while (!m_columns.empty() && m_columns.back().UsedRows() == 0) {
        m_columns.pop_back();
    }
}

}  // namespace krv::bench
