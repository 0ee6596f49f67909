// Where a document's pictures stand on its page.
#pragma once

#include <vector>

#include "bench/shared/DocumentPicture.h"

namespace krv::bench {

// In points from the top left corner of the text area.
struct PicturePlace {
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;
};

struct PageLayout {
    std::vector<PicturePlace> pictures;
    // Where the text and all pictures have ended.
    double bottom = 0;
};

// Pictures with a place stand there. The others follow below the text, each below the one before,
// so that typing moves them and covers nothing.
[[nodiscard]] PageLayout LayOut(const std::vector<DocumentPicture>& pictures, double textHeight);

}  // namespace krv::bench
