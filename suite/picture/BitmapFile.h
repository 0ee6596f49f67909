// Windows bitmaps: files, and the device-independent bitmap that is the larger part of one and of
// the metafiles.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "suite/picture/Picture.h"

namespace krv::suite::picture {

inline constexpr std::size_t BitmapFileHeaderSize = 14;
// Of the usual one of the headers that may follow.
inline constexpr std::size_t BitmapInfoHeaderSize = 40;

struct DeviceIndependentBitmap {
    // The header and the colours.
    std::string information;
    std::string bits;
};

// Rows from the bottom; 4 or 8 bits a pixel where so many suffice, otherwise 24.
[[nodiscard]] DeviceIndependentBitmap EncodeDib(const Picture& picture);

[[nodiscard]] std::string EncodeBitmapFile(const Picture& picture);

// Rows are filled up to whole groups of four bytes.
[[nodiscard]] constexpr std::size_t BitmapRowSize(std::size_t width,
                                                  std::size_t bitsPerPixel) noexcept {
    return (width * bitsPerPixel + 31) / 32 * 4;
}

// Takes bitmaps of 1, 4, 8, 16, 24 or 32 bits a pixel, with rows from the bottom or from the top,
// with colour masks and run-length coding, and with the header of 12 bytes. The bytes may be
// anything: throws Error 321 when they aren't such a bitmap.
[[nodiscard]] Picture ParseBitmapFile(std::string_view bytes);

}  // namespace krv::suite::picture
