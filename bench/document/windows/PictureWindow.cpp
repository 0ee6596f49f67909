#include "bench/document/windows/PictureWindow.h"

#include <utility>

#include "common/Error.h"
#include "windows/base/WideText.h"

namespace krv::bench {
namespace {

constexpr const wchar_t* ClassName = L"KrvDocPicture";

}  // namespace

PictureWindow::PictureWindow(HWND page, const DocumentPicture& picture,
                             std::function<void()> askForDeletion)
    : m_askForDeletion(std::move(askForDeletion)) {
    try {
        m_picture = std::make_unique<ShownPicture>(picture.bytes);
    } catch (const Error&) {
        m_notice = picture.link.empty() ? "This picture can't be shown."
                                        : "The picture \"" + picture.link + "\" isn't there.";
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
    return self != nullptr ? self->Handle(message, wide, low)
                           : DefWindowProcW(window, message, wide, low);
}

LRESULT PictureWindow::Handle(UINT message, WPARAM wide, LPARAM low) {
    switch (message) {
        case WM_PAINT:
            Paint();
            return 0;
        case WM_LBUTTONDOWN:
            SetFocus(m_handle);
            return 0;
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
            InvalidateRect(m_handle, nullptr, FALSE);
            return 0;
        case WM_KEYDOWN:
            if (wide == VK_DELETE) {
                m_askForDeletion();
                return 0;
            }
            break;
        default:
            break;
    }
    return DefWindowProcW(m_handle, message, wide, low);
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
        RECT inner{place.left + 4, place.top + 4, place.right - 4, place.bottom - 4};
        DrawTextW(context, windows::ToWide(m_notice).c_str(), -1, &inner,
                  DT_WORDBREAK | DT_NOPREFIX);
    }
    if (GetFocus() == m_handle) {
        for (int line = 0; line < 2; ++line) {
            FrameRect(context, &place, GetSysColorBrush(COLOR_HIGHLIGHT));
            InflateRect(&place, -1, -1);
        }
    }
    EndPaint(m_handle, &paint);
}

}  // namespace krv::bench
