// BookWindow: krvbook's main window: menu, the generator's command bar, name box and content of the
// active cell, grid, status bar. The user-interface thread's.
#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include "bench/office/BookApplication.h"
#include "bench/office/windows/BookAutomation.h"
#include "bench/office/windows/BookControl.h"
#include "bench/office/windows/BookMenu.h"
#include "bench/office/windows/GeneratorBand.h"
#include "bench/office/windows/GridView.h"

namespace krv::bench {

class BookWindow final : public ProgramWindow, private BookObserver {
 public:
    // The application outlives the window, which is created hidden.
    explicit BookWindow(BookApplication& application);
    BookWindow(const BookWindow&) = delete;
    BookWindow& operator=(const BookWindow&) = delete;
    ~BookWindow() override;

    [[nodiscard]] HWND Handle() const override { return m_handle; }
    [[nodiscard]] bool IsShown() const override { return IsWindowVisible(m_handle) != FALSE; }
    void Show(bool isShown) override;
    [[nodiscard]] bool IsEditing() const override { return m_grid->IsEditing(); }
    // Without questions, after the call has returned to its caller.
    void Quit() override;

    [[nodiscard]] GeneratorBand& Band() { return *m_band; }
    // Asks for changes of the control, too, before a book is closed. It outlives the window's use.
    void FollowControl(const BookControl& control) { m_control = &control; }
    // Opens a book; tells the user what is wrong with the file. False when it isn't open.
    bool Open(const std::string& path);
    // Runs until the window is closed.
    void Run();
    void Paint();

 private:
    static LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wide, LPARAM low);
    static LRESULT CALLBACK NameBoxProcedure(HWND box, UINT message, WPARAM wide, LPARAM low,
                                             UINT_PTR, DWORD_PTR window);
    LRESULT Handle(UINT message, WPARAM wide, LPARAM low);
    void CreateParts();
    void Arrange();
    void Command(UINT id);
    void ShowBooks();
    void ShowPlace();
    void ShowStatus();
    void GoToName();
    bool Save(Workbook& book, bool askForName);
    // Offers to save changes; false when the user would rather not close.
    bool MayClose(const std::shared_ptr<Workbook>& book);
    bool MayCloseAll();
    void Report(const std::string& problem) const;
    template <class Work>
    bool Try(Work&& work);
    [[nodiscard]] std::string AskForFile(bool toSave, const std::string& suggested) const;
    [[nodiscard]] int Scaled(int pixels) const;

    void OnWorkbookActivate(Workbook&) override {}
    void OnWorkbookDeactivate(Workbook&) override {}
    void OnChanged(BookChange change) override;

    BookApplication& m_application;
    HWND m_handle = nullptr;
    HWND m_nameBox = nullptr;
    HWND m_content = nullptr;
    HWND m_statusBar = nullptr;
    BookMenu m_menu;
    const BookControl* m_control = nullptr;
    HFONT m_font = nullptr;
    std::unique_ptr<GeneratorBand> m_band;
    std::unique_ptr<GridView> m_grid;
};

}  // namespace krv::bench
