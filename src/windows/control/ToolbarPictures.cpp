#include "windows/control/ToolbarPictures.h"

// Before gdiplus.h, whose declarations need it.
#include <objidl.h>
// After objidl.h.
#include <gdiplus.h>

#include <algorithm>
#include <array>

#include "hosts/ToolbarButtons.h"

namespace krv::windows {
namespace {

using Gdiplus::Color;
using Gdiplus::PointF;

const Color Blue(0, 90, 170);
const Color Green(20, 140, 60);
const Color Orange(215, 110, 0);
const Color Dark(70, 70, 78);
const Color Light(225, 230, 236);
const Color Greyed(160, 160, 160);
const Color GreyedLight(228, 228, 228);

// Draws in a square of 16 units, whatever its size in pixels. A disabled sketch has only greys.
class Sketch {
 public:
    static constexpr float Units = 16.0F;

    Sketch(HDC context, const RECT& place, bool enabled) : m_graphics(context), m_enabled(enabled) {
        const auto width = static_cast<float>(place.right - place.left);
        const auto height = static_cast<float>(place.bottom - place.top);
        const float side = std::min(width, height);
        m_graphics.SetSmoothingMode(Gdiplus::SmoothingModeAntiAlias);
        // Whole units lie on the edges of pixels, which keeps upright edges sharp.
        m_graphics.SetPixelOffsetMode(Gdiplus::PixelOffsetModeHalf);
        m_graphics.TranslateTransform(static_cast<float>(place.left) + (width - side) / 2,
                                      static_cast<float>(place.top) + (height - side) / 2);
        m_graphics.ScaleTransform(side / Units, side / Units);
    }

    void Box(float left, float top, float right, float bottom, const Color& color) {
        const Gdiplus::SolidBrush brush(Shade(color));
        m_graphics.FillRectangle(&brush, left, top, right - left, bottom - top);
    }
    void Disc(float x, float y, float radius, const Color& color) {
        const Gdiplus::SolidBrush brush(Shade(color));
        m_graphics.FillEllipse(&brush, x - radius, y - radius, 2 * radius, 2 * radius);
    }
    template <std::size_t Count>
    void Shape(const std::array<PointF, Count>& corners, const Color& color) {
        const Gdiplus::SolidBrush brush(Shade(color));
        m_graphics.FillPolygon(&brush, corners.data(), static_cast<INT>(Count));
    }
    template <std::size_t Count>
    void Line(const std::array<PointF, Count>& points, float width, const Color& color) {
        const Gdiplus::Pen pen(Shade(color), width);
        m_graphics.DrawLines(&pen, points.data(), static_cast<INT>(Count));
    }
    // Bezier curves, one behind the other: a start, then three points a curve.
    template <std::size_t Count>
    void Curve(const std::array<PointF, Count>& points, float width, const Color& color) {
        const Gdiplus::Pen pen(Shade(color), width);
        m_graphics.DrawBeziers(&pen, points.data(), static_cast<INT>(Count));
    }

 private:
    [[nodiscard]] Color Shade(const Color& color) const {
        if (m_enabled) {
            return color;
        }
        const bool light = color.GetValue() == Light.GetValue();
        return light ? GreyedLight : Greyed;
    }

