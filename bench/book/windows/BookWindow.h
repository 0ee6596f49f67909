// BookWindow: krvbook's main window: menu, the generator's command bar, name box and content of the
// active cell, grid, status bar. The user-interface thread's.
#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include "bench/book/BookApplication.h"
#include "bench/book/windows/BookAutomation.h"
#include "bench/book/windows/BookControl.h"
#include "bench/book/windows/GridView.h"
#include "bench/shared/windows/MainWindow.h"

namespace krv::bench {

namespace BookCommand {
constexpr UINT Close = StandardCommand::FirstOwn;
// One for each open book.
constexpr UINT FirstBook = 200;
constexpr UINT LastBook = 999;
}  // namespace BookCommand

class BookWindow final : public MainWindow, private BookObserver {
 public:
    // The application outlives the window, which is created hidden.
    explicit BookWindow(BookApplication& application);
    ~BookWindow() override;

    [[nodiscard]] bool IsEditing() const override { return m_grid->IsEditing(); }
    // Asks for changes of the control, too, before a book is closed. It outlives the window's use.
    void FollowControl(const BookControl& control) { m_control = &control; }
    // Opens a book; shows what is wrong with the file. False when it isn't open.
    bool Open(const std::string& path);

 private:
    static const Program BookProgram;

    static LRESULT CALLBACK NameBoxProcedure(HWND box, UINT message, WPARAM wide, LPARAM low,
                                             UINT_PTR, DWORD_PTR window);
    void CreateBoxes();
    void ShowBooks();
    void ListBooks();
    void ShowPlace();
    void GoToName();
    bool Save(Workbook& book, bool askForName);
    // Offers to save changes; false when the user would rather not close.
    bool MayClose(const std::shared_ptr<Workbook>& book);

    void Focus() override { SetFocus(m_grid->Handle()); }
    void ArrangeContent(const RECT& place) override;
    void Command(UINT id) override;
    bool MayCloseAll() override;
    [[nodiscard]] bool IsWaiting() const override {
        return m_application.Cursor() == BookApplication::WaitCursor;
    }

    void OnWorkbookActivate(Workbook&) override {}
    void OnWorkbookDeactivate(Workbook&) override {}
    void OnChanged(BookChange change) override;

    BookApplication& m_application;
    HWND m_nameBox = nullptr;
    HWND m_content = nullptr;
    const BookControl* m_control = nullptr;
    HFONT m_font = nullptr;
    std::unique_ptr<GridView> m_grid;
};

}  // namespace krv::bench
