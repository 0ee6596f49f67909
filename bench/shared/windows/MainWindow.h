// MainWindow: what the main windows of the bench's programs have alike: frame, the generator's
// command bar, status bar, message loop, questions and reports to the user. A program adds its menu
// and the content between the bars. The user-interface thread's.
#pragma once

#include <windows.h>

#include <exception>
#include <memory>
#include <string>
#include <vector>

#include "bench/shared/windows/GeneratorBand.h"
#include "bench/shared/windows/OfficeAutomation.h"
#include "bench/shared/windows/ProgramMenu.h"
#include "common/Error.h"

namespace krv::bench {

// For the system's file dialogs.
struct FileKind {
    // Names and patterns as the system's dialogs take them.
    const wchar_t* filter;
    // Added to a name without one; may be null.
    const wchar_t* ending;
};

class MainWindow : public ProgramWindow {
 public:
    MainWindow(const MainWindow&) = delete;
    MainWindow& operator=(const MainWindow&) = delete;

    [[nodiscard]] HWND Handle() const final { return m_handle; }
    [[nodiscard]] bool IsShown() const final { return IsWindowVisible(m_handle) != FALSE; }
    void Show(bool isShown) final;
    // Without questions, after the call has returned to its caller.
    void Quit() final;

    [[nodiscard]] GeneratorBand& Band() { return *m_band; }
    // Shows the window first; for a screenshot at the top left of the screen, drawn whole,
    // whereupon a line on standard output says that the program is ready.
    void Present(bool isForScreenshot);
    // Runs until the window is closed.
    void Run();

 protected:
    struct Program {
        const wchar_t* className;
        const wchar_t* name;
        const wchar_t* about;
        // Pixels at 96 dots an inch.
        int width;
        int height;
    };

    // Creates the frame, hidden. Program and application outlive the window.
    MainWindow(const Program& program, OfficeApplication& application,
               const std::vector<MenuList>& menu);
    ~MainWindow() override;
    // Once the content is there: from then on it is asked to handle the window's messages.
    void Start();
    // Before the content goes.
    void Stop();

    virtual void Focus() = 0;
    virtual void ArrangeContent(const RECT& place) = 0;
    // A command of the menu other than those that each program has.
    virtual void Command(UINT id) = 0;
    virtual bool MayCloseAll() = 0;
    [[nodiscard]] virtual bool IsWaiting() const = 0;

    void Arrange();
    // The document's name, or nothing when none is open.
    void ShowTitle(const std::string& document);
    void ShowStatus();
    void ShowBars();
    void ShowCursor() const;
    [[nodiscard]] const ProgramMenu& Menu() const { return m_menu; }
    [[nodiscard]] HWND StatusBar() const { return m_statusBar; }

    void Report(const std::string& problem) const;
    // False when the work threw, which has been reported.
    template <class Work>
    bool Try(Work&& work);
    // The full path that the user chooses, or nothing.
    [[nodiscard]] std::string AskForFile(const FileKind& kind, bool toSave,
                                         const std::string& suggested = {}) const;
    // IDYES, IDNO or IDCANCEL.
    [[nodiscard]] int AskToSave(const std::string& document) const;
    [[nodiscard]] int Scaled(int pixels) const;

 private:
    static LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wide, LPARAM low);
    LRESULT Handle(UINT message, WPARAM wide, LPARAM low);

    const Program& m_program;
    OfficeApplication& m_application;
    ProgramMenu m_menu;
    HWND m_handle = nullptr;
    HWND m_statusBar = nullptr;
    bool m_isStarted = false;
    std::unique_ptr<GeneratorBand> m_band;
};

template <class Work>
bool MainWindow::Try(Work&& work) {
    try {
        work();
        return true;
    } catch (const Error& error) {
        Report(error.Description());
    } catch (const std::exception& error) {
        Report(error.what());
    }
    return false;
}

}  // namespace krv::bench
