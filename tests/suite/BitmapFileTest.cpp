#include "suite/picture/BitmapFile.h"

#include <gtest/gtest.h>

#include "common/Error.h"
#include "suite/picture/Bytes.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/SamplePictures.h"

namespace krv::tests {
namespace {

using namespace suite::picture;

// A bitmap file written down by hand.
std::string BitmapFile(int width, int height, int bitsPerPixel, const std::string& colors,
                       const std::string& bits, std::uint32_t compression = 0) {
    std::string file = "BM";
    Put32(file, 54 + colors.size() + bits.size());
    Put32(file, 0);
    Put32(file, 54 + colors.size());
    Put32(file, 40);
    Put32(file, width);
    Put32(file, height);
    Put16(file, 1);
    Put16(file, bitsPerPixel);
    Put32(file, compression);
    Put32(file, 0);
    Put32(file, 0);
    Put32(file, 0);
    Put32(file, colors.size() / 4);
    Put32(file, 0);
    return file + colors + bits;
}

std::string PixelsOf(const std::string& file) {
    const Picture picture = ParseBitmapFile(file);
    std::string text;
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            const Color color = picture.Row(y)[x];
            text += std::to_string(color.red) + '/' + std::to_string(color.green) + '/' +
                    std::to_string(color.blue) + (x + 1 < picture.width ? " " : "|");
        }
    }
    return text;
}

std::int32_t RefusalOf(const std::string& file) {
    return ErrorNumberOf([&] { return ParseBitmapFile(file); });
}

using Bytes = std::string;

TEST(BitmapFile, TakesEveryPlainKindOfBitmap) {
    const Bytes blackAndRed("\0\0\0\0\0\0\xFF\0", 8);
    // Two pixels wide, stored from the bottom; each row fills four bytes.
    EXPECT_EQ(PixelsOf(BitmapFile(2, 2, 1, blackAndRed, Bytes("\x80\0\0\0\x40\0\0\0", 8))),
              "0/0/0 255/0/0|255/0/0 0/0/0|");
    EXPECT_EQ(PixelsOf(BitmapFile(2, -2, 1, blackAndRed, Bytes("\x80\0\0\0\x40\0\0\0", 8))),
              "255/0/0 0/0/0|0/0/0 255/0/0|");
    EXPECT_EQ(PixelsOf(BitmapFile(3, 1, 4, blackAndRed, Bytes("\x10\x10\0\0", 4))),
              "255/0/0 0/0/0 255/0/0|");
    EXPECT_EQ(PixelsOf(BitmapFile(2, 1, 8, blackAndRed, Bytes("\x01\x00\0\0", 4))),
              "255/0/0 0/0/0|");
    EXPECT_EQ(PixelsOf(BitmapFile(1, 1, 24, "", Bytes("\x01\x02\x03\0", 4))), "3/2/1|");
    EXPECT_EQ(PixelsOf(BitmapFile(1, 1, 32, "", Bytes("\x01\x02\x03\xFF", 4))), "3/2/1|");
    // Five bits a colour, or as masks say; both of two pixels in one group of bytes.
    EXPECT_EQ(PixelsOf(BitmapFile(2, 1, 16, "", Bytes("\x00\x7C\x1F\x02", 4))),
              "255/0/0 0/132/255|");
    const Bytes masks565("\x00\xF8\0\0\xE0\x07\0\0\x1F\0\0\0", 12);
    EXPECT_EQ(PixelsOf(BitmapFile(1, 1, 16, masks565, Bytes("\xE0\xFF\0\0", 4), 3)), "255/255/0|");
    const Bytes masksRgbx("\0\0\0\xFF\0\0\xFF\0\0\xFF\0\0", 12);
    EXPECT_EQ(PixelsOf(BitmapFile(1, 1, 32, masksRgbx, Bytes("\x09\x01\x02\x03", 4), 3)), "3/2/1|");
    // The header of 12 bytes, with colours of three.
    const Bytes core(
        "BM\x22\0\0\0\0\0\0\0\x20\0\0\0\x0C\0\0\0\x02\0\x01\0\x01\0\x01\0"
        "\0\0\0\0\0\xFF\x40\0\0\0",
        36);
    EXPECT_EQ(PixelsOf(core), "0/0/0 255/0/0|");
    // A run, plain indices with a byte to fill up, a row's end, a step, the picture's end.
    EXPECT_EQ(PixelsOf(BitmapFile(
                  5, 2, 8, blackAndRed,
                  Bytes("\x02\x01\0\x03\0\x01\0\0\0\0\0\x02\x03\0\x01\x01\0\x01", 18), 1)),
              "0/0/0 0/0/0 0/0/0 255/0/0 0/0/0|255/0/0 255/0/0 0/0/0 255/0/0 0/0/0|");
    EXPECT_EQ(
        PixelsOf(BitmapFile(6, 1, 4, blackAndRed, Bytes("\x03\x10\0\x03\x01\x10\0\x01", 8), 2)),
        "255/0/0 0/0/0 255/0/0 0/0/0 255/0/0 255/0/0|");
}

