#include "bench/session/windows/ScreenPicture.h"

// gdiplus.h needs these.
#include <objidl.h>
#include <propidl.h>
// After the headers above, which it needs.
#include <gdiplus.h>

#include <memory>
#include <vector>

#include "bench/session/windows/UserWindow.h"
#include "windows/base/DeviceContext.h"
#include "windows/base/Handles.h"
#include "windows/base/WideText.h"

namespace krv::bench {
namespace {

constexpr DWORD BetweenLooksMs = 120;
constexpr int MostLooks = 25;
constexpr WORD BitsPerPixel = 32;
constexpr CLSID PngEncoder{
    0x557cf406, 0x1a04, 0x11d3, {0x9a, 0x73, 0x00, 0x00, 0xf8, 0x1e, 0xf3, 0x2e}};

using Pixels = std::vector<DWORD>;

class GdiPlus {
 public:
    GdiPlus() {
        const Gdiplus::GdiplusStartupInput input;
        Gdiplus::GdiplusStartup(&m_token, &input, nullptr);
    }
    GdiPlus(const GdiPlus&) = delete;
    GdiPlus& operator=(const GdiPlus&) = delete;
    ~GdiPlus() { Gdiplus::GdiplusShutdown(m_token); }

 private:
    ULONG_PTR m_token = 0;
};

// Top row first.
Pixels Look(const RECT& place) {
    const int width = static_cast<int>(place.right - place.left);
    const int height = static_cast<int>(place.bottom - place.top);
    BITMAPINFO format{};
    format.bmiHeader.biSize = sizeof format.bmiHeader;
    format.bmiHeader.biWidth = width;
    format.bmiHeader.biHeight = -height;
    format.bmiHeader.biPlanes = 1;
    format.bmiHeader.biBitCount = BitsPerPixel;
    const windows::WindowContext screen(nullptr);
    const windows::MemoryContext memory(CreateCompatibleDC(screen.Get()));
    void* bits = nullptr;
    const windows::Bitmap bitmap(
        CreateDIBSection(screen.Get(), &format, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (!bitmap) {
        return {};
    }
    const windows::SelectedObject selected(memory.get(), bitmap.get());
    if (BitBlt(memory.get(), 0, 0, width, height, screen.Get(), place.left, place.top, SRCCOPY) ==
        FALSE) {
        return {};
    }
    GdiFlush();
    const auto* first = static_cast<const DWORD*>(bits);
    return {first, first + static_cast<std::size_t>(width) * static_cast<std::size_t>(height)};
}

Pixels LookWhenStill(const RECT& place) {
    Pixels seen = Look(place);
    for (int looks = 0; looks < MostLooks; ++looks) {
        Sleep(BetweenLooksMs);
        Pixels again = Look(place);
        if (again == seen) {
            break;
        }
        seen = std::move(again);
    }
    return seen;
}

RECT PlaceOnScreen(HWND window) {
    RECT place{};
    RECT screen{0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    GetWindowRect(window, &place);
    RECT shown{};
    IntersectRect(&shown, &place, &screen);
    return shown;
}

}  // namespace

void SavePicture(HWND window, const std::string& file) {
    const RECT place = PlaceOnScreen(window);
    Pixels pixels = LookWhenStill(place);
    const GdiPlus started;
    Gdiplus::Status saved = Gdiplus::GenericError;
    if (!pixels.empty()) {
        const int width = static_cast<int>(place.right - place.left);
        Gdiplus::Bitmap bitmap(width, static_cast<int>(place.bottom - place.top), width * 4,
                               PixelFormat32bppRGB, reinterpret_cast<BYTE*>(pixels.data()));
        saved = bitmap.Save(windows::ToWide(file).c_str(), &PngEncoder, nullptr);
    }
    if (saved != Gdiplus::Ok) {
        throw UserError("The picture " + file + " can't be taken or written.");
    }
}

}  // namespace krv::bench
