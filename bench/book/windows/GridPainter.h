// GridPainter: draws the part of a sheet that the grid's window shows; it asks for no other cells.
#pragma once

#include <windows.h>

#include <string>

#include "bench/book/Workbook.h"
#include "bench/book/windows/GridLook.h"
#include "windows/base/DeviceContext.h"

namespace krv::bench {

class GridPainter {
 public:
    // For one painting. The arguments outlive it.
    GridPainter(HDC context, const GridLook& look, const RECT& client, const Workbook& book,
                CellPosition top);

    void Paint();

 private:
    void PaintCells();
    void PaintCell(CellPosition cell);
    void PaintHeadings();
    void PaintHeading(RECT place, const std::string& text, bool isSelected);
    void PaintSelection();
    void PaintPictures();
    void PaintPicture(const DocumentPicture& picture, const RECT& place);
    void Fill(const RECT& place, COLORREF color);
    void Write(const std::string& text, RECT place, UINT alignment);
    [[nodiscard]] std::string Fitting(const Value& value, int width);
    [[nodiscard]] int WidthOf(const std::string& text);

    HDC m_context;
    const GridLook& m_look;
    const RECT m_client;
    const Workbook& m_book;
    const CellPosition m_top;
    const CellPosition m_end;
    const windows::SelectedObject m_font;
};

}  // namespace krv::bench
