// A worksheet of Excel as far as a picture is placed on it. Places and sizes are in points. Every
// operation throws Error with the application's own description when it refuses.
#pragma once

#include <memory>
#include <string>

namespace krv::ports {

class Cell {
 public:
    virtual ~Cell() = default;
    virtual double Left() = 0;
    virtual double Top() = 0;
};

// A picture on the sheet.
class Shape {
 public:
    virtual ~Shape() = default;
    virtual void ScaleHeight(double factor, bool relativeToOriginalSize) = 0;
    virtual void ScaleWidth(double factor, bool relativeToOriginalSize) = 0;
};

struct PictureToAdd {
    std::string file;
    bool linkToFile = false;
    bool saveWithDocument = true;
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;
};

class Worksheet {
 public:
    virtual ~Worksheet() = default;
    virtual std::shared_ptr<Shape> AddPicture(const PictureToAdd& picture) = 0;
};

}  // namespace krv::ports
