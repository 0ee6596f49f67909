// What the encoders write, decoded by another program.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <memory>

#include "suite/picture/PictureFile.h"
#include "tests/support/SamplePictures.h"
#include "tests/support/TemporaryFolder.h"

namespace krv::tests {
namespace {

using namespace suite::picture;

// The pixels as bytes of red, green and blue, from ImageMagick.
std::string Decode(const std::string& file) {
    const std::string command = "convert '" + file + "' -depth 8 rgb:-";
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    std::string bytes;
    for (int byte = std::getc(pipe.get()); byte != EOF; byte = std::getc(pipe.get())) {
        bytes += static_cast<char>(byte);
    }
    return bytes;
}

// The greatest difference of a channel, or -1 when there aren't as many pixels.
int DifferenceAfterDecoding(const Picture& picture, const std::string& name) {
    const TemporaryFolder folder;
    const std::string file = (folder.Path() / name).string();
    WriteWhole(file, EncodePicture(picture, FormatOfFile(file)));
    const std::string decoded = Decode(file);
    if (decoded.size() != picture.pixels.size() * 3) {
        return -1;
    }
    int greatest = 0;
    for (std::size_t pixel = 0; pixel < picture.pixels.size(); ++pixel) {
        const Color& wanted = picture.pixels[pixel];
        int channel = 0;
        for (const int value : {wanted.red, wanted.green, wanted.blue}) {
            const auto found = static_cast<unsigned char>(
                decoded[pixel * 3 + static_cast<std::size_t>(channel++)]);
            greatest = std::max(greatest, std::abs(found - value));
        }
    }
    return greatest;
}

TEST(PictureDecoding, FindsEveryPixelOfFilesWithoutLoss) {
    for (const char* name : {"a.gif", "a.bmp", "a.tif"}) {
        for (const int colors : {3, 256}) {
            EXPECT_EQ(DifferenceAfterDecoding(SamplePicture(37, 11, colors), name), 0)
                << name << ' ' << colors;
        }
        EXPECT_EQ(DifferenceAfterDecoding(SamplePicture(1, 1, 1), name), 0) << name;
        EXPECT_EQ(DifferenceAfterDecoding(DisplayLikePicture(), name), 0) << name;
    }
    for (const char* name : {"a.bmp", "a.tif"}) {
        EXPECT_EQ(DifferenceAfterDecoding(SamplePicture(640, 320, 5000), name), 0) << name;
    }
}

TEST(PictureDecoding, FindsPixelsNearlyAsTheyWere) {
    // Half a step of the even spread.
    const int ofGif = DifferenceAfterDecoding(SamplePicture(40, 40, 1000), "a.gif");
    EXPECT_TRUE(ofGif >= 0 && ofGif <= 26) << ofGif;
    const int ofJpeg = DifferenceAfterDecoding(DisplayLikePicture(), "a.jpg");
    EXPECT_TRUE(ofJpeg >= 0 && ofJpeg <= 24) << ofJpeg;
}

}  // namespace
}  // namespace krv::tests
