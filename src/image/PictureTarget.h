// PictureTarget: a host application as the place that a screen image is put into.
#pragma once

#include <string>

namespace krv::image {

class PictureTarget {
 public:
    virtual ~PictureTarget() = default;
    // What the destination dialog calls the place in the document.
    [[nodiscard]] virtual std::string PlacementCaption() const = 0;
    // Each throws Error when the application refuses.
    virtual void SetBusyCursor(bool isBusy) = 0;
    // Inserts the picture file into the active document, which keeps a copy of it.
    virtual void Place(const std::string& file) = 0;
};

}  // namespace krv::image
