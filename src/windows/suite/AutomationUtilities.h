// The suite's utilities, over automation.
#pragma once

#include <utility>

#include "ports/suite/VCUtilities.h"
#include "windows/automation/LateBound.h"

namespace krv::windows {

class AutomationUtilities final : public ports::VCUtilities {
 public:
    explicit AutomationUtilities(LateBound utilities) : m_utilities(std::move(utilities)) {}

    // The surface is that of a control which can be automated (AutomationPeer); each throws Error
    // 13 for any other.
    ports::WindowHandle TopLevelWindow(ports::ControlSurface& control) override;
    std::shared_ptr<ports::HostDocument> ContainingDocument(
        ports::ControlSurface& control) override;

 private:
    LateBound m_utilities;
};

}  // namespace krv::windows
