#include "bench/book/windows/GridView.h"

#include <windowsx.h>

#include <algorithm>
#include <utility>

#include "bench/book/CellText.h"
#include "bench/book/windows/GridKeys.h"
#include "bench/book/windows/GridPainter.h"
#include "windows/base/WideText.h"
#include "windows/forms/Scale.h"

namespace krv::bench {
namespace {

constexpr const wchar_t* ClassName = L"KrvBookGrid";
constexpr UINT_PTR DragTimer = 1;
constexpr UINT DragIntervalMs = 50;
constexpr int RowsOfWheel = 3;

bool IsDown(int key) {
    return GetKeyState(key) < 0;
}

HeldKeys KeysHeld() {
    return {IsDown(VK_SHIFT), IsDown(VK_CONTROL)};
}

POINT PointOf(LPARAM low) {
    return {GET_X_LPARAM(low), GET_Y_LPARAM(low)};
}

}  // namespace

GridView::GridView(HWND parent, BookApplication& application)
    : m_application(application),
      m_look(std::make_unique<GridLook>(windows::DotsPerInch(parent))),
      m_editor([this](EditEnd end, const std::string& text) { EditEnded(end, text); }) {
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.style = CS_DBLCLKS;
    description.lpfnWndProc = &GridView::WindowProcedure;
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.lpszClassName = ClassName;
    RegisterClassExW(&description);
    CreateWindowExW(0, ClassName, L"",
                    WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_VSCROLL | WS_HSCROLL, 0, 0, 0, 0,
                    parent, nullptr, nullptr, this);
}

GridView::~GridView() {
    SetWindowLongPtrW(m_handle, GWLP_USERDATA, 0);
}

void GridView::Follow(BookChange change) {
    if (change == BookChange::Books && m_shown.lock() != m_application.ActiveBook()) {
        m_editor.Finish(EditEnd::Cancel);
        m_shown = m_application.ActiveBook();
        m_top = {};
        change = BookChange::Selection;
    }
    if (change == BookChange::Selection && m_application.ActiveBook()) {
        ShowCell(m_application.ActiveBook()->Selected().CellToShow());
    }
    if (m_application.IsScreenUpdating() &&
        (change == BookChange::Books || change == BookChange::Cells ||
         change == BookChange::Selection || change == BookChange::ScreenUpdating)) {
        UpdateScrollBars();
        TellPictures();
        InvalidateRect(m_handle, nullptr, FALSE);
    }
}

// For those who can't see the sheet.
void GridView::TellPictures() {
    const auto& book = m_application.ActiveBook();
    const std::size_t count = book ? book->Pictures().size() : 0;
    if (std::exchange(m_picturesTold, count) != count) {
        const std::wstring text =
            std::to_wstring(count) + (count == 1 ? L" picture" : L" pictures");
        SetWindowTextW(m_handle, count == 0 ? L"" : text.c_str());
    }
}

LRESULT CALLBACK GridView::WindowProcedure(HWND window, UINT message, WPARAM wide, LPARAM low) {
    if (message == WM_NCCREATE) {
        auto* view =
            static_cast<GridView*>(reinterpret_cast<const CREATESTRUCTW*>(low)->lpCreateParams);
        view->m_handle = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(view));
    }
    auto* view = reinterpret_cast<GridView*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    return view != nullptr ? view->Handle(message, wide, low)
                           : DefWindowProcW(window, message, wide, low);
}

