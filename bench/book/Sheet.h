// Sheet: the cells of a workbook, by columns; memory follows what is used. Owned by its workbook;
// one thread's. Positions must lie on the sheet.
#pragma once

#include <vector>

#include "bench/book/CellArea.h"
#include "bench/book/CellColumn.h"

namespace krv::bench {

class Sheet {
 public:
    [[nodiscard]] Value At(CellPosition cell) const;
    void Set(CellPosition cell, const Value& value);
    void Clear(const CellArea& area);

    // One past the last row and column that hold something.
    [[nodiscard]] std::int32_t UsedRows() const;
    [[nodiscard]] std::int32_t UsedColumns() const {
        return static_cast<std::int32_t>(m_columns.size());
    }
    // The column to fill with many values at once.
    [[nodiscard]] CellColumn& ColumnToFill(std::int32_t column);

 private:
    void ForgetEmptyColumns();

    std::vector<CellColumn> m_columns;
};

}  // namespace krv::bench
