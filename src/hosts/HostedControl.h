// HostedControl: the toolbar control as its host adapter sees it.
#pragma once

#include <memory>

#include "ports/desktop/ControlSurface.h"
#include "ports/office/CommandBar.h"

namespace krv::hosts {

class HostedControl {
 public:
    virtual ~HostedControl() = default;
    // The control as its container sees it, by which its document is found.
    virtual ports::ControlSurface& Surface() = 0;
    // The control's own buttons, which an adapter keeps in step with the host's command bar.
    virtual std::shared_ptr<ports::CommandBar> OwnToolbar() = 0;
};

}  // namespace krv::hosts
