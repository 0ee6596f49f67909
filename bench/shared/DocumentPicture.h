// DocumentPicture: a picture of a document, and where it goes. Lengths are in points, counted from
// the page's text area or from the sheet's first cell.
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
    // Those of the picture's file; empty for a linked picture whose file can't be read.
    std::string bytes = {};
    // The file that the picture is linked to; empty for one that isn't.
    std::string link = {};
    // A linked picture may be kept in the document, too.
    bool isSavedWithDocument = true;
    PictureSize size = {};
    // A picture without a place stands below the text and the pictures before it.
    std::optional<double> left = {};
    std::optional<double> top = {};
};

// What is to be added, with everything but the file left to the document.
struct PictureToAdd {
    std::string file = {};
    bool isLinked = false;
    bool isSavedWithDocument = true;
    std::optional<double> left = {};
    std::optional<double> top = {};
    // Of one alone follows the other by the picture's shape.
    std::optional<double> width = {};
    std::optional<double> height = {};
};

// The natural size of a picture by its file's bytes, in points.
class PictureMeter {
 public:
    virtual ~PictureMeter() = default;
    // Throws Error 481 for bytes that are no picture.
    virtual PictureSize NaturalSize(const std::string& bytes) = 0;
};

}  // namespace krv::bench
