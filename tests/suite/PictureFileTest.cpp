#include "suite/picture/PictureFile.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/ErrorOf.h"

namespace krv::tests {
namespace {

using namespace suite::picture;

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
        EXPECT_EQ(ErrorOf([&] { return FormatOfFile(file); }),
                  "321 The picture \"" + std::string(file) +
                      "\" cannot be written: its name must end with .gif, .bmp, .wmf, .jpg, .jpeg, "
                      ".tif, .tiff or .emf.");
    }
}

}  // namespace
}  // namespace krv::tests
