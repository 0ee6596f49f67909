// DocumentPicture: a picture of a document, and where it stands. Lengths are in points, counted
// from the page's text area or from the sheet's first cell.
#pragma once

#include <optional>
#include <string>

namespace krv::bench {

struct PictureSize {
    double width = 0;
    double height = 0;
};

struct DocumentPicture {
    std::string name = {};
    // The content of the picture's file.
    std::string bytes = {};
    PictureSize size = {};
    // A picture without a place stands below the text and the pictures before it.
    std::optional<double> left = {};
    std::optional<double> top = {};
};

// How long a side of a picture may be, and how far from its document's beginning it may stand.
struct PictureLimits {
    double longestSide;
    double farthest;
};

}  // namespace krv::bench
