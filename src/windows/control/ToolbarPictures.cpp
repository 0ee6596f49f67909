#include "windows/control/ToolbarPictures.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "hosts/ToolbarButtons.h"
#include "windows/base/DeviceContext.h"
#include "windows/base/Handles.h"

namespace krv::windows {
namespace {

using Color = COLORREF;

constexpr Color Blue = RGB(0, 90, 170);
constexpr Color Green = RGB(20, 140, 60);
constexpr Color Orange = RGB(215, 110, 0);
constexpr Color Dark = RGB(70, 70, 78);
constexpr Color Light = RGB(225, 230, 236);
constexpr Color Greyed = RGB(160, 160, 160);
constexpr Color GreyedLight = RGB(228, 228, 228);

// Pictures are drawn this many times too large and averaged, which smooths their edges.
constexpr int Oversize = 4;

struct PointF {
    float x;
    float y;
};

// A square of pixels in memory, filled with the background of buttons.
class Pixels {
 public:
    explicit Pixels(int side) : m_side(side) {
        const RECT all{0, 0, side, side};
        FillRect(Context(), &all, GetSysColorBrush(COLOR_BTNFACE));
    }

    [[nodiscard]] HDC Context() const { return m_context.get(); }
    // Null when there was no memory.
    [[nodiscard]] std::uint8_t* Bytes(int x, int y) const {
        return m_bits == nullptr
                   ? nullptr
                   : static_cast<std::uint8_t*>(m_bits) + std::ptrdiff_t{4} * (y * m_side + x);
    }

 private:
    // Also sets m_bits.
    HBITMAP NewBitmap() {
        BITMAPINFO format{};
        format.bmiHeader = {
            sizeof(BITMAPINFOHEADER), m_side, -m_side, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        return CreateDIBSection(nullptr, &format, DIB_RGB_COLORS, &m_bits, nullptr, 0);
    }

    int m_side;
    void* m_bits = nullptr;
    MemoryContext m_context{CreateCompatibleDC(nullptr)};
    Bitmap m_bitmap{NewBitmap()};
    SelectedObject m_selected{m_context.get(), m_bitmap.get()};
};

// Draws in a square of 16 units, whatever its size in pixels. A disabled sketch has only greys.
class Sketch {
 public:
    static constexpr float Units = 16.0F;

    Sketch(HDC context, int side, bool enabled)
        : m_context(context), m_scale(static_cast<float>(side) / Units), m_enabled(enabled) {}

    void Box(float left, float top, float right, float bottom, Color color) const {
        Shape(std::array<PointF, 4>{{{left, top}, {right, top}, {right, bottom}, {left, bottom}}},
              color);
    }
    void Disc(float x, float y, float radius, Color color) const {
        Fill(color, [&] {
            Ellipse(m_context, At(x - radius), At(y - radius), At(x + radius) + 1,
                    At(y + radius) + 1);
        });
    }
    template <std::size_t Count>
    void Shape(const std::array<PointF, Count>& corners, Color color) const {
        Fill(color, [&] {
            // Without a pen the right and lower edges stay free by a pixel, which averaging hides.
            Polygon(m_context, Scaled(corners).data(), static_cast<int>(Count));
        });
    }
    template <std::size_t Count>
    void Line(const std::array<PointF, Count>& points, float width, Color color) const {
        Stroke(width, color,
               [&] { Polyline(m_context, Scaled(points).data(), static_cast<int>(Count)); });
    }
    // Bezier curves, one behind the other: a start, then three points a curve.
    template <std::size_t Count>
    void Curve(const std::array<PointF, Count>& points, float width, Color color) const {
        Stroke(width, color,
               [&] { PolyBezier(m_context, Scaled(points).data(), static_cast<DWORD>(Count)); });
    }

 private:
    [[nodiscard]] int At(float unit) const { return static_cast<int>(std::lround(unit * m_scale)); }
    [[nodiscard]] Color Shade(Color color) const {
        return m_enabled ? color : (color == Light ? GreyedLight : Greyed);
    }
    template <std::size_t Count>
    [[nodiscard]] std::array<POINT, Count> Scaled(const std::array<PointF, Count>& points) const {
        std::array<POINT, Count> scaled{};
        std::transform(points.begin(), points.end(), scaled.begin(), [this](const PointF& point) {
            return POINT{At(point.x), At(point.y)};
        });
        return scaled;
    }
    template <class Work>
    void Fill(Color color, const Work& work) const {
        const Brush brush(CreateSolidBrush(Shade(color)));
        const SelectedObject selectedPen(m_context, GetStockObject(NULL_PEN));
        const SelectedObject selectedBrush(m_context, brush.get());
        work();
    }
    template <class Work>
    void Stroke(float width, Color color, const Work& work) const {
        const LOGBRUSH look{BS_SOLID, Shade(color), 0};
        const Pen pen(ExtCreatePen(PS_GEOMETRIC | PS_SOLID | PS_ENDCAP_ROUND | PS_JOIN_ROUND,
                                   static_cast<DWORD>(At(width)), &look, 0, nullptr));
        const SelectedObject selectedPen(m_context, pen.get());
        const SelectedObject selectedBrush(m_context, GetStockObject(NULL_BRUSH));
        work();
    }

