// The suite's list of named states and its state control, over automation.
#pragma once

#include <utility>

#include "ports/suite/StateInfo.h"
#include "windows/automation/AutomationPeer.h"
#include "windows/automation/LateBound.h"

namespace krv::windows {

// Implemented by the object behind a control's surface: the control as the suite's ISetupInterface.
class SetupPeer {
 public:
    virtual ~SetupPeer() = default;
    // Never null; a caller that keeps it takes a reference.
    [[nodiscard]] virtual IDispatch* SetupAutomation() = 0;
};

class AutomationStateInfo final : public ports::StateInfo, public AutomationPeer {
 public:
    explicit AutomationStateInfo(LateBound info) : m_info(std::move(info)) {}
    [[nodiscard]] IDispatch* Automation() const override { return m_info.Object(); }

    // Throws Error 13 for a control whose surface is no SetupPeer.
    void SetSetupInterface(ports::SetupInterface* setup) override;
    void WriteProperties(PropertyBag& bag) override;
    void ReadProperties(PropertyBag& bag) override;

 private:
    LateBound m_info;
};

// Made for a control that has been put on a form.
class AutomationInstrumentState : public ports::InstrumentState {
 public:
    explicit AutomationInstrumentState(LateBound control) : m_control(std::move(control)) {}
    // Throws Error 13 for a list that isn't the suite's.
    void SetStateInfo(const std::shared_ptr<ports::StateInfo>& info) override;

 private:
    LateBound m_control;
};

}  // namespace krv::windows
