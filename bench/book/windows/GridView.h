// GridView: the window that shows the active workbook's sheet, however many rows it has, and lets
// the user select and edit cells. Child of the main window; the user-interface thread's.
#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include "bench/book/BookApplication.h"
#include "bench/book/windows/CellEditor.h"
#include "bench/book/windows/GridLook.h"
#include "bench/book/windows/PictureCache.h"

namespace krv::bench {

class GridView {
 public:
    // The application outlives the view.
    GridView(HWND parent, BookApplication& application);
    GridView(const GridView&) = delete;
    GridView& operator=(const GridView&) = delete;
    ~GridView();

    [[nodiscard]] HWND Handle() const { return m_handle; }
    [[nodiscard]] bool IsEditing() const { return m_editor.IsOpen(); }
    // Takes what is being typed into its cell.
    void FinishEditing() { m_editor.Finish(EditEnd::Stay); }
    // Follows a change of the application.
    void Follow(BookChange change);

 private:
    static LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wide, LPARAM low);
    LRESULT Handle(UINT message, WPARAM wide, LPARAM low);
    void Paint();
    void KeyDown(WPARAM key);
    void Typed(WPARAM character);
    void ButtonDown(POINT point, WPARAM keys);
    void Drag(POINT point);
    void EditActiveCell(const std::string& text);
    void EditEnded(EditEnd end, const std::string& text);
    void ClearSelection();
    void Scroll(int bar, WPARAM request);
    void ScrollTo(CellPosition top);
    void ShowCell(CellPosition cell);
    void UpdateScrollBars();
    void TellPictures();
    [[nodiscard]] RECT Client() const;

    enum class DragKind : std::uint8_t { None, Cells, Rows, Columns };

    BookApplication& m_application;
    HWND m_handle = nullptr;
    std::unique_ptr<GridLook> m_look;
    CellEditor m_editor;
    PictureCache m_pictures;
    std::size_t m_picturesTold = 0;
    CellPosition m_top;
    DragKind m_drag = DragKind::None;
    // The book that the view was scrolled for.
    std::weak_ptr<Workbook> m_shown;
};

}  // namespace krv::bench
