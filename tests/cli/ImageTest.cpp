// krv image: the instrument's display as a picture file.
#include "tests/cli/CommandLineFixture.h"
#include "tests/support/RunningGenerator.h"

namespace krv::tests {
namespace {

using namespace cli;
using ImageTest = CommandLineTest;

TEST_F(ImageTest, IsWrittenAsTheFilesEndingSays) {
    for (const auto& [name, start] : {std::pair("a.bmp", "BM"), std::pair("a.TIF", "II*")}) {
        ASSERT_EQ(Run({"image", Path(name), "--address", "sim://M7718C"}), 0) << Err;
        EXPECT_EQ(Out, "Screen image written to " + Path(name) + '\n');
        EXPECT_EQ(Err, "");
        EXPECT_TRUE(Content(name).starts_with(start)) << name;
    }
}

TEST_F(ImageTest, LeavesNoFileWhenItFails) {
    EXPECT_EQ(Run({"image", Path("missing/a.gif"), "--address", "sim://M7718C"}), 1);
    EXPECT_NE(Err.find("missing/a.gif\" cannot be written"), std::string::npos) << Err;
    EXPECT_EQ(Run({"image", Path("a.gif"), "--address", "tcp://127.0.0.1:1"}), 1);
    EXPECT_EQ(Run({"image", Path("a.png"), "--address", "sim://M7718C"}), 2);
    EXPECT_FALSE(Exists("a.gif"));
    EXPECT_FALSE(Exists("a.png"));
}

TEST_F(ImageTest, OfAnOlderModelIsTheCaptureThatWasMadeByHand) {
    const RunningGenerator generator({.model = "M771XB"});
    const std::string address = generator.Address();
    EXPECT_EQ(Run({"image", Path("a.bmp"), "--yes", "--address", address}), 1);
    EXPECT_NE(Err.find("Bitmap not found in instrument\n"), std::string::npos) << Err;
    {
        const std::lock_guard lock(generator.Device().Mutex());
        // The end of the command's own remote operation may be on its way still.
        generator.Device().PressKey("LOCAL");
        generator.Device().PressKey("TRIGGER");
    }
    EXPECT_EQ(Run({"image", Path("a.bmp"), "--address", address}), 130);
    EXPECT_EQ(Run({"image", Path("a.bmp"), "--yes", "--address", address}), 0) << Err;
    EXPECT_TRUE(Content("a.bmp").starts_with("BM"));
}

}  // namespace
}  // namespace krv::tests
