// Windows bitmaps: files, and the device-independent bitmap that is the larger part of one and of
// the metafiles.
#pragma once

#include <string>
#include <string_view>

#include "suite/picture/Picture.h"

namespace krv::suite::picture {

struct DeviceIndependentBitmap {
    // The header and the colours.
    std::string information;
    std::string bits;
};

// Rows from the bottom; 4 or 8 bits a pixel where so many suffice, otherwise 24.
[[nodiscard]] DeviceIndependentBitmap EncodeDib(const Picture& picture);

[[nodiscard]] std::string EncodeBitmapFile(const Picture& picture);

// Takes uncompressed bitmaps of 1, 4, 8, 24 or 32 bits a pixel, with rows from the bottom or from
// the top. The bytes may be anything: throws Error 321 when they aren't such a bitmap.
[[nodiscard]] Picture ParseBitmapFile(std::string_view bytes);

}  // namespace krv::suite::picture