    Gdiplus::Graphics m_graphics;
    bool m_enabled;
};

void DrawAbout(Sketch& sketch) {
    sketch.Disc(8, 8, 7.5F, Blue);
    sketch.Disc(8, 4.5F, 1.25F, Light);
    sketch.Box(7, 7, 9, 12, Light);
    sketch.Box(6, 7, 8, 8, Light);
    sketch.Box(6, 11, 10, 12, Light);
}

// A plug from the left and a socket from the right, `gap` units apart.
void DrawPlug(Sketch& sketch, float gap, const Color& color) {
    const float plug = 8 - gap / 2;
    const float socket = 8 + gap / 2;
    sketch.Box(0, 7, plug - 5, 9, Dark);
    sketch.Box(plug - 5, 4, plug - 1, 12, color);
    sketch.Box(plug - 1, 5, plug + 2, 6, Dark);
    sketch.Box(plug - 1, 10, plug + 2, 11, Dark);
    sketch.Box(socket, 3, socket + 4, 13, color);
    sketch.Box(socket + 4, 7, 16, 9, Dark);
}

void DrawConnect(Sketch& sketch) {
    DrawPlug(sketch, 5, Blue);
}

void DrawConnected(Sketch& sketch) {
    DrawPlug(sketch, 0, Green);
    sketch.Box(7, 4, 8, 12, Green);
}

void DrawSettings(Sketch& sketch) {
    constexpr std::array<float, 3> Knobs{10, 3, 7};
    for (std::size_t row = 0; row < Knobs.size(); ++row) {
        const float top = 2 + 5 * static_cast<float>(row);
        sketch.Box(0, top, 16, top + 2, Dark);
        sketch.Box(Knobs[row], top - 2, Knobs[row] + 3, top + 4, row == 1 ? Orange : Blue);
    }
}

// A waveform, and an arrow that takes it into an instrument.
void DrawPutData(Sketch& sketch) {
    sketch.Curve(
        std::array<PointF, 7>{
            {{0, 3}, {1.5F, -1.5F}, {3, -1.5F}, {4.5F, 3}, {6, 7.5F}, {7.5F, 7.5F}, {9, 3}}},
        1.5F, Green);
    sketch.Box(11, 1, 13, 6, Orange);
    sketch.Shape(std::array<PointF, 3>{{{8.5F, 5}, {15.5F, 5}, {12, 9}}}, Orange);
    sketch.Box(0, 9, 16, 16, Dark);
    sketch.Box(1, 10, 8, 15, Light);
    sketch.Line(std::array<PointF, 4>{{{2, 13.5F}, {3.5F, 11.5F}, {5.5F, 13.5F}, {7, 11.5F}}}, 1,
                Blue);
    sketch.Disc(12, 12.5F, 2, Light);
}

// A camera in front of a screen with a trace.
void DrawGetImage(Sketch& sketch) {
    sketch.Box(0, 0, 13, 10, Dark);
    sketch.Box(1, 1, 12, 9, Light);
    sketch.Line(std::array<PointF, 5>{{{1, 7}, {4, 7}, {5.5F, 2.5F}, {7, 7}, {12, 7}}}, 1, Green);
    sketch.Box(5, 7, 16, 16, Light);
    sketch.Box(6, 8, 16, 15, Blue);
    sketch.Box(9, 7, 13, 8, Blue);
    sketch.Disc(11, 11.5F, 2.75F, Light);
    sketch.Disc(11, 11.5F, 1.5F, Dark);
}

void DrawHelp(Sketch& sketch) {
    sketch.Curve(std::array<PointF, 10>{{{4, 5},
                                         {4, 0.5F},
                                         {12, 0.5F},
                                         {12, 4.75F},
                                         {12, 7},
                                         {10.5F, 7.5F},
                                         {9.5F, 8.25F},
                                         {8.25F, 9.25F},
                                         {8, 9.75F},
                                         {8, 11.25F}}},
                 2.25F, Blue);
    sketch.Disc(8, 14.25F, 1.6F, Blue);
}

struct Picture {
    const char* name;
    void (*draw)(Sketch& sketch);
};

constexpr std::array<Picture, 7> Pictures{{{ButtonKey::About, DrawAbout},
                                           {ButtonKey::Connect, DrawConnect},
                                           {ButtonKey::Connected, DrawConnected},
                                           {ButtonKey::Settings, DrawSettings},
                                           {ButtonKey::PutData, DrawPutData},
                                           {ButtonKey::GetImage, DrawGetImage},
                                           {ButtonKey::Help, DrawHelp}}};

}  // namespace

GraphicsSession::GraphicsSession() {
    const Gdiplus::GdiplusStartupInput input;
    Gdiplus::GdiplusStartup(&m_token, &input, nullptr);
}

GraphicsSession::~GraphicsSession() {
    if (m_token != 0) {
        Gdiplus::GdiplusShutdown(m_token);
    }
}

void DrawToolbarPicture(HDC context, const RECT& place, const std::string& picture, bool enabled) {
    for (const Picture& known : Pictures) {
        if (picture == known.name) {
            Sketch sketch(context, place, enabled);
            known.draw(sketch);
        }
    }
}

}  // namespace krv::windows
