// Pictures written to files for the user and for host applications.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "suite/picture/Picture.h"

namespace krv::suite::picture {

enum class PictureFormat : std::uint8_t {
    Gif,
    Bitmap,
    PlaceableMetafile,
    Jpeg,
    Tiff,
    EnhancedMetafile
};

// By the extension, in any case: gif, bmp, wmf, jpg or jpeg, tif or tiff, emf. Throws Error 321
// that names the file and what it could be.
[[nodiscard]] PictureFormat FormatOfFile(std::string_view file);

[[nodiscard]] std::string EncodePicture(const Picture& picture, PictureFormat format);

// Puts the bytes into the place of the file that may be there, or leaves that one as it is and
// throws Error 75, which names the file and the reason. The name is UTF-8.
void WriteWhole(const std::string& file, std::string_view bytes);

}  // namespace krv::suite::picture
