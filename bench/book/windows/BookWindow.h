// BookWindow: krvbook's main window, whose content is a name box and the grid. The user-interface
// thread's.
#pragma once

#include <windows.h>

#include <optional>

#include "bench/book/BookApplication.h"
#include "bench/book/windows/GridView.h"
#include "bench/shared/windows/MainWindow.h"

namespace krv::bench {

class BookWindow final : public MainWindow {
 public:
    // The application outlives the window, which is created hidden.
    explicit BookWindow(BookApplication& application);
    ~BookWindow() override;

    [[nodiscard]] bool IsEditing() const override { return m_grid->IsEditing(); }

 private:
    static const Look BookLook;

    LRESULT HandleNameBoxMessage(HWND box, UINT message, WPARAM wide, LPARAM low);
    void CreateNameBox();
    // The address of what is selected, into the name box.
    void ShowPlace();
    // Selects what the name box says.
    void GoToName();

    void Focus() override { SetFocus(m_grid->Handle()); }
    void ArrangeContent(const RECT& place) override;
    void ShowChange(OfficeChange change) override;
    void FinishEditing() override { m_grid->FinishEditing(); }

    BookApplication& m_application;
    HWND m_nameBox = nullptr;
    windows::Font m_font;
    std::optional<GridView> m_grid;
};

}  // namespace krv::bench
