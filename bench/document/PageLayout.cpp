#include "bench/document/PageLayout.h"

#include <algorithm>

namespace krv::bench {
namespace {

constexpr double Gap = 8;

}  // namespace

PageLayout LayOut(const std::vector<DocumentPicture>& pictures, double textHeight) {
    PageLayout layout;
    double next = textHeight + Gap;
    layout.bottom = textHeight;
    for (const DocumentPicture& picture : pictures) {
        PicturePlace place{picture.left.value_or(0), picture.top.value_or(next), picture.size.width,
                           picture.size.height};
        if (!picture.top) {
            next += place.height + Gap;
        }
        layout.bottom = std::max(layout.bottom, place.top + place.height);
        layout.pictures.push_back(place);
    }
    return layout;
}

}  // namespace krv::bench
