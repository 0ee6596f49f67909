#include "bench/book/CellArea.h"

#include <algorithm>
#include <utility>

namespace krv::bench {
namespace {

constexpr std::int32_t Letters = 26;

std::string Mark(AddressStyle style) {
    return style == AddressStyle::Absolute ? "$" : "";
}

std::string ColumnEnd(std::int32_t column, AddressStyle style) {
    return Mark(style) + ColumnName(column);
}

std::string RowEnd(std::int32_t row, AddressStyle style) {
    return Mark(style) + std::to_string(row + 1);
}

}  // namespace

bool CellArea::Contains(CellPosition cell) const {
    return cell.row >= row && cell.row - row < rows && cell.column >= column &&
           cell.column - column < columns;
}

CellPosition OnSheet(CellPosition cell) {
    return {std::clamp(cell.row, 0, SheetLimit::Rows - 1),
            std::clamp(cell.column, 0, SheetLimit::Columns - 1)};
}

CellArea AreaBetween(CellPosition one, CellPosition other) {
    const auto [top, bottom] = std::minmax(one.row, other.row);
    const auto [left, right] = std::minmax(one.column, other.column);
    return {top, left, bottom - top + 1, right - left + 1};
}

std::string ColumnName(std::int32_t column) {
    std::string name;
    for (std::int32_t left = column + 1; left > 0; left = (left - 1) / Letters) {
        name.insert(name.begin(), static_cast<char>('A' + (left - 1) % Letters));
    }
    return name;
}

std::string AddressOf(const CellArea& area, AddressStyle style) {
    const auto [lastRow, lastColumn] = area.Last();
    if (area.HoldsWholeRows()) {
        return RowEnd(area.row, style) + ":" + RowEnd(lastRow, style);
    }
    if (area.HoldsWholeColumns()) {
        return ColumnEnd(area.column, style) + ":" + ColumnEnd(lastColumn, style);
    }
    std::string address = ColumnEnd(area.column, style) + RowEnd(area.row, style);
    if (area.CellCount() > 1) {
        address += ":" + ColumnEnd(lastColumn, style) + RowEnd(lastRow, style);
    }
    return address;
}

std::string AddressOf(std::span<const CellArea> areas, AddressStyle style) {
    std::string address;
    for (const CellArea& area : areas) {
        address += (address.empty() ? "" : ",") + AddressOf(area, style);
    }
    return address;
}

}  // namespace krv::bench
