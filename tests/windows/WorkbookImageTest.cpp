// The instrument's screen image as users get it: into a sheet and into files of every kind, through
// the dialogs, from a generator over TCP.
#include <string>

#include "bench/shared/windows/ActiveRegistration.h"
#include "bench/shared/windows/ShownPicture.h"
#include "common/Error.h"
#include "suite/picture/BitmapFile.h"
#include "tests/windows/WorkbookSession.h"
#include "windows/automation/LateBound.h"

namespace krv::tests {

using namespace bench;
using namespace windows;
namespace {

using bench::UserWindow;
using bench::WindowOf;
using windows::LateBound;

constexpr const char* ImageCaption = "Get Screen Image";
constexpr const char* Instructions = "Screen Capture Instructions:";
constexpr const char* NotFound = "Bitmap not found in instrument";
// The display's heading.
constexpr COLORREF HeadingColor = RGB(20, 30, 44);

class WorkbookImage : public WorkbookSession {
 protected:
    // A workbook with a picture asks before it goes.
    void TearDown() override {
        if (m_program && m_hasPicture) {
            Book().Close();
            bench::Answer("Save the changes", "No", Process());
            EXPECT_EQ(m_program->ExitCode(), 0U);
            m_program.reset();
        }
        WorkbookSession::TearDown();
    }
    void Start(const std::string& model, const std::wstring& options = {}) {
        StartGenerator(model);
        OpenBook({Wave(4, 0.5)}, options);
        Connect();
    }
    [[nodiscard]] UserWindow OpenImage() const {
        Book().Part("GetImage").Click();
        return WindowOf(ImageCaption, Process());
    }
    void Place() const {
        const UserWindow dialog = OpenImage();
        dialog.Part("Place In Active Sheet at cursor").Click();
        dialog.Part("OK").Click();
        dialog.ExpectGone();
    }
    // Answers the save dialog, too.
    void SaveAs(const std::string& file) const {
        const UserWindow dialog = OpenImage();
        dialog.Part("Save to File").Click();
        dialog.Part("OK").Click();
        const UserWindow save = WindowOf("Save As", Process());
        save.Part("Edit").Type(file);
        save.Part("Save").Click();
        save.ExpectGone();
    }
    // The file is written once the host's cursor comes back.
    [[nodiscard]] std::string Written(const std::string& name) const {
        bench::WaitUntil([&] { return std::filesystem::exists(PathOf(name)); });
        return Content(name);
    }
    // Waits for the display's dark heading at a place in pixels from the first cell's corner.
    void ExpectPictureAt(int x, int y) {
        m_hasPicture = bench::WaitUntil([&] { return ColorAt(x + 4, y + 4) == HeadingColor; });
        EXPECT_TRUE(m_hasPicture);
    }
    // From the screen: what another program's window holds isn't to be had everywhere.
    [[nodiscard]] COLORREF ColorAt(int x, int y) const {
        POINT place{60 + x, 22 + y};
        ClientToScreen(Book().Part("KrvBookGrid").Handle(), &place);
        const HDC screen = GetDC(nullptr);
        const COLORREF color = GetPixel(screen, place.x, place.y);
        ReleaseDC(nullptr, screen);
        return color;
    }
    [[nodiscard]] static std::filesystem::path TemporaryPicture(DWORD process) {
        return std::filesystem::temp_directory_path() / ("KRV" + std::to_string(process) + ".wmf");
    }

