// GridView: the window that shows the active workbook's sheet, however many rows it has. Its user
// selects cells with mouse and arrow keys, types into the active one and clears them with Del.
// Child of the main window; the user-interface thread's.
#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include "bench/book/BookApplication.h"
#include "bench/book/windows/CellEditor.h"
#include "bench/book/windows/GridLook.h"
#include "windows/base/WindowClass.h"

namespace krv::bench {

class GridView : public windows::WindowClass<GridView> {
 public:
    // The application outlives the view.
    GridView(HWND parent, BookApplication& application);

    [[nodiscard]] bool IsEditing() const { return m_editor.IsOpen(); }
    // Takes what is being typed into its cell.
    void FinishEditing() { m_editor.Finish(); }
    // Follows a change of the application.
    void Follow(OfficeChange change);

 private:
    friend WindowClass<GridView>;
    LRESULT HandleMessage(UINT message, WPARAM wide, LPARAM low);
    void Paint();
    void KeyDown(WPARAM key);
    void Typed(wchar_t character);
    void ButtonDown(POINT point, WPARAM keys);
    void Drag(POINT point);
    void TakeTyped(const std::string& text);
    void Scroll(int bar, WORD request);
    void ScrollTo(CellPosition top);
    void ShowCell(CellPosition cell);
    void UpdateScrollBars();
    void TellPictures();
    [[nodiscard]] RECT Client() const;

    BookApplication& m_application;
    GridLook m_look;
    CellEditor m_editor;
    CellPosition m_top;
    // The book that the view was scrolled for.
    std::weak_ptr<Workbook> m_shown;
};

}  // namespace krv::bench
