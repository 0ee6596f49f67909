// Any foreign control that a screen has put into a form's placeholder. What it can do is stated by
// the port of its role, which derives from this.
#pragma once

namespace krv::ports {

class ForeignObject {
 public:
    ForeignObject() = default;
    ForeignObject(const ForeignObject&) = delete;
    ForeignObject& operator=(const ForeignObject&) = delete;
    virtual ~ForeignObject() = default;
};

}  // namespace krv::ports
