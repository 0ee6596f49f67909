// Any document of a host application, handed over without saying which kind it is.
#pragma once

namespace krv::ports {

class HostDocument {
 public:
    virtual ~HostDocument() = default;
};

}  // namespace krv::ports
