// Device contexts for as long as they are needed, and what is selected into them.
#pragma once

#include <windows.h>

namespace krv::windows {

// The context that a window lends; the whole screen's for a null window.
class WindowContext {
 public:
    explicit WindowContext(HWND window) : m_window(window), m_context(GetDC(window)) {}
    WindowContext(const WindowContext&) = delete;
    WindowContext& operator=(const WindowContext&) = delete;
    ~WindowContext() { ReleaseDC(m_window, m_context); }

    [[nodiscard]] HDC Get() const { return m_context; }

 private:
    HWND m_window;
    HDC m_context;
};

// The context of a window that answers WM_PAINT. What it covers counts as painted afterwards.
class PaintContext {
 public:
    explicit PaintContext(HWND window)
        : m_window(window), m_context(BeginPaint(window, &m_paint)) {}
    PaintContext(const PaintContext&) = delete;
    PaintContext& operator=(const PaintContext&) = delete;
    ~PaintContext() { EndPaint(m_window, &m_paint); }

    [[nodiscard]] HDC Get() const { return m_context; }

 private:
    HWND m_window;
    PAINTSTRUCT m_paint{};
    HDC m_context;
};

// A pen, brush, font or bitmap in a context, which has its former one back afterwards. Both outlive
// this.
class SelectedObject {
 public:
    SelectedObject(HDC context, HGDIOBJ object)
        : m_context(context), m_former(SelectObject(context, object)) {}
    SelectedObject(const SelectedObject&) = delete;
    SelectedObject& operator=(const SelectedObject&) = delete;
    ~SelectedObject() { SelectObject(m_context, m_former); }

 private:
    HDC m_context;
    HGDIOBJ m_former;
};

}  // namespace krv::windows
