// DocumentWindow: krvdoc's main window, whose content is the page. The user-interface thread's.
#pragma once

#include <windows.h>

#include <optional>

#include "bench/document/DocumentApplication.h"
#include "bench/document/windows/DocumentPage.h"
#include "bench/shared/windows/MainWindow.h"

namespace krv::bench {

class DocumentWindow final : public MainWindow {
 public:
    // The application outlives the window, which is created hidden.
    explicit DocumentWindow(DocumentApplication& application)
        : MainWindow(DocumentLook, application) {
        m_page.emplace(Handle(), application);
        Start();
    }
    ~DocumentWindow() override { Stop(); }

 private:
    static const Look DocumentLook;

    void Focus() override { m_page->Focus(); }
    void ArrangeContent(const RECT& place) override {
        MoveWindow(m_page->Handle(), 0, static_cast<int>(place.top), static_cast<int>(place.right),
                   static_cast<int>(place.bottom - place.top), TRUE);
    }
    void ShowChange(OfficeChange change) override { m_page->Follow(change); }

    std::optional<DocumentPage> m_page;
};

}  // namespace krv::bench
