// MainWindow: what the main windows of the bench's programs have alike: frame, menu, the ribbon of
// the add-ins, status bar, message loop, and the commands that open, save and close documents. A
// program adds the content between the bars. The user-interface thread's.
#pragma once

#include <windows.h>

#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "bench/shared/windows/OfficeAutomation.h"
#include "bench/shared/windows/ProgramMenu.h"
#include "bench/shared/windows/RibbonBand.h"
#include "bench/shared/windows/RibbonView.h"
#include "common/Error.h"
#include "windows/base/WindowClass.h"

namespace krv::bench {

class MainWindow : public ProgramWindow,
                   public windows::WindowClass<MainWindow>,
                   private OfficeObserver {
 public:
    // Without questions, after the call has returned to its caller.
    void Quit() final;
    [[nodiscard]] HWND MainHandle() const final { return Handle(); }

    // The band shows the ribbon of the automation's add-ins, and their command bars, until it is
    // released, which must come before the automation ends.
    void ShowRibbon(OfficeAutomation& automation);
    void ReleaseRibbon();

    // Opens each file and tells the user what is wrong with it: in a message, or on standard error
    // and in the status bar where a user may not be there to close one. There is a document
    // afterwards.
    void OpenFiles(const std::vector<std::string>& paths, bool isUnattended);
    // Shows the window first; for a screenshot at the top left of the screen, drawn whole,
    // whereupon a line on standard output says that the program is ready.
    void Present(bool isForScreenshot);
    // Runs until the window is closed.
    void Run();

 protected:
    struct Look {
        const wchar_t* className;
        const wchar_t* name;
        const wchar_t* about;
        // Names and patterns as the system's file dialogs take them.
        const wchar_t* fileFilter;
        // Added to a file's name without an ending.
        const wchar_t* fileEnding;
        // Pixels at 96 dots an inch.
        int width;
        int height;
    };

    // Creates the frame, hidden. The look and the application outlive the window.
    MainWindow(const Look& look, OfficeApplication& application);
    ~MainWindow() override;
    // Once the content is there: from then on it follows the application and the window's size.
    void Start();
    // Before the content goes.
    void Stop();

    virtual void Focus() = 0;
    virtual void ArrangeContent(const RECT& place) = 0;
    virtual void ShowChange(OfficeChange change) = 0;
    // Before a command: what is being typed goes to its place.
    virtual void FinishEditing() {}

    void Report(const std::string& problem) const;
    // False when the work threw, which has been reported.
    template <class Work>
    bool Try(Work&& work) const;
    [[nodiscard]] int Scaled(int pixels) const;

 private:
    friend WindowClass<MainWindow>;
    LRESULT HandleMessage(UINT message, WPARAM wide, LPARAM low);
    void OnChanged(OfficeChange change) override;
    void OnOpened(OfficeDocument& opened) override;
    // Once the program has time.
    void PostRibbon();
    void RefreshRibbon();
    void Command(UINT id);
    void Arrange();
    void ShowDocuments();
    void ShowStatus();
    void ShowCursor() const;
    bool Open(const std::string& path);
    bool Save(OfficeDocument& document, bool askForName);
    // Offers to save changes; false when the user would rather not close.
    bool MayClose(const std::shared_ptr<OfficeDocument>& document);
    bool MayCloseAll();
    // The full path that the user chooses, or nothing.
    [[nodiscard]] std::string AskForFile(bool toSave, const std::string& suggested = {}) const;

    const Look& m_look;
    OfficeApplication& m_application;
    ProgramMenu m_menu;
    HWND m_statusBar = nullptr;
    bool m_isStarted = false;
    std::optional<RibbonBand> m_band;
    std::optional<RibbonView> m_ribbon;
    bool m_isRibbonPosted = false;
};

template <class Work>
bool MainWindow::Try(Work&& work) const {
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
