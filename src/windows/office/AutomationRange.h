// A range of cells of Excel, over automation.
//
// Values are read block by block, so that a whole column is never held twice. They are read with
// the kinds that the cells have: dates and currencies don't turn into plain numbers.
#pragma once

#include <cstddef>
#include <utility>

#include "ports/office/Excel.h"
#include "windows/automation/LateBound.h"

namespace krv::windows {

class AutomationRange final : public ports::Range {
 public:
    explicit AutomationRange(LateBound range) : m_range(std::move(range)) {}

    std::int32_t AreaCount() override;
    std::int32_t RowCount() override;
    std::int32_t ColumnCount() override;
    std::int32_t CellCount() override;
    std::string Address() override;
    ports::SheetName Sheet() override;
    void ReadValues(std::size_t firstCell, std::span<Value> values) override;
    std::string CellAddress(std::size_t cell) override;

 private:
    // Rows and columns from 0, within the range.
    struct Block {
        std::size_t row;
        std::size_t column;
        std::size_t rows;
        std::size_t columns;
    };

    [[nodiscard]] std::size_t Width();
    [[nodiscard]] Block BlockAt(std::size_t firstCell, std::size_t atMost);
    [[nodiscard]] LateBound CellAt(std::size_t row, std::size_t column) const;
    [[nodiscard]] _variant_t Read(const Block& block) const;

    LateBound m_range;
    // Asked for once; 0 before.
    std::size_t m_width = 0;
};

}  // namespace krv::windows
