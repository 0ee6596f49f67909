#include "windows/forms/Pictures.h"

#include <algorithm>
#include <array>

#include "windows/base/DeviceContext.h"
#include "windows/base/Handles.h"

namespace krv::windows {
namespace {

// Draws in a square of 16 units, centred in the place, at whatever size that has in pixels.
class Canvas {
 public:
    static constexpr int Units = 16;

    Canvas(HDC context, const RECT& place)
        : m_context(context),
          m_side(std::min<int>(place.right - place.left, place.bottom - place.top)),
          m_left(place.left + (place.right - place.left - m_side) / 2),
          m_top(place.top + (place.bottom - place.top - m_side) / 2) {}

    void Fill(int left, int top, int right, int bottom, COLORREF color) const {
        const RECT area{X(left), Y(top), X(right), Y(bottom)};
        const Brush brush(CreateSolidBrush(color));
        FillRect(m_context, &area, brush.get());
    }

    template <std::size_t Count>
    void Polygon(const std::array<POINT, Count>& corners, COLORREF color) const {
        std::array<POINT, Count> points{};
        std::transform(corners.begin(), corners.end(), points.begin(), [this](const POINT& corner) {
            return POINT{X(corner.x), Y(corner.y)};
        });
        const Brush brush(CreateSolidBrush(color));
        const SelectedObject selectedPen(m_context, GetStockObject(NULL_PEN));
        const SelectedObject selectedBrush(m_context, brush.get());
        ::Polygon(m_context, points.data(), static_cast<int>(Count));
    }

 private:
    [[nodiscard]] LONG X(LONG unit) const { return m_left + unit * m_side / Units; }
    [[nodiscard]] LONG Y(LONG unit) const { return m_top + unit * m_side / Units; }

    HDC m_context;
    int m_side;
    LONG m_left;
    LONG m_top;
};

constexpr COLORREF GridLine = RGB(112, 112, 112);
constexpr COLORREF Cell = RGB(255, 255, 255);
constexpr COLORREF MarkedCell = RGB(140, 190, 240);
constexpr COLORREF Arrow = RGB(0, 96, 176);
constexpr COLORREF Greyed = RGB(160, 160, 160);

void DrawCaptureSelection(const Canvas& canvas, bool enabled) {
    canvas.Fill(0, 1, 11, 15, enabled ? GridLine : Greyed);
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 2; ++column) {
            const bool marked = enabled && column == 0;
            const int left = 1 + column * 5;
            const int top = 2 + row * 4;
            canvas.Fill(left, top, left + 4, top + 4 - (row == 2 ? 0 : 1),
                        marked ? MarkedCell : Cell);
        }
    }
    const COLORREF color = enabled ? Arrow : Greyed;
    canvas.Fill(5, 7, 11, 9, color);
    canvas.Polygon(std::array<POINT, 3>{{{10, 4}, {16, 8}, {10, 12}}}, color);
}

}  // namespace

void DrawPicture(HDC context, const RECT& place, const std::string& picture, bool enabled) {
    if (picture == "CaptureSelection") {
        DrawCaptureSelection(Canvas(context, place), enabled);
    }
}

}  // namespace krv::windows
