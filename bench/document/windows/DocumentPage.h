// DocumentPage: the document as a page that scrolls: its text in an edit control that is as high as
// the text, and its pictures. The user-interface thread's.
#pragma once

#include <windows.h>

#include <memory>
#include <vector>

#include "bench/document/DocumentApplication.h"
#include "bench/document/windows/PictureWindow.h"

namespace krv::bench {

class DocumentPage {
 public:
    // The application outlives the page.
    DocumentPage(HWND parent, DocumentApplication& application);
    DocumentPage(const DocumentPage&) = delete;
    DocumentPage& operator=(const DocumentPage&) = delete;
    ~DocumentPage();

    [[nodiscard]] HWND Handle() const { return m_handle; }
    void Focus() { SetFocus(m_text); }
    void Follow(DocumentChange change);

 private:
    static LRESULT CALLBACK DeskProcedure(HWND window, UINT message, WPARAM wide, LPARAM low);
    static LRESULT CALLBACK TextProcedure(HWND text, UINT message, WPARAM wide, LPARAM low,
                                          UINT_PTR, DWORD_PTR page);
    LRESULT Handle(UINT message, WPARAM wide, LPARAM low);
    void ShowDocument();
    void ShowText();
    void TakeText();
    void ShowPictures();
    void Arrange();
    void Scroll(WORD how);
    void ScrollTo(int position);
    void ShowCaret();
    [[nodiscard]] int TextHeight() const;
    [[nodiscard]] int Pixels(double points) const;

    DocumentApplication& m_application;
    HWND m_handle = nullptr;
    // The white sheet, which holds text and pictures, and moves when the user scrolls.
    HWND m_sheet = nullptr;
    HWND m_text = nullptr;
    HFONT m_font = nullptr;
    int m_lineHeight = 1;
    int m_scrolled = 0;
    bool m_isShowing = false;
    std::vector<std::unique_ptr<PictureWindow>> m_pictures;
};

}  // namespace krv::bench
