// Canvas: a bitmap to draw on, whose pixels can be read.
#pragma once

#include <windows.h>

#include <vector>

namespace krv::tests {

class Canvas {
 public:
    // All black to begin with.
    explicit Canvas(int width = 200, int height = 100)
        : m_width(width), m_context(CreateCompatibleDC(nullptr)) {
        BITMAPINFO format{};
        format.bmiHeader = {sizeof(BITMAPINFOHEADER), width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        void* bits = nullptr;
        m_bitmap = CreateDIBSection(m_context, &format, DIB_RGB_COLORS, &bits, nullptr, 0);
        m_bits = static_cast<const DWORD*>(bits);
        m_before = SelectObject(m_context, m_bitmap);
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;
    ~Canvas() {
        SelectObject(m_context, m_before);
        DeleteObject(m_bitmap);
        DeleteDC(m_context);
    }

    [[nodiscard]] HDC Context() const { return m_context; }
    // Of the pixels themselves, whatever the mapping mode.
    [[nodiscard]] COLORREF At(int x, int y) const {
        GdiFlush();
        const DWORD pixel = m_bits[y * m_width + x];
        return RGB((pixel >> 16) & 0xFF, (pixel >> 8) & 0xFF, pixel & 0xFF);
    }

 private:
    int m_width;
    HDC m_context;
    HBITMAP m_bitmap;
    HGDIOBJ m_before;
    const DWORD* m_bits;
};

}  // namespace krv::tests
