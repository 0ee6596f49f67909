#include "windows/control/ToolbarPainter.h"

#include <algorithm>

#include "windows/base/DotsPerInch.h"
#include "windows/pictures/ToolbarPictures.h"

namespace krv::windows {
namespace {

int VisibleCount(const control::Toolbar& toolbar) {
    int count = 0;
    for (std::size_t index = 0; index < toolbar.ButtonCount(); ++index) {
        count += toolbar.Button(index).Visible ? 1 : 0;
    }
    return count;
}

}  // namespace

std::vector<std::optional<RECT>> PlaceButtons(const control::Toolbar& toolbar, const RECT& place,
                                              int dotsPerInch) {
    const int width = place.right - place.left;
    const int height = place.bottom - place.top;
    const int side = std::min({MulDiv(ButtonSide, dotsPerInch, UsualDotsPerInch), height,
                               width / std::max(1, VisibleCount(toolbar))});
    std::vector<std::optional<RECT>> places(toolbar.ButtonCount());
    LONG left = place.left;
    const LONG top = place.top + (height - side) / 2;
    for (std::size_t index = 0; index < places.size(); ++index) {
        if (toolbar.Button(index).Visible) {
            places[index] = RECT{left, top, left + side, top + side};
            left += side;
        }
    }
    return places;
}

void DrawButton(HDC context, const RECT& place, const control::ToolbarButton& button,
                const ButtonLook& look) {
    RECT edge = place;
    FillRect(context, &edge, GetSysColorBrush(COLOR_BTNFACE));
    if (look.pressed) {
        DrawEdge(context, &edge, BDR_SUNKENOUTER, BF_RECT);
    } else if (look.hot) {
        DrawEdge(context, &edge, BDR_RAISEDINNER, BF_RECT);
    }
    RECT picture = place;
    // A sixth on each side leaves the picture whole pixels for each of its units at 100 %, 150 %
    // and 200 %.
    const int inset = (place.bottom - place.top) / 6;
    InflateRect(&picture, -inset, -inset);
    OffsetRect(&picture, look.pressed ? 1 : 0, look.pressed ? 1 : 0);
    DrawToolbarPicture(context, picture, button.Image, button.Enabled);
    if (look.focused) {
        InflateRect(&edge, -2, -2);
        DrawFocusRect(context, &edge);
    }
}

void DrawToolbar(HDC context, const RECT& place, const control::Toolbar& toolbar, int dotsPerInch) {
    FillRect(context, &place, GetSysColorBrush(COLOR_BTNFACE));
    const auto places = PlaceButtons(toolbar, place, dotsPerInch);
    for (std::size_t index = 0; index < places.size(); ++index) {
        if (places[index]) {
            DrawButton(context, *places[index], toolbar.Button(index), {});
        }
    }
}

}  // namespace krv::windows
