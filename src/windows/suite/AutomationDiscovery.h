// The suite's discovery control, over automation: made for a control that has been put on a form,
// and given to the form's placeholder.
#pragma once

#include <utility>

#include "ports/suite/DiscoveryControl.h"
#include "windows/automation/LateBound.h"

namespace krv::windows {

class AutomationDiscovery : public ports::DiscoveryControl {
 public:
    explicit AutomationDiscovery(LateBound control) : m_control(std::move(control)) {}

    // Throws Error 91 while the control has none.
    std::shared_ptr<ports::IOSettings> Settings() override;
    // Throws Error 13 for settings that aren't the suite's.
    void SetSettings(const std::shared_ptr<ports::IOSettings>& settings) override;
    std::unique_ptr<Subscription> ReceiveEvents(ports::DiscoveryEvents& receiver) override;

 private:
    LateBound m_control;
};

}  // namespace krv::windows
