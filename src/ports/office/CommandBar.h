// A host application's command bar and the buttons on it. Every operation throws Error with the
// host's own description when the host refuses. Setting what a button has already writes nothing:
// an application counts every write as a change of what it keeps the bar in.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace krv::ports {

class CommandBarControl {
 public:
    virtual ~CommandBarControl() = default;
    virtual void SetEnabled(bool enabled) = 0;
    virtual void SetVisible(bool visible) = 0;
    virtual void SetTooltipText(const std::string& text) = 0;
    virtual void SetCaption(const std::string& caption) = 0;
};

class CommandBar {
 public:
    virtual ~CommandBar() = default;
    virtual std::int32_t ControlCount() = 0;
    // Positions count from 1. Throws Error for a position without a control.
    virtual std::shared_ptr<CommandBarControl> ControlAt(std::int32_t position) = 0;
    // Throws Error when no control has the caption.
    virtual std::shared_ptr<CommandBarControl> ControlByCaption(const std::string& caption) = 0;
};

}  // namespace krv::ports
