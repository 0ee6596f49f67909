#include "bench/document/windows/PictureWindow.h"

#include "common/Error.h"
#include "windows/base/WideText.h"

namespace krv::bench {
namespace {

constexpr const wchar_t* ClassName = L"KrvDocPicture";

}  // namespace

PictureWindow::PictureWindow(HWND page, const DocumentPicture& picture) {
    try {
        m_picture = std::make_unique<ShownPicture>(picture.bytes);
    } catch (const Error&) {
        m_picture = nullptr;
    }
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.lpfnWndProc = &PictureWindow::WindowProcedure;
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.lpszClassName = ClassName;
    RegisterClassExW(&description);
    CreateWindowExW(0, ClassName, windows::ToWide(picture.name).c_str(),
                    WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS, 0, 0, 0, 0, page, nullptr, nullptr,
                    this);
}

PictureWindow::~PictureWindow() {
    SetWindowLongPtrW(m_handle, GWLP_USERDATA, 0);
    DestroyWindow(m_handle);
}

LRESULT CALLBACK PictureWindow::WindowProcedure(HWND window, UINT message, WPARAM wide,
                                                LPARAM low) {
    if (message == WM_NCCREATE) {
        auto* created = static_cast<PictureWindow*>(
            reinterpret_cast<const CREATESTRUCTW*>(low)->lpCreateParams);
        created->m_handle = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created));
    }
    auto* self = reinterpret_cast<PictureWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self != nullptr && message == WM_PAINT) {
        self->Paint();
        return 0;
    }
    return DefWindowProcW(window, message, wide, low);
}

void PictureWindow::Paint() {
    PAINTSTRUCT paint;
    const HDC context = BeginPaint(m_handle, &paint);
    RECT place{};
    GetClientRect(m_handle, &place);
    FillRect(context, &place, GetSysColorBrush(COLOR_WINDOW));
    if (m_picture) {
        m_picture->Draw(context, place);
    } else {
        FrameRect(context, &place, GetSysColorBrush(COLOR_GRAYTEXT));
    }
    EndPaint(m_handle, &paint);
}

}  // namespace krv::bench
