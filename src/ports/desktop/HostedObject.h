// Any foreign control that a screen has put into a form's placeholder. What it can do is stated by
// the port of its role, which derives from this.
#pragma once

namespace krv::ports {

class HostedObject {
 public:
    HostedObject() = default;
    HostedObject(const HostedObject&) = delete;
    HostedObject& operator=(const HostedObject&) = delete;
    virtual ~HostedObject() = default;
};

}  // namespace krv::ports
