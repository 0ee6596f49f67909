#include "windows/office/AutomationRange.h"

#include <algorithm>

#include "windows/automation/VariantValue.h"

namespace krv::windows {
namespace {

// Cells asked for at a time: few calls for a million cells, and a megabyte and a half at once.
constexpr std::size_t MostCells = 65536;

_variant_t Number(std::size_t number) {
    return ToVariant(static_cast<std::int32_t>(number));
}

}  // namespace

std::int32_t AutomationRange::AreaCount() {
    return m_range.GetObject(L"Areas").GetLong(L"Count");
}

std::int32_t AutomationRange::RowCount() {
    return m_range.GetObject(L"Rows").GetLong(L"Count");
}

std::int32_t AutomationRange::ColumnCount() {
    return m_range.GetObject(L"Columns").GetLong(L"Count");
}

std::int32_t AutomationRange::CellCount() {
    return m_range.GetLong(L"Count");
}

std::string AutomationRange::Address() {
    return m_range.GetText(L"Address");
}

ports::SheetName AutomationRange::Sheet() {
    const LateBound sheet = m_range.GetObject(L"Worksheet");
    return {sheet.GetObject(L"Parent").GetText(L"Name"), sheet.GetText(L"Name")};
}

void AutomationRange::ReadValues(std::size_t firstCell, std::span<Value> values) {
    std::size_t done = 0;
    while (done < values.size()) {
        const Block block = BlockAt(firstCell + done, values.size() - done);
        const std::size_t size = block.rows * block.columns;
        CopyCells(Read(block), block.rows, block.columns, values.subspan(done, size));
        done += size;
    }
}

std::string AutomationRange::CellAddress(std::size_t cell) {
    return CellAt(cell / Width(), cell % Width()).GetText(L"Address");
}

std::size_t AutomationRange::Width() {
    if (m_width == 0) {
        m_width = static_cast<std::size_t>(std::max(ColumnCount(), 1));
    }
    return m_width;
}

// Whole rows where the cells asked for begin and end with rows, else what is left of one row.
AutomationRange::Block AutomationRange::BlockAt(std::size_t firstCell, std::size_t atMost) {
    const std::size_t width = Width();
    const std::size_t row = firstCell / width;
    const std::size_t column = firstCell % width;
    atMost = std::min(atMost, MostCells);
    if (column != 0 || atMost < width) {
        return {row, column, 1, std::min(width - column, atMost)};
    }
    return {row, 0, atMost / width, width};
}

LateBound AutomationRange::CellAt(std::size_t row, std::size_t column) const {
    return m_range.CallObject(L"Cells", {Number(row + 1), Number(column + 1)});
}

// Value, not Value2, which reports dates and currencies as plain numbers.
_variant_t AutomationRange::Read(const Block& block) const {
    return CellAt(block.row, block.column)
        .CallObject(L"Resize", {Number(block.rows), Number(block.columns)})
        .Get(L"Value");
}

}  // namespace krv::windows
