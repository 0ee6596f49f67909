// PictureWindow: one picture on the page, as a window of its own over the text. The user-interface
// thread's.
#pragma once

#include <windows.h>

#include <memory>

#include "bench/shared/DocumentPicture.h"
#include "bench/shared/windows/ShownPicture.h"

namespace krv::bench {

class PictureWindow {
 public:
    // A picture that can't be read is shown as a frame.
    PictureWindow(HWND page, const DocumentPicture& picture);
    PictureWindow(const PictureWindow&) = delete;
    PictureWindow& operator=(const PictureWindow&) = delete;
    ~PictureWindow();

    [[nodiscard]] HWND Handle() const { return m_handle; }

 private:
    static LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wide, LPARAM low);
    void Paint();

    HWND m_handle = nullptr;
    std::unique_ptr<ShownPicture> m_picture;
};

}  // namespace krv::bench
