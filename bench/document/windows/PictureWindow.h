// PictureWindow: one picture on the page, as a window of its own over the text. A click selects it,
// the key Del asks for it to be deleted. The user-interface thread's.
#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <string>

#include "bench/shared/DocumentPicture.h"
#include "bench/shared/windows/ShownPicture.h"

namespace krv::bench {

class PictureWindow {
 public:
    // A picture that can't be shown, e.g. a linked one whose file is gone, is named instead.
    PictureWindow(HWND page, const DocumentPicture& picture, std::function<void()> askForDeletion);
    PictureWindow(const PictureWindow&) = delete;
    PictureWindow& operator=(const PictureWindow&) = delete;
    ~PictureWindow();

    [[nodiscard]] HWND Handle() const { return m_handle; }

 private:
    static LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wide, LPARAM low);
    LRESULT Handle(UINT message, WPARAM wide, LPARAM low);
    void Paint();

    HWND m_handle = nullptr;
    std::unique_ptr<ShownPicture> m_picture;
    std::string m_notice;
    std::function<void()> m_askForDeletion;
};

// The meter that shows pictures as they are measured.
class ShownPictureMeter final : public PictureMeter {
 public:
    PictureSize NaturalSize(const std::string& bytes) override {
        const ShownPicture picture(bytes);
        return {picture.Width(), picture.Height()};
    }
};

}  // namespace krv::bench
