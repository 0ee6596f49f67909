// DocumentWindow: krvdoc's main window: menu, the generator's command bar, the page, status bar.
// The user-interface thread's.
#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include "bench/document/DocumentApplication.h"
#include "bench/document/windows/DocumentMenu.h"
#include "bench/document/windows/DocumentPage.h"
#include "bench/office/windows/GeneratorBand.h"
#include "bench/office/windows/OfficeAutomation.h"

namespace krv::bench {

class DocumentWindow final : public ProgramWindow, private DocumentObserver {
 public:
    // The application outlives the window, which is created hidden.
    explicit DocumentWindow(DocumentApplication& application);
    DocumentWindow(const DocumentWindow&) = delete;
    DocumentWindow& operator=(const DocumentWindow&) = delete;
    ~DocumentWindow() override;

    [[nodiscard]] HWND Handle() const override { return m_handle; }
    [[nodiscard]] bool IsShown() const override { return IsWindowVisible(m_handle) != FALSE; }
    void Show(bool isShown) override;
    // Typing doesn't keep callers out.
    [[nodiscard]] bool IsEditing() const override { return false; }
    // Without questions, after the call has returned to its caller.
    void Quit() override { PostQuitMessage(0); }

    [[nodiscard]] GeneratorBand& Band() { return *m_band; }
    // Opens a document; tells the user what is wrong with the file.
    void Open(const std::string& path);
    // Runs until the window is closed.
    void Run();
    void Paint();

 private:
    static LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wide, LPARAM low);
    LRESULT Handle(UINT message, WPARAM wide, LPARAM low);
    void Arrange();
    void Command(UINT id);
    void InsertPicture();
    void ShowTitle();
    void ShowStatus();
    bool Save(bool askForName);
    // Offers to save changes; false when the user would rather not close.
    bool MayClose();
    void Report(const std::string& problem) const;
    template <class Work>
    bool Try(Work&& work);
    [[nodiscard]] int Scaled(int pixels) const;

    void OnChanged(DocumentChange change) override;

    DocumentApplication& m_application;
    HWND m_handle = nullptr;
    HWND m_statusBar = nullptr;
    DocumentMenu m_menu;
    std::unique_ptr<GeneratorBand> m_band;
    std::unique_ptr<DocumentPage> m_page;
};

}  // namespace krv::bench
