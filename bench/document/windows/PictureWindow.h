// PictureWindow: one picture on the page, as a window of its own over the text. The user-interface
// thread's.
#pragma once

#include <windows.h>

#include <memory>

#include "bench/shared/DocumentPicture.h"
#include "bench/shared/windows/ShownPicture.h"
#include "windows/base/WindowClass.h"

namespace krv::bench {

class PictureWindow : public windows::WindowClass<PictureWindow> {
 public:
    // A picture that can't be read is shown as a frame.
    PictureWindow(HWND page, const DocumentPicture& picture);

 private:
    friend WindowClass<PictureWindow>;
    LRESULT HandleMessage(UINT message, WPARAM wide, LPARAM low);
    void Paint();

    std::unique_ptr<ShownPicture> m_picture;
};

}  // namespace krv::bench
