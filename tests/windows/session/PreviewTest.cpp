// The preview of a download, with mouse and keyboard: what it shows, how it follows the wheel and
// the keys, and that dialog, workbook and preview end in any order.
#include <string>

#include "tests/windows/session/WorkbookUser.h"

namespace krv::tests {
namespace {

using bench::UserWindow;
using bench::WindowOf;

class Preview : public WorkbookUser {
 protected:
    Preview() {
        StartGenerator("M7718C");
        OpenBook({Wave(70, 0.5), Wave(70, -0.5)});
        Connect();
    }
    // Of the 70 cells, as the caption tells.
    UserWindow Showing(const std::string& points) const {
        return WindowOf("Preview of A1:A70, points " + points + " of 70", Process());
    }
    // The wheel's turn over a place at the left or right edge.
    static void Turn(const UserWindow& window, int delta, bool isRight) {
        RECT place{};
        GetWindowRect(window.Handle(), &place);
        const int x = isRight ? place.right - 5 : place.left + 5;
        PostMessageW(window.Handle(), WM_MOUSEWHEEL,
                     MAKEWPARAM(0, static_cast<WORD>(static_cast<short>(delta))),
                     MAKELPARAM(x, place.top + 100));
    }
};

TEST_F(Preview, FollowsWheelAndKeysAndStaysWhenTheDialogCloses) {
    const UserWindow dialog = OpenDownloadOfCells("A1:A70", "B1:B70");
    dialog.Part("cmdPreview").Click();
    const UserWindow preview = Showing("0 to 69");
    EXPECT_NE(preview.Part("figures").Text().find("-32767 to 32767, 2 different ones"),
              std::string::npos)
        << preview.Part("figures").Text();
    EXPECT_TRUE(dialog.TakesInput() && Book().TakesInput()) << "the preview is modeless";

    preview.Press(VK_ADD);
    Showing("7 to 62");
    preview.Press(VK_RIGHT);
    Showing("14 to 69");
    preview.Press(VK_HOME);
    Showing("0 to 69");
    Turn(preview, WHEEL_DELTA, true);
    Showing("14 to 69");
    // A fine wheel's turns add up.
    Turn(preview, -WHEEL_DELTA / 2, false);
    Turn(preview, -WHEEL_DELTA / 2, false);
    Showing("0 to 69");
    Turn(preview, WHEEL_DELTA, false);
    Showing("0 to 55");
    preview.Resize(1000, 640);
    preview.Resize(760, 560);

    dialog.Part("cmdCancel").Click();
    dialog.ExpectGone();
    EXPECT_EQ(Showing("0 to 55").Handle(), preview.Handle());
    // Wherever the keyboard has gone to.
    PostMessageW(preview.Handle(), WM_KEYDOWN, VK_ESCAPE, 1);
    preview.ExpectGone();
    EXPECT_TRUE(Book().TakesInput());
}

TEST_F(Preview, ShowsTheNewCellsWhenItIsAskedAgainAndEndsWithTheWorkbook) {
    const UserWindow dialog = OpenDownloadOfCells("A1:A70", "B1:B70");
    dialog.Part("cmdPreview").Click();
    const UserWindow preview = Showing("0 to 69");
    const std::string before = preview.Part("figures").Text();
    dialog.Part("TextScaleFactor").Type("50");
    EXPECT_EQ(preview.Part("figures").Text(), before) << "what was converted stays";

    dialog.Part("cmdPreview").Click();
    preview.Part("figures").Expect("*-16384 to 16384*");
    EXPECT_EQ(Showing("0 to 69").Handle(), preview.Handle()) << "in the same window";

    // What can't be validated is told as ever, and changes nothing; the box is modal.
    dialog.Part("textIRange").Type("A1:A10");
    dialog.Part("cmdPreview").Click();
    bench::MessageBoxOf("must contain", Process());
    EXPECT_FALSE(preview.TakesInput());
    Confirm("must contain");
    EXPECT_NE(preview.Part("figures").Text().find("-16384 to 16384"), std::string::npos);
    dialog.Part("textIRange").Type("A1:A70");
    preview.Close();
    preview.ExpectGone();
    dialog.Part("cmdPreview").Click();
    Showing("0 to 69");
    // The workbook closes with dialog and preview open.
}

}  // namespace
}  // namespace krv::tests