 private:
    bool m_hasPicture = false;
};

TEST_F(WorkbookImage, IsPlacedAtTheCursor) {
    const ClassForTests registry(L"Excel.Application", bench::KrvBookClassId);
    if (!registry.IsMade()) {
        GTEST_SKIP() << "this registry has an Excel.Application, or takes none";
    }
    Start("M7718C", L" --register-as-active");
    Book().Part("NameBox").Type("B3");
    Book().Press(VK_RETURN);
    Place();
    Microsoft::WRL::ComPtr<IUnknown> running;
    ASSERT_EQ(GetActiveObject(bench::KrvBookClassId, nullptr, &running), S_OK);
    {
        const LateBound application(running.Get());
        const LateBound shapes = application.GetObject(L"ActiveSheet").GetObject(L"Shapes");
        ASSERT_TRUE(bench::WaitUntil([&] { return shapes.GetLong(L"Count") == 1; }));
        const LateBound picture = shapes.CallObject(L"Item", {_variant_t(1L)});
        // 640 by 320 pixels at 96 an inch, from the corner of B3.
        EXPECT_DOUBLE_EQ(windows::DoubleOf(picture.Get(L"Width")), 480);
        EXPECT_DOUBLE_EQ(windows::DoubleOf(picture.Get(L"Height")), 240);
        EXPECT_DOUBLE_EQ(windows::DoubleOf(picture.Get(L"Left")), 63);
        EXPECT_DOUBLE_EQ(windows::DoubleOf(picture.Get(L"Top")), 30);
        EXPECT_TRUE(application.GetBool(L"ScreenUpdating"));
        bench::WaitUntil([&] { return application.GetLong(L"Cursor") == -4143; });
        EXPECT_EQ(application.GetLong(L"Cursor"), -4143);
    }
    running.Reset();
    ExpectPictureAt(84, 40);
    EXPECT_NE(ColorAt(84 - 8, 40 + 4), HeadingColor);
    EXPECT_FALSE(std::filesystem::exists(TemporaryPicture(Process())));
}

TEST_F(WorkbookImage, IsSavedAsEveryKindOfFile) {
    Start("M7718C");
    for (const char* name : {"a.gif", "a.bmp", "a.wmf", "a.jpg", "a.tif", "a.emf"}) {
        SaveAs(PathOf(name).string());
        const std::string bytes = Written(name);
        if (std::string(name) == "a.tif") {
            EXPECT_TRUE(bytes.starts_with("II*") || bytes.starts_with("MM"));
            continue;
        }
        const bench::ShownPicture picture(bytes);
        EXPECT_NEAR(picture.Width(), 480, 0.1) << name;
        EXPECT_NEAR(picture.Height(), 240, 0.1) << name;
    }
    const suite::picture::Picture display = suite::picture::ParseBitmapFile(Content("a.bmp"));
    EXPECT_EQ(display.pixels[0], (suite::picture::Color{20, 30, 44}));
    // Without an ending the kind that is chosen in the dialog counts, which is GIF at first.
    SaveAs(PathOf("plain").string());
    EXPECT_EQ(Written("plain.gif").substr(0, 3), "GIF");
    // A name that says another kind.
    SaveAs(PathOf("a.png").string());
    EXPECT_NE(Confirm("its name must end with").find("a.png"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(PathOf("a.png")));
}

TEST_F(WorkbookImage, OfAnOlderModelIsAskedForUntilItIsThere) {
    Start("M771XB");
    Place();
    const std::string asked = bench::Answer(Instructions, "OK", Process());
    EXPECT_NE(asked.find("1. Press the \"Local\" key on the KRV.\n2. Press the \"Trigger\" key"),
              std::string::npos)
        << asked;
    bench::Answer(NotFound, "Retry", Process());
    bench::MessageBoxOf(Instructions, Process());
    EXPECT_EQ(Ask("DIAG:KEY \"LOCAL\";KEY \"TRIGGER\";:SYST:REM?"), "0");
    bench::Answer(Instructions, "OK", Process());
    ExpectPictureAt(0, 0);

    // Given up in both places; then nothing is placed or left behind.
    Place();
    bench::Answer(Instructions, "Cancel", Process());
    Place();
    bench::Answer(Instructions, "OK", Process());
    bench::Answer(NotFound, "Cancel", Process());
    EXPECT_FALSE(std::filesystem::exists(TemporaryPicture(Process())));
}

TEST_F(WorkbookImage, NothingHappensWhenTheUserTurnsBackOrTheInstrumentIsGone) {
    Start("M7718C");
    OpenImage().Part("Cancel").Click();
    WindowOf("wave.csv - krvbook", Process());
    OpenImage().Press(VK_ESCAPE);
    const UserWindow dialog = OpenImage();
    dialog.Part("Save to File").Click();
    dialog.Part("OK").Click();
    const UserWindow save = WindowOf("Save As", Process());
    save.Part("Cancel").Click();
    save.ExpectGone();
    dialog.ExpectGone();

    const std::string address = m_generator->Address();
    m_generator.reset();
    Place();
    EXPECT_NE(Confirm(address).find("instrument"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(TemporaryPicture(Process())));
}

}  // namespace
}  // namespace krv::tests
