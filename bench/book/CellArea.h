// Rectangles of cells on a sheet, and how their addresses are written. Rows and columns count from
// 0.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace krv::bench {

namespace SheetLimit {
inline constexpr std::int32_t Rows = 1048576;
inline constexpr std::int32_t Columns = 16384;
}  // namespace SheetLimit

struct CellPosition {
    std::int32_t row = 0;
    std::int32_t column = 0;
    friend bool operator==(CellPosition, CellPosition) noexcept = default;
};

struct CellArea {
    std::int32_t row = 0;
    std::int32_t column = 0;
    std::int32_t rows = 1;
    std::int32_t columns = 1;
    friend bool operator==(const CellArea&, const CellArea&) noexcept = default;

    [[nodiscard]] CellPosition First() const { return {row, column}; }
    [[nodiscard]] CellPosition Last() const { return {row + rows - 1, column + columns - 1}; }
    [[nodiscard]] std::int64_t CellCount() const { return std::int64_t{rows} * columns; }
    [[nodiscard]] bool Contains(CellPosition cell) const;
    [[nodiscard]] bool HoldsWholeRows() const { return columns == SheetLimit::Columns; }
    [[nodiscard]] bool HoldsWholeColumns() const { return rows == SheetLimit::Rows; }
};

inline constexpr CellArea WholeSheet{0, 0, SheetLimit::Rows, SheetLimit::Columns};

// What all rows and columns measure, in points.
namespace CellSize {
inline constexpr double RowHeight = 15;
inline constexpr double ColumnWidth = 63;
}  // namespace CellSize

// The nearest cell that the sheet has.
[[nodiscard]] CellPosition OnSheet(CellPosition cell);
// The smallest area that holds both cells.
[[nodiscard]] CellArea AreaBetween(CellPosition one, CellPosition other);

// Ends of an address that don't move when it is copied have a "$".
enum class AddressStyle : std::uint8_t { Absolute, Relative };

// "A" to "XFD".
[[nodiscard]] std::string ColumnName(std::int32_t column);
// "$A$7", "$A$1:$B$10", "$A:$C" for whole columns, "$1:$3" for whole rows.
[[nodiscard]] std::string AddressOf(const CellArea& area,
                                    AddressStyle style = AddressStyle::Absolute);
// The areas' addresses with commas between.
[[nodiscard]] std::string AddressOf(std::span<const CellArea> areas,
                                    AddressStyle style = AddressStyle::Absolute);

}  // namespace krv::bench
