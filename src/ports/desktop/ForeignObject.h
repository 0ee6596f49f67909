// A control of another maker that a screen has put into a form's placeholder. The port of its role,
// which derives from this, says what it can do.
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
