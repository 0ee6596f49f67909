// DocumentWindow: krvdoc's main window: menu, the generator's command bar, the page, status bar.
// The user-interface thread's.
#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include "bench/document/DocumentApplication.h"
#include "bench/document/windows/DocumentPage.h"
#include "bench/shared/windows/MainWindow.h"

namespace krv::bench {

class DocumentWindow final : public MainWindow, private DocumentObserver {
 public:
    // The application outlives the window, which is created hidden.
    explicit DocumentWindow(DocumentApplication& application);
    ~DocumentWindow() override;

    // Typing doesn't keep callers out.
    [[nodiscard]] bool IsEditing() const override { return false; }
    // Opens a document; shows what is wrong with the file.
    void Open(const std::string& path);

 private:
    static const Program DocumentProgram;

    void InsertPicture();
    void ShowName();
    bool Save(bool askForName);

    void Focus() override { m_page->Focus(); }
    void ArrangeContent(const RECT& place) override;
    void Command(UINT id) override;
    bool MayCloseAll() override;
    [[nodiscard]] bool HasUnsavedControl(const Document& document);
    [[nodiscard]] bool IsWaiting() const override {
        return m_application.Cursor() == SystemCursor::Wait;
    }

    void OnChanged(DocumentChange change) override;

    DocumentApplication& m_application;
    std::unique_ptr<DocumentPage> m_page;
};

}  // namespace krv::bench
