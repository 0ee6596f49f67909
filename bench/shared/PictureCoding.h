// A document's pictures as the bytes of its file, and back.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "bench/shared/DocumentPicture.h"

namespace krv::bench {

// Throws Error 380 when the pictures are too large together.
[[nodiscard]] std::string EncodePictures(const std::vector<DocumentPicture>& pictures);

// The bytes may come from anywhere. Throws Error 321, saying what is wrong, for anything that
// EncodePictures doesn't write.
[[nodiscard]] std::vector<DocumentPicture> DecodePictures(std::string_view bytes,
                                                          const PictureLimits& limits);

// Whether the picture has a size above 0 and keeps to the limits.
[[nodiscard]] bool Fits(const DocumentPicture& picture, const PictureLimits& limits);

}  // namespace krv::bench
