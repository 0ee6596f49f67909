#include "bench/document/windows/PictureWindow.h"

#include "common/Error.h"
#include "windows/base/DeviceContext.h"
#include "windows/base/WideText.h"

namespace krv::bench {
namespace {

constexpr const wchar_t* PictureClass = L"KrvDocPicture";

}  // namespace

PictureWindow::PictureWindow(HWND page, const DocumentPicture& picture) {
    try {
        m_picture = std::make_unique<ShownPicture>(picture.bytes);
    } catch (const Error&) {
        m_picture = nullptr;
    }
    const std::wstring name = windows::ToWide(picture.name);
    Create(
        {PictureClass, COLOR_WINDOW},
        {.title = name.c_str(), .style = WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS, .parent = page});
}

LRESULT PictureWindow::HandleMessage(UINT message, WPARAM wide, LPARAM low) {
    if (message == WM_PAINT) {
        Paint();
        return 0;
    }
    return DefaultMessage(message, wide, low);
}

void PictureWindow::Paint() {
    const windows::PaintContext context(Handle());
    RECT place{};
    GetClientRect(Handle(), &place);
    if (m_picture) {
        m_picture->Draw(context.Get(), place);
    } else {
        FrameRect(context.Get(), &place, GetSysColorBrush(COLOR_GRAYTEXT));
    }
}

}  // namespace krv::bench
