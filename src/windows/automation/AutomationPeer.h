// AutomationPeer: implemented besides its port by every object that stands for an automation
// object, so that adapters can hand the automation object on to the other side.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <oaidl.h>

#include "common/Error.h"

namespace krv::windows {

class AutomationPeer {
 public:
    virtual ~AutomationPeer() = default;
    // Never null; a caller that keeps it takes a reference.
    [[nodiscard]] virtual IDispatch* Automation() const = 0;
};

// The automation object behind a port's object. Throws Error 13 when there is none, that is when
// the object came from elsewhere.
template <class PortObject>
[[nodiscard]] IDispatch* AutomationBehind(PortObject& object) {
    const auto* peer = dynamic_cast<const AutomationPeer*>(&object);
    if (peer == nullptr) {
        throw Error(ErrorNumber::TypeMismatch);
    }
    return peer->Automation();
}

}  // namespace krv::windows
