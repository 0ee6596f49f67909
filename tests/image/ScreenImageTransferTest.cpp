#include <string>
#include <vector>

#include "tests/image/ImageFixture.h"

namespace krv::tests {

using namespace image;
namespace {

using ports::MessageAnswer;

constexpr const char* Instructions =
    "[!] Corvane KRV RF Signal Generator: Screen Capture Instructions: |  | "
    "1. Press the \"Local\" key on the KRV. | "
    "2. Press the \"Trigger\" key on the KRV, which will initiate a capture of the screen. | "
    "3. Wait until you see the \"Bitmap captured\" status message on the KRV.  (This may take up "
    "to 20 seconds.) | "
    "4. Click \"OK\" to complete the capture of the image. (OK/Cancel)\n";
constexpr const char* NotFound =
    "[stop] Corvane KRV RF Signal Generator: Bitmap not found in instrument (Retry/Cancel)\n";

constexpr const char* Placed =
    "PrepareForCapture; ModelName; busy cursor; SaveScreenImage C:\\TEMP\\KRV1234.wmf 4; active "
    "cell; "
    "active sheet; "
    "not updating; add C:\\TEMP\\KRV1234.wmf saved at 48,12.75 size 480x240; "
    "height 1.0 of the original; width 1.0 of the original; updating; "
    "normal C:\\TEMP\\KRV1234.wmf; delete C:\\TEMP\\KRV1234.wmf; normal cursor";

TEST_F(ImageTest, PlacesThePictureAtTheCursor) {
    Place();
    EXPECT_EQ(GetImage(), Placed);
    EXPECT_EQ(resolution.Asked, 77);
    EXPECT_EQ(Shows(), "load; modal; hide; unload");
    EXPECT_EQ(desk.Screen.PumpCount, 2);
    EXPECT_EQ(Boxes(), "");
    // The size follows the screen, each way for itself, and the host's setting comes back.
    resolution.Pixels = {120, 192};
    excel->ScreenUpdating = false;
    Place();
    const std::string asked = GetImage();
    EXPECT_NE(asked.find("not updating; add C:\\TEMP\\KRV1234.wmf saved at 48,12.75 size 384x120"),
              std::string::npos)
        << asked;
    EXPECT_NE(asked.find("width 1.0 of the original; not updating"), std::string::npos) << asked;
}

TEST_F(ImageTest, PlacesThePictureInAWordDocument) {
    auto word = std::make_shared<FakeWordHost>(log);
    desk.Screen.Then([&] {
        // Meanwhile the adapter attaches to another application, and its control ends.
        word.reset();
        suite.Server.reset();
        EXPECT_EQ(Dialog().picturePlacement.Caption.Get(), "Place In Active Document");
        desk.Screen.Click(Dialog().okButton);
    });
    transfer.TransferToWord(word, suite.Server);
    EXPECT_EQ(log.Take(),
              "PrepareForCapture; ModelName; busy cursor; SaveScreenImage C:\\TEMP\\KRV1234.wmf 4; "
              "picture C:\\TEMP\\KRV1234.wmf into Document1; normal C:\\TEMP\\KRV1234.wmf; "
              "delete C:\\TEMP\\KRV1234.wmf; normal cursor");
}

TEST_F(ImageTest, SavesThePictureWhereTheUserSays) {
    SaveTo("C:\\pictures\\a.tif");
    EXPECT_EQ(GetImage(),
              "PrepareForCapture; ModelName; busy cursor; SaveScreenImage C:\\pictures\\a.tif 100; "
              "normal cursor");
    EXPECT_EQ(Shows(), "load; modal; hide; unload");
    ASSERT_EQ(desk.FileDialogs.Requests.size(), 1U);
    const auto& request = desk.FileDialogs.Requests[0];
    EXPECT_EQ(request.flags, 0x802U);
    EXPECT_EQ(request.fileName, "");
    EXPECT_EQ(request.filter,
              "GIF (*.gif)|*.gif|Windows Bitmap (*.bmp)|*.bmp|Windows Metafile (*.wmf)|*.wmf|"
              "JPEG File Interchange Format (*.jpg)|*.jpg|Tagged Image File Format (*.tif)|*.tif|"
              "Windows Enhanced Metafile (*.emf)|*.emf");
}

TEST_F(ImageTest, AsksTheInstrumentForNothingWhenTheUserTurnsBack) {
    SaveTo(std::nullopt);
    EXPECT_EQ(GetImage(), "");
    SaveTo("");
    EXPECT_EQ(GetImage(), "");
    Cancel();
    EXPECT_EQ(GetImage(), "");
    desk.Screen.Then([this] { desk.Screen.Close(Dialog()); });
    EXPECT_EQ(GetImage(), "");
    EXPECT_EQ(Shows(),
              "load; modal; hide; unload; load; modal; hide; unload; load; modal; hide; unload; "
              "load; modal; hide; unload");
    EXPECT_EQ(desk.Screen.PumpCount, 0);
}

TEST_F(ImageTest, TellsTheUserOfAnOlderModelToCaptureByHandUntilItIsThere) {
    suite.Server->InstrumentModel = "M771XB";
    suite.Server->Captured = {false, false, true};
    Place();
    const std::string asked = GetImage();
    EXPECT_EQ(asked.substr(0, asked.find("; busy cursor")),
              "PrepareForCapture; ModelName; FileExists DISPLAY.BMP; FileExists DISPLAY.BMP; "
              "FileExists DISPLAY.BMP");
    const std::string again = std::string(Instructions) + NotFound;
    EXPECT_EQ(Boxes(), again + again + Instructions);
    EXPECT_EQ(Shows(), "load; modal; hide; unload");
    // A capital B anywhere, and nothing else.
    for (const auto& [model, shown] :
         std::vector<std::pair<const char*, const char*>>{{"KRV-B", Instructions},
                                                          {"BC1", Instructions},
                                                          {"M7718b", ""},
                                                          {"M9920D", ""},
                                                          {"", ""}}) {
        suite.Server->InstrumentModel = model;
        Place();
        EXPECT_NE(GetImage(), "");
        EXPECT_EQ(Boxes(), shown) << model;
    }
}

TEST_F(ImageTest, StaysLoadedWhenTheUserGivesUpAtTheInstrument) {
    suite.Server->InstrumentModel = "M771XB";
    suite.Server->Captured = {false};
    Place();
    desk.MessageBoxes.Answers = {MessageAnswer::Cancel};
    EXPECT_EQ(GetImage(), "PrepareForCapture; ModelName");
    EXPECT_EQ(Boxes(), Instructions);
    EXPECT_EQ(Shows(), "load; modal; hide");
    desk.MessageBoxes.Answers = {MessageAnswer::Ok, MessageAnswer::Cancel};
    Place();
    EXPECT_EQ(GetImage(), "PrepareForCapture; ModelName; FileExists DISPLAY.BMP");
    EXPECT_EQ(Boxes(), std::string(Instructions) + NotFound);
    EXPECT_EQ(Shows(), "modal; hide");
    // What the fields said then still counts: the picture is placed, whatever is chosen now.
    suite.Server->Captured = {true};
    SaveTo("C:\\a.gif");
    EXPECT_NE(GetImage().find("SaveScreenImage C:\\TEMP\\KRV1234.wmf 4"), std::string::npos);
    EXPECT_EQ(Shows(), "modal; hide; unload");
    // The next command starts afresh.
    SaveTo("C:\\a.gif");
    EXPECT_NE(GetImage().find("SaveScreenImage C:\\a.gif 100"), std::string::npos);
    EXPECT_EQ(Shows(), "load; modal; hide; unload");
}

TEST_F(ImageTest, ACancelledSaveDialogNeverTakesAnEarlierName) {
    suite.Server->InstrumentModel = "M771XB";
    SaveTo("C:\\a.gif");
    desk.MessageBoxes.Answers = {MessageAnswer::Cancel};
    GetImage();
    SaveTo(std::nullopt);
    EXPECT_EQ(GetImage(), "");
    EXPECT_EQ(desk.FileDialogs.Requests.back().fileName, "C:\\a.gif");
}

// Whatever fails, the cursor, the host's setting and the temporary file are as before.
TEST_F(ImageTest, ShowsFailuresAndReturnsNormally) {
    struct Case {
        const char* failing;
        std::vector<std::string> before;
        std::string after;
    };
    const std::string removed =
        "normal C:\\TEMP\\KRV1234.wmf; delete C:\\TEMP\\KRV1234.wmf; normal cursor";
    const std::vector<Case> cases{
        {"PrepareForCapture", {"PrepareForCapture"}, ""},
        {"ModelName", {"ModelName"}, ""},
        {"busy cursor", {"busy cursor"}, ""},
        {"SaveScreenImage", {"SaveScreenImage C:\\TEMP\\KRV1234.wmf 4"}, removed},
        {"active cell", {"active cell"}, removed},
        {"not updating", {"not updating"}, removed},
        {"add",
         {"add C:\\TEMP\\KRV1234.wmf saved at 48,12.75 size 480x240"},
         "updating; " + removed},
        {"width", {"width 1.0 of the original"}, "updating; " + removed},
        {"updating", {"updating"}, removed}};
    for (const Case& each : cases) {
        log.FailAt = each.failing;
        Place();
        const std::string asked = GetImage();
        const std::string end = each.before[0] + (each.after.empty() ? "" : "; " + each.after);
        EXPECT_TRUE(asked.ends_with(end)) << each.failing << ": " << asked;
        EXPECT_EQ(Boxes(),
                  "[stop] Corvane KRV RF Signal Generator: refused: " + each.before[0] + " (OK)\n");
        EXPECT_EQ(Shows(), "load; modal; hide; unload") << each.failing;
    }
    // A temporary file that can't be removed is no failure, and is tried whole.
    for (const char* failing : {"normal", "delete"}) {
        log.FailAt = failing;
        Place();
        EXPECT_EQ(GetImage(), Placed);
        EXPECT_EQ(Boxes(), "");
    }
    log.FailAt = "normal cursor";
    Place();
    EXPECT_EQ(GetImage(), Placed);
}

TEST_F(ImageTest, DoesNothingWhenItIsAskedAgainMeanwhile) {
    Place();
    desk.Screen.Then([this] { transfer.TransferToExcel(excel, suite.Server, 77); });
    EXPECT_EQ(GetImage(), Placed);
    EXPECT_EQ(Shows(), "load; modal; hide; unload");
}

}  // namespace
}  // namespace krv::tests
