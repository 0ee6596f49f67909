// Where the toolbar's buttons stand.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "hosts/ToolbarButtons.h"
#include "windows/control/ToolbarPainter.h"

namespace krv::tests {
namespace {

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
}

}  // namespace
}  // namespace krv::tests
