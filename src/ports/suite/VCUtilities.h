// The suite's utilities: where a control lies in its host.
#pragma once

#include <memory>

#include "ports/desktop/ControlSurface.h"
#include "ports/desktop/FormScreen.h"
#include "ports/office/HostDocument.h"

namespace krv::ports {

class VCUtilities {
 public:
    virtual ~VCUtilities() = default;
    // Each throws Error when the control lies in no such thing.
    virtual ports::WindowHandle TopLevelWindow(ports::ControlSurface& control) = 0;
    virtual std::shared_ptr<ports::HostDocument> ContainingDocument(
        ports::ControlSurface& control) = 0;
};

}  // namespace krv::ports
