#include "windows/pictures/ToolbarPictures.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "windows/base/DeviceContext.h"

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

// A bitmap of 32 bits a pixel, from the top; null when there is no memory.
HBITMAP NewSquare(int side, void** bits) {
    BITMAPV5HEADER format{};
    format.bV5Size = sizeof format;
    format.bV5Width = side;
    format.bV5Height = -side;
    format.bV5Planes = 1;
    format.bV5BitCount = 32;
    format.bV5Compression = BI_BITFIELDS;
    format.bV5RedMask = 0x00FF0000;
    format.bV5GreenMask = 0x0000FF00;
    format.bV5BlueMask = 0x000000FF;
    format.bV5AlphaMask = 0xFF000000;
    return CreateDIBSection(nullptr, reinterpret_cast<const BITMAPINFO*>(&format), DIB_RGB_COLORS,
                            bits, nullptr, 0);
}

// A square of pixels in memory, filled with one colour.
class Pixels {
 public:
    explicit Pixels(int side, Color background = RGB(0, 0, 0)) : m_side(side) {
        const RECT all{0, 0, side, side};
        const Brush brush(CreateSolidBrush(background));
        FillRect(Context(), &all, brush.get());
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
    HBITMAP NewBitmap() { return NewSquare(m_side, &m_bits); }

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

// The sum of one channel over the square of pixels that becomes one.
int SumOf(const Pixels& large, int x, int y, int channel) {
    int sum = 0;
    for (int row = 0; row < Oversize; ++row) {
        const std::uint8_t* pixel = large.Bytes(x * Oversize, y * Oversize + row);
        for (int column = 0; column < Oversize; ++column) {
            sum += pixel[4 * column + channel];
        }
    }
    return sum;
}

// Where a drawing shows its background, it differs on black and on white; what it covers half,
// differs half.
void Blend(const Pixels& onBlack, const Pixels& onWhite, int x, int y, std::uint8_t* target) {
    constexpr int Count = Oversize * Oversize;
    constexpr int Middle = 1;
    const int shown = SumOf(onWhite, x, y, Middle) - SumOf(onBlack, x, y, Middle);
    for (int channel = 0; channel < 3; ++channel) {
        target[channel] = static_cast<std::uint8_t>(SumOf(onBlack, x, y, channel) / Count);
    }
    target[3] = static_cast<std::uint8_t>(255 - shown / Count);
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

// A waveform above an arrow that goes down into a tray.
void DrawPutData(const Sketch& sketch) {
    sketch.Curve(
        std::array<PointF, 7>{
            {{1, 4}, {2.5F, -0.5F}, {5.5F, -0.5F}, {8, 4}, {10.5F, 8.5F}, {13.5F, 8.5F}, {15, 4}}},
        2, Green);
    sketch.Box(6.5F, 6.5F, 9.5F, 10, Orange);
    sketch.Shape(std::array<PointF, 3>{{{3.5F, 9}, {12.5F, 9}, {8, 14}}}, Orange);
    sketch.Box(1, 11, 3, 16, Dark);
    sketch.Box(13, 11, 15, 16, Dark);
    sketch.Box(1, 14.5F, 15, 16, Dark);
}

// A camera, whose lens shows a trace.
void DrawGetImage(const Sketch& sketch) {
    sketch.Box(4.5F, 1, 11.5F, 5, Dark);
    sketch.Box(0, 3.5F, 16, 15, Blue);
    sketch.Box(12.5F, 5, 14.5F, 6.5F, Light);
    sketch.Disc(7.75F, 9.25F, 5, Light);
    sketch.Disc(7.75F, 9.25F, 3.5F, Dark);
    sketch.Line(
        std::array<PointF, 5>{
            {{4.75F, 10.5F}, {6.25F, 10.5F}, {7.75F, 7.25F}, {9.25F, 10.5F}, {10.75F, 10.5F}}},
        1.25F, Light);
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

constexpr std::array<Picture, 7> Pictures{{{"Corvane TQL/KRV", DrawAbout},
                                           {"Connect", DrawConnect},
                                           {"Connected", DrawConnected},
                                           {"Settings", DrawSettings},
                                           {"PutData", DrawPutData},
                                           {"GetImage", DrawGetImage},
                                           {"Help", DrawHelp}}};

}  // namespace

Bitmap NewToolbarPicture(const std::string& picture, int side, bool enabled) {
    const auto known = std::find_if(Pictures.begin(), Pictures.end(),
                                    [&](const Picture& each) { return picture == each.name; });
    if (known == Pictures.end() || side <= 0) {
        return nullptr;
    }
    const Pixels onBlack(side * Oversize);
    const Pixels onWhite(side * Oversize, RGB(255, 255, 255));
    known->draw(Sketch(onBlack.Context(), side * Oversize, enabled));
    known->draw(Sketch(onWhite.Context(), side * Oversize, enabled));
    GdiFlush();
    void* bits = nullptr;
    Bitmap small(NewSquare(side, &bits));
    if (onBlack.Bytes(0, 0) == nullptr || onWhite.Bytes(0, 0) == nullptr || bits == nullptr) {
        return nullptr;
    }
    auto* target = static_cast<std::uint8_t*>(bits);
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x, target += 4) {
            Blend(onBlack, onWhite, x, y, target);
        }
    }
    return small;
}

void DrawToolbarPicture(HDC context, const RECT& place, const std::string& picture, bool enabled) {
    const int width = place.right - place.left;
    const int height = place.bottom - place.top;
    const int side = std::min(width, height);
    const Bitmap drawn = NewToolbarPicture(picture, side, enabled);
    if (drawn == nullptr) {
        return;
    }
    const MemoryContext source(CreateCompatibleDC(context));
    const SelectedObject selected(source.get(), drawn.get());
    GdiAlphaBlend(context, place.left + (width - side) / 2, place.top + (height - side) / 2, side,
                  side, source.get(), 0, 0, side, side, {AC_SRC_OVER, 0, 255, AC_SRC_ALPHA});
}

}  // namespace krv::windows