TEST(BitmapFile, RefusesWhatIsNoPlainBitmap) {
    const Bytes colors("\0\0\0\0\0\0\xFF\0", 8);
    const Bytes good = BitmapFile(2, 2, 8, colors, Bytes(8, '\0'));
    EXPECT_EQ(RefusalOf(good), 0);
    for (std::size_t size = 0; size < good.size(); ++size) {
        EXPECT_EQ(RefusalOf(good.substr(0, size)), ErrorNumber::InvalidFileFormat) << size;
    }
    const Bytes bits(8, '\0');
    for (const Bytes& bad :
         {BitmapFile(0, 2, 8, colors, bits), BitmapFile(-2, 2, 8, colors, bits),
          BitmapFile(2, 0, 8, colors, bits), BitmapFile(2, INT32_MIN, 8, colors, bits),
          BitmapFile(INT32_MAX, 2, 32, "", bits), BitmapFile(30000, 30000, 24, "", bits),
          BitmapFile(2, 2, 12, "", bits), BitmapFile(2, 2, 8, colors, bits, 2),
          BitmapFile(2, 2, 8, colors, Bytes("\x03\x01\0\x01", 4), 1),
          BitmapFile(2, 2, 8, colors, Bytes("\0\x02\0\x02\x01\x01", 6), 1),
          BitmapFile(2, 2, 8, colors, Bytes("\x01\x01", 2), 1),
          BitmapFile(30000, 30000, 8, colors, bits, 1), BitmapFile(2, 2, 16, "", bits, 3),
          BitmapFile(2, 2, 8, colors, Bytes("\x02\0\0\0\0\0\0\0", 8)),
          BitmapFile(2, 2, 1, colors + colors, bits)}) {
        EXPECT_EQ(RefusalOf(bad), ErrorNumber::InvalidFileFormat);
    }
}

TEST(BitmapFile, KeepsEveryPixelWithAsFewBitsAsTheColoursNeed) {
    struct Case {
        int colors;
        unsigned bitsPerPixel;
    };
    for (const auto& [colors, bitsPerPixel] :
         {Case{1, 4}, Case{16, 4}, Case{17, 8}, Case{256, 8}, Case{257, 24}}) {
        const Picture sample = SamplePicture(37, 11, colors);
        const Bytes file = EncodeBitmapFile(sample);
        EXPECT_EQ(ParseBitmapFile(file).pixels, sample.pixels) << colors;
        EXPECT_EQ(NumberAt<std::uint16_t>(file, 28), bitsPerPixel) << colors;
        EXPECT_EQ(NumberAt<std::uint32_t>(file, 2), file.size());
    }
}

TEST(IndexedPicture, GivesPicturesOfManyColoursTheNearestOfAnEvenSpread) {
    Picture many = SamplePicture(20, 20, 400);
    many.pixels[0] = {255, 255, 255};
    many.pixels[1] = {0, 102, 25};
    const IndexedPicture indexed = ToIndexed(many);
    ASSERT_LE(indexed.colors.size(), 256U);
    EXPECT_EQ(indexed.colors[indexed.indices[0]], (Color{255, 255, 255}));
    EXPECT_EQ(indexed.colors[indexed.indices[1]], (Color{0, 102, 0}));
    EXPECT_EQ(indexed.indices.size(), many.pixels.size());
}

}  // namespace
}  // namespace krv::tests
