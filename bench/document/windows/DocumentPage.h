// DocumentPage: the document as a page that scrolls: its text in an edit control that is as high as
// the text, and its pictures. The user-interface thread's.
#pragma once

#include <windows.h>

#include <memory>
#include <vector>

#include "bench/document/DocumentApplication.h"
#include "bench/document/windows/PictureWindow.h"
#include "windows/base/Handles.h"
#include "windows/base/WindowClass.h"

namespace krv::bench {

class DocumentPage : public windows::WindowClass<DocumentPage> {
 public:
    // The application outlives the page.
    DocumentPage(HWND parent, DocumentApplication& application);

    void Focus() { SetFocus(m_text); }
    void Follow(OfficeChange change);

 private:
    friend WindowClass<DocumentPage>;
    LRESULT HandleMessage(UINT message, WPARAM wide, LPARAM low);
    void Paint();
    void ShowText();
    void TakeText();
    void ShowPictures();
    void Arrange();
    // Places the pictures; tells where the page ends.
    int ArrangePictures(POINT text, int textHeight);
    void SetScrollRange(int height);
    void Scroll(WORD how);
    void ScrollTo(int position);
    [[nodiscard]] RECT Client() const;
    [[nodiscard]] int Pixels(double points) const;

    DocumentApplication& m_application;
    HWND m_text = nullptr;
    windows::Font m_font;
    int m_lineHeight = 1;
    int m_scrolled = 0;
    // Of the page's paper, in the window's pixels.
    RECT m_paper{};
    bool m_isShowing = false;
    std::vector<std::unique_ptr<PictureWindow>> m_pictures;
};

}  // namespace krv::bench
