#include "bench/book/windows/GridLook.h"

#include <algorithm>
#include <cmath>

#include "bench/shared/windows/WindowText.h"

namespace krv::bench {

GridLook::GridLook(UINT dotsPerInch) : font(NewMessageFont(dotsPerInch)) {
    const auto scaled = [dotsPerInch](int pixels) {
        return MulDiv(pixels, static_cast<int>(dotsPerInch), USER_DEFAULT_SCREEN_DPI);
    };
    pixelsPerPoint = static_cast<double>(dotsPerInch) / 72;
    rowHeight = static_cast<int>(std::lround(CellSize::RowHeight * pixelsPerPoint));
    columnWidth = static_cast<int>(std::lround(CellSize::ColumnWidth * pixelsPerPoint));
    headingHeight = scaled(22);
    headingWidth = scaled(60);
    padding = scaled(4);
}

RECT GridLook::PlaceOf(CellPosition cell, CellPosition top) const {
    const int left = headingWidth + (cell.column - top.column) * columnWidth;
    const int upper = headingHeight + (cell.row - top.row) * rowHeight;
    return {left, upper, left + columnWidth, upper + rowHeight};
}

CellPosition GridLook::CellAt(POINT point, CellPosition top) const {
    const int down = point.y - headingHeight;
    const int right = point.x - headingWidth;
    // Rounded down also to the left of and above the cells.
    const auto steps = [](int distance, int size) {
        return (distance >= 0 ? distance : distance - size + 1) / size;
    };
    return OnSheet({top.row + steps(down, rowHeight), top.column + steps(right, columnWidth)});
}

int GridLook::RowsIn(const RECT& client) const {
    return std::max(1, static_cast<int>(client.bottom - headingHeight) / rowHeight);
}

int GridLook::ColumnsIn(const RECT& client) const {
    return std::max(1, static_cast<int>(client.right - headingWidth) / columnWidth);
}

}  // namespace krv::bench
