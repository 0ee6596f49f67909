#include "bench/book/windows/GridPainter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include "bench/book/CellText.h"
#include "bench/shared/windows/ShownPicture.h"
#include "common/Error.h"
#include "windows/base/WideText.h"

namespace krv::bench {
namespace {

constexpr COLORREF LineColor = RGB(217, 217, 217);
constexpr COLORREF SelectionColor = RGB(204, 222, 245);

UINT AlignmentOf(const Value& value) {
    return std::holds_alternative<std::string>(value) ? DT_LEFT : DT_RIGHT;
}

// One past the last row and column that are in view, if only in part.
CellPosition EndOfView(const GridLook& look, const RECT& client, CellPosition top) {
    return {std::min(top.row + look.RowsIn(client) + 1, SheetLimit::Rows),
            std::min(top.column + look.ColumnsIn(client) + 1, SheetLimit::Columns)};
}

}  // namespace

GridPainter::GridPainter(HDC context, const GridLook& look, const RECT& client,
                         const Workbook& book, CellPosition top)
    : m_context(context),
      m_look(look),
      m_client(client),
      m_book(book),
      m_top(top),
      m_end(EndOfView(look, client, top)),
      m_font(context, look.font.get()) {
    SetBkMode(context, TRANSPARENT);
}

void GridPainter::Paint() {
    Fill(m_client, GetSysColor(COLOR_WINDOW));
    PaintCells();
    PaintSelection();
    PaintPictures();
    PaintHeadings();
}

// Pictures lie over the cells, wherever the view has been scrolled to.
void GridPainter::PaintPictures() {
    const RECT first = m_look.PlaceOf(m_top, m_top);
    const double left = first.left - m_top.column * static_cast<double>(m_look.columnWidth);
    const double top = first.top - m_top.row * static_cast<double>(m_look.rowHeight);
    const auto pixels = [&](double from, double points) {
        return static_cast<LONG>(std::lround(from + points * m_look.pixelsPerPoint));
    };
    for (const DocumentPicture& picture : m_book.Pictures()) {
        const double pictureLeft = picture.left.value_or(0);
        const double pictureTop = picture.top.value_or(0);
        const RECT place{pixels(left, pictureLeft), pixels(top, pictureTop),
                         pixels(left, pictureLeft + picture.size.width),
                         pixels(top, pictureTop + picture.size.height)};
        RECT seen;
        if (IntersectRect(&seen, &place, &m_client) != FALSE) {
            PaintPicture(picture, place);
        }
    }
}

// A picture that can't be read is drawn as a frame.
void GridPainter::PaintPicture(const DocumentPicture& picture, const RECT& place) {
    try {
        ShownPicture(picture.bytes).Draw(m_context, place);
    } catch (const Error&) {
        FrameRect(m_context, &place, GetSysColorBrush(COLOR_GRAYTEXT));
    }
}

void GridPainter::PaintCells() {
    SetTextColor(m_context, GetSysColor(COLOR_WINDOWTEXT));
    for (std::int32_t row = m_top.row; row < m_end.row; ++row) {
        for (std::int32_t column = m_top.column; column < m_end.column; ++column) {
            PaintCell({row, column});
        }
    }
}

void GridPainter::PaintCell(CellPosition cell) {
    RECT place = m_look.PlaceOf(cell, m_top);
    const Selection& selection = m_book.Selected();
    if (selection.Contains(cell) && !(cell == selection.ActiveCell())) {
        Fill(place, SelectionColor);
    }
    Fill({place.left, place.bottom - 1, place.right, place.bottom}, LineColor);
    Fill({place.right - 1, place.top, place.right, place.bottom}, LineColor);
    const Value value = m_book.Cells().At(cell);
    if (!std::holds_alternative<EmptyValue>(value)) {
        InflateRect(&place, -m_look.padding, 0);
        Write(Fitting(value, place.right - place.left), place, AlignmentOf(value));
    }
}

// A number that is too wide is shown with fewer digits, never cut.
std::string GridPainter::Fitting(const Value& value, int width) {
    std::string text = CellText(value);
    const auto* number = std::get_if<double>(&value);
    for (int digits = 14; number != nullptr && digits > 0 && WidthOf(text) > width; --digits) {
        std::array<char, 40> shorter;
        std::snprintf(shorter.data(), shorter.size(), "%.*G", digits, *number);
        text = shorter.data();
    }
    return text;
}

void GridPainter::PaintHeadings() {
    const auto& areas = m_book.Selected().Areas();
    for (std::int32_t row = m_top.row; row < m_end.row; ++row) {
        const bool isSelected = std::any_of(areas.begin(), areas.end(), [row](const auto& area) {
            return area.Contains({row, area.column});
        });
        const RECT cell = m_look.PlaceOf({row, m_top.column}, m_top);
        PaintHeading({0, cell.top, m_look.headingWidth, cell.bottom}, std::to_string(row + 1),
                     isSelected);
    }
    for (std::int32_t column = m_top.column; column < m_end.column; ++column) {
        const bool isSelected = std::any_of(areas.begin(), areas.end(), [column](const auto& area) {
            return area.Contains({area.row, column});
        });
        const RECT cell = m_look.PlaceOf({m_top.row, column}, m_top);
        PaintHeading({cell.left, 0, cell.right, m_look.headingHeight}, ColumnName(column),
                     isSelected);
    }
    PaintHeading({0, 0, m_look.headingWidth, m_look.headingHeight}, "", false);
}

void GridPainter::PaintHeading(RECT place, const std::string& text, bool isSelected) {
    Fill(place, isSelected ? SelectionColor : GetSysColor(COLOR_BTNFACE));
    Fill({place.left, place.bottom - 1, place.right, place.bottom}, GetSysColor(COLOR_BTNSHADOW));
    Fill({place.right - 1, place.top, place.right, place.bottom}, GetSysColor(COLOR_BTNSHADOW));
    SetTextColor(m_context, GetSysColor(COLOR_BTNTEXT));
    Write(text, place, DT_CENTER);
}

// A frame round each area and round the active cell.
void GridPainter::PaintSelection() {
    const HBRUSH brush = GetSysColorBrush(COLOR_HIGHLIGHT);
    const auto frame = [&](const CellArea& area) {
        // Beyond the view there is nothing to draw, and pixels would overflow.
        const CellPosition first{std::max(area.row, m_top.row - 1),
                                 std::max(area.column, m_top.column - 1)};
        const CellPosition last{std::min(area.Last().row, m_end.row),
                                std::min(area.Last().column, m_end.column)};
        if (first.row > last.row || first.column > last.column) {
            return;
        }
        RECT place = m_look.PlaceOf(first, m_top);
        const RECT end = m_look.PlaceOf(last, m_top);
        // Two pixels wide, of which the headings may hide one.
        place = {place.left - 1, place.top - 1, end.right, end.bottom};
        FrameRect(m_context, &place, brush);
        InflateRect(&place, -1, -1);
        FrameRect(m_context, &place, brush);
    };
    const auto& areas = m_book.Selected().Areas();
    std::for_each(areas.begin(), areas.end(), frame);
    const CellPosition active = m_book.Selected().ActiveCell();
    frame({active.row, active.column, 1, 1});
}

void GridPainter::Fill(const RECT& place, COLORREF color) {
    SetDCBrushColor(m_context, color);
    FillRect(m_context, &place, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

void GridPainter::Write(const std::string& text, RECT place, UINT alignment) {
    const std::wstring wide = windows::ToWide(text);
    DrawTextW(m_context, wide.c_str(), static_cast<int>(wide.size()), &place,
              alignment | DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
}

int GridPainter::WidthOf(const std::string& text) {
    const std::wstring wide = windows::ToWide(text);
    SIZE size{};
    GetTextExtentPoint32W(m_context, wide.c_str(), static_cast<int>(wide.size()), &size);
    return size.cx;
}

}  // namespace krv::bench
