#include "bench/book/windows/GridView.h"

#include <windowsx.h>

#include <algorithm>
#include <utility>

#include "bench/book/CellText.h"
#include "bench/book/windows/GridPainter.h"
#include "windows/base/DeviceContext.h"
#include "windows/base/DotsPerInch.h"
#include "windows/base/Handles.h"

namespace krv::bench {
namespace {

constexpr const wchar_t* ClassName = L"KrvBookGrid";
constexpr int RowsOfWheel = 3;

bool IsDown(int key) {
    return GetKeyState(key) < 0;
}

bool IsSeenInSheet(OfficeChange change) {
    return change != OfficeChange::StatusBar && change != OfficeChange::Cursor &&
           change != OfficeChange::CommandBars;
}

}  // namespace

GridView::GridView(HWND parent, BookApplication& application)
    : m_application(application),
      m_look(windows::DotsPerInch(parent)),
      m_editor([this](const std::string& text) { TakeTyped(text); }) {
    Create({ClassName, windows::WindowKind::NoBackground},
           {.style = WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_VSCROLL | WS_HSCROLL,
            .parent = parent});
}

void GridView::Follow(OfficeChange change) {
    const auto book = m_application.ActiveBook();
    if (change == OfficeChange::Documents && m_shown.lock() != book) {
        m_editor.GiveUp();
        m_shown = book;
        m_top = {};
        change = OfficeChange::Selection;
    }
    if (change == OfficeChange::Selection && book) {
        ShowCell(book->Selected().CellToShow());
    }
    if (m_application.IsScreenUpdating() && IsSeenInSheet(change)) {
        UpdateScrollBars();
        TellPictures();
        InvalidateRect(Handle(), nullptr, FALSE);
    }
}

// The window's text says how many pictures there are, for programs that look at the window.
void GridView::TellPictures() {
    const auto book = m_application.ActiveBook();
    const std::size_t count = book ? book->Pictures().size() : 0;
    const std::wstring text = std::to_wstring(count) + (count == 1 ? L" picture" : L" pictures");
    SetWindowTextW(Handle(), count == 0 ? L"" : text.c_str());
}

LRESULT GridView::HandleMessage(UINT message, WPARAM wide, LPARAM low) {
    const POINT point{GET_X_LPARAM(low), GET_Y_LPARAM(low)};
    switch (message) {
        case WM_PAINT:
            Paint();
            return 0;
        case WM_ERASEBKGND:
            return 1;
        case WM_SIZE:
            UpdateScrollBars();
            return 0;
        case WM_KEYDOWN:
            KeyDown(wide);
            return 0;
        case WM_CHAR:
            Typed(static_cast<wchar_t>(wide));
            return 0;
        case WM_VSCROLL:
            Scroll(SB_VERT, LOWORD(wide));
            return 0;
        case WM_HSCROLL:
            Scroll(SB_HORZ, LOWORD(wide));
            return 0;
        case WM_MOUSEWHEEL:
            ScrollTo({m_top.row - GET_WHEEL_DELTA_WPARAM(wide) * RowsOfWheel / WHEEL_DELTA,
                      m_top.column});
            return 0;
        case WM_LBUTTONDOWN:
            ButtonDown(point, wide);
            return 0;
        case WM_MOUSEMOVE:
            // Moves without the button come, too, as when the mouse is captured.
            if ((wide & MK_LBUTTON) != 0) {
                Drag(point);
            }
            return 0;
        case WM_LBUTTONUP:
            ReleaseCapture();
            return 0;
        default:
            return DefaultMessage(message, wide, low);
    }
}

void GridView::Paint() {
    const windows::PaintContext window(Handle());
    const RECT client = Client();
    // Drawn aside first, so that nothing flickers.
    const windows::MemoryContext aside(CreateCompatibleDC(window.Get()));
    const windows::Bitmap bitmap(CreateCompatibleBitmap(window.Get(), client.right, client.bottom));
    const windows::SelectedObject selected(aside.get(), bitmap.get());
    if (const auto book = m_application.ActiveBook()) {
        GridPainter(aside.get(), m_look, client, *book, m_top).Paint();
    } else {
        FillRect(aside.get(), &client, GetSysColorBrush(COLOR_APPWORKSPACE));
    }
    BitBlt(window.Get(), 0, 0, client.right, client.bottom, aside.get(), 0, 0, SRCCOPY);
}

void GridView::KeyDown(WPARAM key) {
    const auto book = m_application.ActiveBook();
    if (!book) {
        return;
    }
    const auto step = [&](std::int32_t rows, std::int32_t columns) {
        book->ChangeSelection(
            [&](Selection& selection) { selection.Step(rows, columns, IsDown(VK_SHIFT)); });
    };
    switch (key) {
        case VK_UP:
            return step(-1, 0);
        case VK_DOWN:
            return step(1, 0);
        case VK_LEFT:
            return step(0, -1);
        case VK_RIGHT:
            return step(0, 1);
        case VK_DELETE:
            return book->ChangeCells([&](Sheet& sheet) {
                for (const CellArea& area : book->Selected().Areas()) {
                    sheet.Clear(area);
                }
            });
        default:
            return;
    }
}

// The first character opens the box over the cell.
void GridView::Typed(wchar_t character) {
    constexpr wchar_t FirstPrintable = 0x20;
    if (const auto book = m_application.ActiveBook(); book && character >= FirstPrintable) {
        const CellPosition cell = book->Selected().ActiveCell();
        ShowCell(cell);
        m_editor.Open(Handle(), m_look.PlaceOf(cell, m_top), m_look.font.get(), {character});
    }
}

void GridView::TakeTyped(const std::string& text) {
    const auto book = m_application.ActiveBook();
    if (book) {
        book->SetCell(book->Selected().ActiveCell(), ParseCellText(text));
        book->ChangeSelection([](Selection& selection) { selection.Step(1, 0, false); });
    }
}

void GridView::ButtonDown(POINT point, WPARAM keys) {
    const auto book = m_application.ActiveBook();
    SetFocus(Handle());
    if (!book || point.x < m_look.headingWidth || point.y < m_look.headingHeight) {
        return;
    }
    const CellPosition cell = m_look.CellAt(point, m_top);
    book->ChangeSelection([&](Selection& selection) {
        if ((keys & MK_SHIFT) != 0) {
            selection.ExtendTo(cell);
        } else {
            selection.MoveTo(cell, (keys & MK_CONTROL) != 0);
        }
    });
    SetCapture(Handle());
}

void GridView::Drag(POINT point) {
    const auto book = m_application.ActiveBook();
    const CellPosition cell = m_look.CellAt(point, m_top);
    if (GetCapture() == Handle() && book && !(cell == book->Selected().CellToShow())) {
        book->ChangeSelection([&](Selection& selection) { selection.ExtendTo(cell); });
    }
}

void GridView::Scroll(int bar, WORD request) {
    SCROLLINFO position{};
    position.cbSize = sizeof position;
    position.fMask = SIF_ALL;
    GetScrollInfo(Handle(), bar, &position);
    const int page = std::max(1, static_cast<int>(position.nPage) - 1);
    int target = position.nPos;
    switch (request) {
        case SB_LINEUP:
            target -= 1;
            break;
        case SB_LINEDOWN:
            target += 1;
            break;
        case SB_PAGEUP:
            target -= page;
            break;
        case SB_PAGEDOWN:
            target += page;
            break;
        case SB_THUMBTRACK:
            target = position.nTrackPos;
            break;
        default:
            return;
    }
    ScrollTo(bar == SB_VERT ? CellPosition{target, m_top.column} : CellPosition{m_top.row, target});
}

void GridView::ScrollTo(CellPosition top) {
    m_editor.Finish();
    m_top = OnSheet(top);
    UpdateScrollBars();
    InvalidateRect(Handle(), nullptr, FALSE);
}

void GridView::ShowCell(CellPosition cell) {
    const RECT client = Client();
    const auto moved = [](std::int32_t first, std::int32_t wanted, std::int32_t count) {
        return wanted < first ? wanted : std::max(first, wanted - count + 1);
    };
    const CellPosition top{moved(m_top.row, cell.row, m_look.RowsIn(client)),
                           moved(m_top.column, cell.column, m_look.ColumnsIn(client))};
    if (!(top == m_top)) {
        ScrollTo(top);
    }
}

// The bars span what is in use and a page beyond, so that a short sheet's thumb isn't a hair.
void GridView::UpdateScrollBars() {
    const auto book = m_application.ActiveBook();
    const RECT client = Client();
    const auto set = [&](int bar, int used, int top, int page, int limit) {
        SCROLLINFO range{};
        range.cbSize = sizeof range;
        range.fMask = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_DISABLENOSCROLL;
        range.nMax = std::min(std::max({used, top + page, page}) + page, limit) - 1;
        range.nPage = static_cast<UINT>(page);
        range.nPos = top;
        SetScrollInfo(Handle(), bar, &range, TRUE);
    };
    set(SB_VERT, book ? book->Cells().UsedRows() : 0, m_top.row, m_look.RowsIn(client),
        SheetLimit::Rows);
    set(SB_HORZ, book ? book->Cells().UsedColumns() : 0, m_top.column, m_look.ColumnsIn(client),
        SheetLimit::Columns);
}

RECT GridView::Client() const {
    RECT client{};
    GetClientRect(Handle(), &client);
    return client;
}

}  // namespace krv::bench