LRESULT GridView::Handle(UINT message, WPARAM wide, LPARAM low) {
    switch (message) {
        case WM_PAINT:
            Paint();
            return 0;
        case WM_ERASEBKGND:
            return 1;
        case WM_SIZE:
            UpdateScrollBars();
            return 0;
        case WM_GETDLGCODE:
            return DLGC_WANTALLKEYS;
        case WM_KEYDOWN:
            KeyDown(wide);
            return 0;
        case WM_CHAR:
            Typed(wide);
            return 0;
        case WM_VSCROLL:
            Scroll(SB_VERT, wide);
            return 0;
        case WM_HSCROLL:
            Scroll(SB_HORZ, wide);
            return 0;
        case WM_MOUSEWHEEL:
            ScrollTo({m_top.row - GET_WHEEL_DELTA_WPARAM(wide) * RowsOfWheel / WHEEL_DELTA,
                      m_top.column});
            return 0;
        case WM_LBUTTONDOWN:
            ButtonDown(PointOf(low), wide);
            return 0;
        case WM_LBUTTONDBLCLK:
            KeyDown(VK_F2);
            return 0;
        case WM_MOUSEMOVE:
            Drag(PointOf(low));
            return 0;
        case WM_LBUTTONUP:
            ReleaseCapture();
            return 0;
        case WM_CAPTURECHANGED:
            m_drag = DragKind::None;
            KillTimer(m_handle, DragTimer);
            return 0;
        case WM_TIMER: {
            // The mouse may rest outside while the view goes on scrolling.
            POINT point{};
            GetCursorPos(&point);
            ScreenToClient(m_handle, &point);
            Drag(point);
            return 0;
        }
        default:
            return DefWindowProcW(m_handle, message, wide, low);
    }
}

void GridView::Paint() {
    PAINTSTRUCT paint;
    const HDC window = BeginPaint(m_handle, &paint);
    const RECT client = Client();
    // Drawn aside first, so that nothing flickers.
    const HDC aside = CreateCompatibleDC(window);
    const HBITMAP bitmap = CreateCompatibleBitmap(window, client.right, client.bottom);
    const HGDIOBJ before = SelectObject(aside, bitmap);
    if (const auto book = m_application.ActiveBook()) {
        GridPainter(aside, *m_look, client, *book, m_top, m_pictures).Paint();
    } else {
        FillRect(aside, &client, GetSysColorBrush(COLOR_APPWORKSPACE));
    }
    BitBlt(window, 0, 0, client.right, client.bottom, aside, 0, 0, SRCCOPY);
    SelectObject(aside, before);
    DeleteObject(bitmap);
    DeleteDC(aside);
    EndPaint(m_handle, &paint);
}

void GridView::KeyDown(WPARAM key) {
    const auto book = m_application.ActiveBook();
    if (!book || SelectByKey(*book, key, KeysHeld(), m_look->RowsIn(Client()))) {
        return;
    }
    if (key == VK_F2) {
        EditActiveCell(CellEntry(book->Cells().At(book->Selected().ActiveCell())));
    } else if (key == VK_DELETE) {
        ClearSelection();
    }
}

void GridView::Typed(WPARAM character) {
    constexpr WPARAM FirstPrintable = 0x20;
    if (m_application.ActiveBook() && character >= FirstPrintable && character != 0x7F &&
        !IsDown(VK_CONTROL)) {
        const auto typed = static_cast<wchar_t>(character);
        EditActiveCell(windows::ToUtf8({&typed, 1}));
    }
}

void GridView::ButtonDown(POINT point, WPARAM keys) {
    const auto book = m_application.ActiveBook();
    SetFocus(m_handle);
    if (!book) {
        return;
    }
    const bool shift = (keys & MK_SHIFT) != 0;
    const bool control = (keys & MK_CONTROL) != 0;
    const bool inRowHeadings = point.x < m_look->headingWidth;
    const bool inColumnHeadings = point.y < m_look->headingHeight;
    const CellPosition cell = m_look->CellAt(point, m_top);
    book->ChangeSelection([&](Selection& selection) {
        if (inRowHeadings && inColumnHeadings) {
            selection.Select({WholeSheet});
        } else if (inRowHeadings) {
            selection.SelectRows(cell.row, shift, control);
        } else if (inColumnHeadings) {
            selection.SelectColumns(cell.column, shift, control);
        } else if (shift) {
            selection.ExtendTo(cell);
        } else {
            selection.MoveTo(cell, control);
        }
    });
    if (!(inRowHeadings && inColumnHeadings)) {
        SetCapture(m_handle);
        SetTimer(m_handle, DragTimer, DragIntervalMs, nullptr);
        m_drag = inRowHeadings      ? DragKind::Rows
                 : inColumnHeadings ? DragKind::Columns
                                    : DragKind::Cells;
    }
}

