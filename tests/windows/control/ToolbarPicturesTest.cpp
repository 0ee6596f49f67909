// How the toolbar looks, drawn into bitmaps.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "hosts/ToolbarButtons.h"
#include "tests/windows/support/Canvas.h"
#include "windows/control/ToolbarPainter.h"
#include "windows/control/ToolbarPictures.h"

namespace krv::tests {
namespace {

using Pixels = std::vector<COLORREF>;

constexpr COLORREF White = 0xFFFFFF;

// What the work draws on white.
template <class Work>
Pixels Drawn(int width, int height, const Work& work) {
    const Canvas canvas(width, height, White);
    work(canvas.Context(), RECT{0, 0, width, height});
    return canvas.Pixels();
}

class ToolbarLayoutTest : public ::testing::Test {
 protected:
    ToolbarLayoutTest() {
        for (const hosts::InitialButton& button : hosts::InitialButtons) {
            Bar->AddButton(button.caption);
        }
    }

    // Left edges and sides, e.g. "0+24 24+24"; "-" for a button without a place.
    [[nodiscard]] std::string Layout(LONG width, LONG height, int dotsPerInch) const {
        std::string text;
        for (const auto& place :
             windows::PlaceButtons(*Bar, RECT{0, 0, width, height}, dotsPerInch)) {
            text += text.empty() ? "" : " ";
            text += place ? std::to_string(place->left) + '+' +
                                std::to_string(place->right - place->left)
                          : "-";
        }
        return text;
    }

    std::shared_ptr<control::Toolbar> Bar = std::make_shared<control::Toolbar>();
};

TEST_F(ToolbarLayoutTest, GrowsWithTheResolutionAndShrinksIntoItsPlace) {
    EXPECT_EQ(Layout(400, 30, 96), "0+24 24+24 48+24 72+24 96+24 120+24 144+24");
    EXPECT_EQ(Layout(800, 60, 192), "0+48 48+48 96+48 144+48 192+48 240+48 288+48");
    EXPECT_EQ(Layout(400, 20, 96), "0+20 20+20 40+20 60+20 80+20 100+20 120+20");
    EXPECT_EQ(Layout(140, 30, 96), "0+20 20+20 40+20 60+20 80+20 100+20 120+20");
}

TEST_F(ToolbarLayoutTest, LeavesNoRoomForInvisibleButtons) {
    Bar->ControlAt(2)->SetVisible(false);
    Bar->ControlAt(7)->SetVisible(false);
    EXPECT_EQ(Layout(400, 30, 96), "0+24 - 24+24 48+24 72+24 96+24 -");

    const Pixels drawn = Drawn(168, 24, [&](HDC context, const RECT& place) {
        windows::DrawToolbar(context, place, *Bar, 96);
    });
    const auto columnIsEmpty = [&](std::size_t column) {
        for (std::size_t row = 0; row < 24; ++row) {
            if (drawn[row * 168 + column] != drawn[0]) {
                return false;
            }
        }
        return true;
    };
    EXPECT_FALSE(columnIsEmpty(4 * 24 + 12));
    EXPECT_TRUE(columnIsEmpty(5 * 24 + 12));
}

}  // namespace
}  // namespace krv::tests
