#include "bench/shared/windows/ShownPicture.h"

#include <gtest/gtest.h>

#include "tests/windows/support/AutomationTest.h"
#include "tests/windows/support/Canvas.h"
#include "tests/windows/support/PictureFiles.h"

namespace krv::tests {
namespace {

using namespace bench;

class ShownPictureTest : public AutomationTest {};

TEST_F(ShownPictureTest, FillsItsPlaceAndTellsItsSize) {
    const struct {
        const char* name;
        std::string bytes;
        double width;
        double height;
    } cases[] = {
        {"placeable metafile", PlaceableMetafile(), 480, 240},
        {"bitmap", BitmapFile(), 72, 36},
    };
    constexpr COLORREF White = RGB(255, 255, 255);
    for (const auto& [name, bytes, width, height] : cases) {
        SCOPED_TRACE(name);
        const ShownPicture picture(bytes);
        EXPECT_NEAR(picture.Width(), width, 1);
        EXPECT_NEAR(picture.Height(), height, 1);
        const Canvas canvas(200, 100, White);
        picture.Draw(canvas.Context(), {20, 10, 180, 90});
        EXPECT_EQ(canvas.At(24, 14), PictureRed);
        EXPECT_EQ(canvas.At(95, 85), PictureRed);
        EXPECT_EQ(canvas.At(105, 14), PictureBlue);
        EXPECT_EQ(canvas.At(175, 85), PictureBlue);
        EXPECT_EQ(canvas.At(17, 50), White);
        EXPECT_EQ(canvas.At(183, 50), White);
        EXPECT_EQ(canvas.At(100, 93), White);
    }
}

TEST_F(ShownPictureTest, RefusesWhatIsNoPicture) {
    std::string noSize = PlaceableMetafile();
    noSize[14] = noSize[15] = 0;  // units an inch
    std::string flat = PlaceableMetafile();
    flat[10] = flat[11] = 0;  // its right edge
    const std::string bytes[] = {"", "BM", "text", PlaceableMetafile().substr(0, 22), noSize, flat};
    for (const std::string& none : bytes) {
        EXPECT_EQ(ErrorOf([&] { const ShownPicture picture(none); }), "481 Invalid picture")
            << none.size() << " bytes";
    }
}

}  // namespace
}  // namespace krv::tests