    HDC m_context;
    float m_scale;
    bool m_enabled;
};

// The average of the square of pixels that becomes one.
void Average(const Pixels& from, const Pixels& to, int x, int y) {
    std::uint8_t* const target = to.Bytes(x, y);
    for (int channel = 0; channel < 3; ++channel) {
        int sum = 0;
        for (int row = 0; row < Oversize; ++row) {
            const std::uint8_t* pixel = from.Bytes(x * Oversize, y * Oversize + row);
            for (int column = 0; column < Oversize; ++column) {
                sum += pixel[4 * column + channel];
            }
        }
        target[channel] = static_cast<std::uint8_t>(sum / (Oversize * Oversize));
    }
}

void DrawAbout(const Sketch& sketch) {
    sketch.Disc(8, 8, 7.5F, Blue);
    sketch.Disc(8, 4.5F, 1.25F, Light);
    sketch.Box(7, 7, 9, 12, Light);
    sketch.Box(6, 7, 8, 8, Light);
    sketch.Box(6, 11, 10, 12, Light);
}

// A plug from the left and a socket from the right, `gap` units apart.
void DrawPlug(const Sketch& sketch, float gap, Color color) {
    const float plug = 8 - gap / 2;
    const float socket = 8 + gap / 2;
    sketch.Box(0, 7, plug - 5, 9, Dark);
    sketch.Box(plug - 5, 3, plug - 1, 13, color);
    sketch.Box(plug - 1, 5, plug + 2, 6, Dark);
    sketch.Box(plug - 1, 10, plug + 2, 11, Dark);
    sketch.Box(socket, 2, socket + 4, 14, color);
    sketch.Box(socket + 4, 7, 16, 9, Dark);
}

void DrawConnect(const Sketch& sketch) {
    DrawPlug(sketch, 5, Blue);
}

void DrawConnected(const Sketch& sketch) {
    DrawPlug(sketch, 0, Green);
    sketch.Box(7, 3, 8, 13, Green);
}

void DrawSettings(const Sketch& sketch) {
    constexpr std::array<float, 3> Knobs{10, 3, 7};
    for (std::size_t row = 0; row < Knobs.size(); ++row) {
        const float top = 2 + 5 * static_cast<float>(row);
        sketch.Box(0, top, 16, top + 2, Dark);
        sketch.Box(Knobs[row], top - 2, Knobs[row] + 3, top + 4, row == 1 ? Orange : Blue);
    }
}

// A waveform, and an arrow that takes it into an instrument.
void DrawPutData(const Sketch& sketch) {
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
void DrawGetImage(const Sketch& sketch) {
    sketch.Box(0, 0, 13, 10, Dark);
    sketch.Box(1, 1, 12, 9, Light);
    sketch.Line(std::array<PointF, 5>{{{1, 7}, {4, 7}, {5.5F, 2.5F}, {7, 7}, {12, 7}}}, 1, Green);
    sketch.Box(5, 7, 16, 16, Light);
    sketch.Box(6, 8, 16, 15, Blue);
    sketch.Box(9, 7, 13, 8, Blue);
    sketch.Disc(11, 11.5F, 2.75F, Light);
    sketch.Disc(11, 11.5F, 1.5F, Dark);
}

void DrawHelp(const Sketch& sketch) {
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
    void (*draw)(const Sketch& sketch);
};

constexpr std::array<Picture, 7> Pictures{{{hosts::ButtonKey::About, DrawAbout},
                                           {hosts::ButtonKey::Connect, DrawConnect},
                                           {hosts::ButtonKey::Connected, DrawConnected},
                                           {hosts::ButtonKey::Settings, DrawSettings},
                                           {hosts::ButtonKey::PutData, DrawPutData},
                                           {hosts::ButtonKey::GetImage, DrawGetImage},
                                           {hosts::ButtonKey::Help, DrawHelp}}};

}  // namespace

void DrawToolbarPicture(HDC context, const RECT& place, const std::string& picture, bool enabled) {
    const auto known = std::find_if(Pictures.begin(), Pictures.end(),
                                    [&](const Picture& each) { return picture == each.name; });
    const int width = place.right - place.left;
    const int height = place.bottom - place.top;
    const int side = std::min(width, height);
    if (known == Pictures.end() || side <= 0) {
        return;
    }
    const Pixels large(side * Oversize);
    const Pixels small(side);
    known->draw(Sketch(large.Context(), side * Oversize, enabled));
    GdiFlush();
    if (large.Bytes(0, 0) == nullptr || small.Bytes(0, 0) == nullptr) {
        return;
    }
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            Average(large, small, x, y);
        }
    }
    BitBlt(context, place.left + (width - side) / 2, place.top + (height - side) / 2, side, side,
           small.Context(), 0, 0, SRCCOPY);
}

}  // namespace krv::windows
