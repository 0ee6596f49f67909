// Any document of a host application, handed over without saying which kind it is.
#pragma once

namespace krv::office {

class HostDocument {
 public:
    virtual ~HostDocument() = default;
};

}  // namespace krv::office
