// A document's pictures as the bytes of its file, and back.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "bench/document/DocumentPicture.h"

namespace krv::bench {

// Throws Error 380 when the pictures are too large together.
[[nodiscard]] std::string EncodePictures(const std::vector<DocumentPicture>& pictures);

// The bytes may come from anywhere. Throws Error 321, saying what is wrong, for anything that
// EncodePictures doesn't write. Linked pictures that aren't saved come without their bytes.
[[nodiscard]] std::vector<DocumentPicture> DecodePictures(std::string_view bytes);

// Whether a picture fits what a page may hold: a size above 0, nothing beyond 22 inches.
[[nodiscard]] bool FitsPage(const DocumentPicture& picture);

}  // namespace krv::bench
