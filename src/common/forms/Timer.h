// Timer: fires again and again every Interval milliseconds while it is enabled, its Interval is
// above 0 and its form is loaded. Every write of either restarts the wait, also one that changes
// nothing.
#pragma once

#include <string>

#include "common/forms/Control.h"
#include "common/forms/Event.h"

namespace krv::forms {

class Timer final : public Control {
 public:
    Timer(Form& form, std::string name);

    [[nodiscard]] int Interval() const noexcept { return m_interval; }
    // Throws Error 380 for a negative interval.
    void SetInterval(int milliseconds);
    void SetTimerEnabled(bool enabled);
    [[nodiscard]] bool Running() const noexcept { return m_enabled && m_interval > 0; }

    EventHandler OnTimer;

    // The wait is over. A stopped timer takes no notice.
    bool UserWaited(ports::UserInput input);

 private:
    // A plain property can't restart the wait with a write of the same value.
    using Control::Enabled;

    void DescribeKind(std::string& text) const override;
    int m_interval = 0;
    bool m_enabled = true;
};

}  // namespace krv::forms
