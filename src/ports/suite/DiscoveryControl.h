// The suite's discovery control, in which the user finds an instrument and connects to it.
#pragma once

#include <memory>

#include "common/Subscription.h"
#include "ports/desktop/ForeignObject.h"
#include "ports/suite/IOSettings.h"

namespace krv::ports {

class DiscoveryEvents {
 public:
    virtual ~DiscoveryEvents() = default;
    // The user has connected or disconnected.
    virtual void OnConnectionChange() = 0;
};

class DiscoveryControl : public ports::ForeignObject {
 public:
    // Both throw Error with the control's description.
    virtual std::shared_ptr<IOSettings> Settings() = 0;
    virtual void SetSettings(const std::shared_ptr<IOSettings>& settings) = 0;
    // The receiver outlives the subscription. Null where the control has no such events to give.
    virtual std::unique_ptr<Subscription> ReceiveEvents(DiscoveryEvents& receiver) = 0;
};

}  // namespace krv::ports
