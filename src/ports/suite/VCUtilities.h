// The suite's utilities: the window and the document that a control lies in.
#pragma once

#include <memory>

#include "ports/desktop/ControlSurface.h"
#include "ports/desktop/FormScreen.h"
#include "ports/office/HostDocument.h"

namespace krv::ports {

class VCUtilities {
 public:
    virtual ~VCUtilities() = default;
    // 0 for a control that lies in no window that is known.
    virtual ports::WindowHandle TopLevelWindow(ports::ControlSurface& control) = 0;
    // Throws Error for a control that lies in no document.
    virtual std::shared_ptr<ports::HostDocument> ContainingDocument(
        ports::ControlSurface& control) = 0;
};

}  // namespace krv::ports
