// The suite's utilities, over automation.
#pragma once

#include <utility>

#include "ports/suite/VCUtilities.h"
#include "windows/automation/LateBound.h"

namespace krv::windows {

class AutomationUtilities final : public suite::VCUtilities {
 public:
    explicit AutomationUtilities(LateBound utilities) : m_utilities(std::move(utilities)) {}

    // The surface is that of a control which can be automated (AutomationPeer); each throws Error
    // 13 for any other.
    desktop::WindowHandle TopLevelWindow(desktop::ControlSurface& control) override;
    std::shared_ptr<office::HostDocument> ContainingDocument(
        desktop::ControlSurface& control) override;

 private:
    LateBound m_utilities;
};

}  // namespace krv::windows