void GridView::Drag(POINT point) {
    const auto book = m_application.ActiveBook();
    if (m_drag == DragKind::None || !book) {
        return;
    }
    // While cells are dragged over the headings the view scrolls by a cell at a time.
    CellPosition cell = m_look->CellAt(point, m_top);
    cell = OnSheet({std::max(cell.row, m_top.row - 1), std::max(cell.column, m_top.column - 1)});
    const CellPosition before = book->Selected().MovingCorner();
    if ((m_drag == DragKind::Rows || cell.column == before.column) &&
        (m_drag == DragKind::Columns || cell.row == before.row)) {
        return;
    }
    book->ChangeSelection([&](Selection& selection) {
        switch (m_drag) {
            case DragKind::Rows:
                selection.SelectRows(cell.row, true);
                break;
            case DragKind::Columns:
                selection.SelectColumns(cell.column, true);
                break;
            default:
                selection.ExtendTo(cell);
                break;
        }
    });
}

void GridView::EditActiveCell(const std::string& text) {
    const CellPosition cell = m_application.ActiveBook()->Selected().ActiveCell();
    ShowCell(cell);
    m_editor.Open(m_handle, m_look->PlaceOf(cell, m_top), m_look->font, text);
}

void GridView::EditEnded(EditEnd end, const std::string& text) {
    const auto book = m_application.ActiveBook();
    if (!book || end == EditEnd::Cancel) {
        return;
    }
    book->SetCell(book->Selected().ActiveCell(), ParseCellText(text));
    const auto step = [&](Direction direction) {
        book->ChangeSelection([&](Selection& selection) { selection.Step(direction, 1, false); });
    };
    switch (end) {
        case EditEnd::Down:
            step(Direction::Down);
            break;
        case EditEnd::Up:
            step(Direction::Up);
            break;
        case EditEnd::Right:
            step(Direction::Right);
            break;
        case EditEnd::Left:
            step(Direction::Left);
            break;
        default:
            break;
    }
}

void GridView::ClearSelection() {
    const auto book = m_application.ActiveBook();
    book->ChangeCells([&](Sheet& sheet) {
        for (const CellArea& area : book->Selected().Areas()) {
            sheet.Clear(area);
        }
    });
}

void GridView::Scroll(int bar, WPARAM request) {
    SCROLLINFO position{};
    position.cbSize = sizeof position;
    position.fMask = SIF_ALL;
    GetScrollInfo(m_handle, bar, &position);
    const int page = std::max(1, static_cast<int>(position.nPage) - 1);
    int target = position.nPos;
    switch (LOWORD(request)) {
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
        case SB_THUMBPOSITION:
            target = position.nTrackPos;
            break;
        case SB_TOP:
            target = 0;
            break;
        case SB_BOTTOM:
            target = position.nMax;
            break;
        default:
            return;
    }
    ScrollTo(bar == SB_VERT ? CellPosition{target, m_top.column} : CellPosition{m_top.row, target});
}

void GridView::ScrollTo(CellPosition top) {
    m_editor.Finish(EditEnd::Stay);
    m_top = OnSheet(top);
    UpdateScrollBars();
    InvalidateRect(m_handle, nullptr, FALSE);
}

void GridView::ShowCell(CellPosition cell) {
    const RECT client = Client();
    const auto moved = [](std::int32_t first, std::int32_t wanted, std::int32_t count) {
        return wanted < first ? wanted : std::max(first, wanted - count + 1);
    };
    const CellPosition top{moved(m_top.row, cell.row, m_look->RowsIn(client)),
                           moved(m_top.column, cell.column, m_look->ColumnsIn(client))};
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
        SetScrollInfo(m_handle, bar, &range, TRUE);
    };
    set(SB_VERT, book ? book->Cells().UsedRows() : 0, m_top.row, m_look->RowsIn(client),
        SheetLimit::Rows);
    set(SB_HORZ, book ? book->Cells().UsedColumns() : 0, m_top.column, m_look->ColumnsIn(client),
        SheetLimit::Columns);
}

RECT GridView::Client() const {
    RECT client{};
    GetClientRect(m_handle, &client);
    return client;
}

}  // namespace krv::bench
