// The reader of bitmaps, which come from an instrument. What it takes must be what its own encoder
// makes of the picture again.
#include <algorithm>
#include <string>

#include "common/Error.h"
#include "fuzz/FuzzTarget.h"
#include "suite/picture/BitmapFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace krv::suite::picture;
    const std::string bytes(data, data + size);
    Picture picture;
    try {
        picture = ParseBitmapFile(bytes);
    } catch (const krv::Error&) {
        return 0;
    }
    // One bit a pixel may make a large picture of few bytes.
    if (picture.pixels.size() > 100000) {
        return 0;
    }
    const Picture again = ParseBitmapFile(EncodeBitmapFile(picture));
    krv::fuzz::Require(again.width == picture.width && again.height == picture.height &&
                           std::equal(again.pixels.begin(), again.pixels.end(),
                                      picture.pixels.begin(), picture.pixels.end()),
                       "the picture changed");
    return 0;
}
