// The suite's list of named states, and the control in which the user works on it. Each operation
// throws Error with the component's description.
#pragma once

#include <memory>

#include "common/PropertyBag.h"
#include "ports/desktop/ForeignObject.h"
#include "ports/suite/SetupInterface.h"

namespace krv::ports {

class StateInfo {
 public:
    virtual ~StateInfo() = default;
    // The object that states are captured from and restored through. It outlives its use here: null
    // ends that.
    virtual void SetSetupInterface(SetupInterface* setup) = 0;

    // Into and out of a bag that holds other objects' entries, too, under names of the list's own.
    virtual void WriteProperties(PropertyBag& bag) = 0;
    // The bag may come from anywhere. Throws Error for invalid entries and then changes nothing.
    virtual void ReadProperties(PropertyBag& bag) = 0;
};

class InstrumentState : public ports::ForeignObject {
 public:
    // The control shows this list and works on it.
    virtual void SetStateInfo(const std::shared_ptr<StateInfo>& info) = 0;
};

}  // namespace krv::ports
