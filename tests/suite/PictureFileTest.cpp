#include "suite/picture/PictureFile.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "common/Error.h"
#include "tests/support/TemporaryFolder.h"

namespace krv::tests {

using namespace suite;
using namespace suite::picture;
namespace {

TEST(PictureFormat, FollowsTheExtensionInAnyCase) {
    const std::vector<std::pair<const char*, PictureFormat>> cases{
        {"a.gif", PictureFormat::Gif},
        {"C:\\my.pictures\\a.BMP", PictureFormat::Bitmap},
        {"/tmp/x.emf/a.Wmf", PictureFormat::PlaceableMetafile},
        {"a.b.jpg", PictureFormat::Jpeg},
        {"a.JPEG", PictureFormat::Jpeg},
        {"a.tif", PictureFormat::Tiff},
        {"a.tiff", PictureFormat::Tiff},
        {"\xC3\xA4.emf", PictureFormat::EnhancedMetafile}};
    for (const auto& [file, format] : cases) {
        EXPECT_EQ(FormatOfFile(file), format) << file;
    }
    for (const char* file : {"a", "a.png", "gif", "a.gif/b", "a.gif\\b", "", "a."}) {
        try {
            static_cast<void>(FormatOfFile(file));
            FAIL() << file;
        } catch (const Error& error) {
            EXPECT_EQ(error.Number(), ErrorNumber::InvalidFileFormat);
            EXPECT_EQ(error.Description(),
                      "The picture \"" + std::string(file) +
                          "\" cannot be written: its name must end with .gif, .bmp, .wmf, .jpg, "
                          ".tif or .emf.");
        }
    }
}

TEST(PictureFile, IsWrittenWholeOrNotAtAll) {
    const TemporaryFolder folder;
    const auto path = [&](const char* name) {
        const std::u8string text = (folder.Path() / std::filesystem::path(name)).u8string();
        return std::string(text.begin(), text.end());
    };
    WriteWhole(path("a.bmp"), "first");
    WriteWhole(path("a.bmp"), "second");
    EXPECT_EQ(folder.Content("a.bmp"), "second");
    // A folder stands where the file should go.
    std::filesystem::create_directories(folder.Path() / "taken.gif" / "inside");
    for (const char* name : {"taken.gif", "missing/a.gif"}) {
        try {
            WriteWhole(path(name), "lost");
            FAIL() << name;
        } catch (const Error& error) {
            EXPECT_EQ(error.Number(), ErrorNumber::PathFileAccess);
            EXPECT_NE(error.Description().find("cannot be written"), std::string::npos);
        }
    }
    EXPECT_EQ(folder.Names(), (std::set<std::string>{"a.bmp", "taken.gif"}));
}

}  // namespace
}  // namespace krv::tests
