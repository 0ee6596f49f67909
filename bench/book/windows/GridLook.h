// GridLook: sizes, colours and font of the grid at one display resolution, and where cells lie
// while the view shows a part of the sheet. In pixels of the grid's window.
#pragma once

#include <windows.h>

#include "bench/book/CellArea.h"
#include "windows/base/Handles.h"

namespace krv::bench {

struct GridLook {
    explicit GridLook(UINT dotsPerInch);

    windows::Font font;
    double pixelsPerPoint;
    int rowHeight;
    int columnWidth;
    int headingHeight;
    int headingWidth;
    int padding;

    // The cell in the top left corner of the view is `top`.
    [[nodiscard]] RECT PlaceOf(CellPosition cell, CellPosition top) const;
    // The cell under a point; in the headings it is the nearest one in view.
    [[nodiscard]] CellPosition CellAt(POINT point, CellPosition top) const;
    // Whole rows and columns that a window of this size shows; at least one.
    [[nodiscard]] int RowsIn(const RECT& client) const;
    [[nodiscard]] int ColumnsIn(const RECT& client) const;
};

}  // namespace krv::bench
