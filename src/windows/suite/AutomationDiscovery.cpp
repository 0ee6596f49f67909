#include "windows/suite/AutomationDiscovery.h"

#include "common/Error.h"
#include "common/ErrorTrap.h"
#include "windows/automation/AutomationPeer.h"
#include "windows/automation/EventSubscription.h"
#include "windows/suite/AutomationSettings.h"

namespace krv::windows {
namespace {

// The control's dispatch interface of events, and the number of the only one.
constexpr IID DiscoveryEventsId{
    0x52e1a9c4, 0x3f27, 0x4d0b, {0x8a, 0x55, 0x6b, 0x8f, 0x0f, 0x3c, 0x11, 0xe0}};
constexpr DISPID ConnectionChange = 1;

}  // namespace

std::shared_ptr<ports::IOSettings> AutomationDiscovery::Settings() {
    LateBound settings = m_control.GetObject(L"IOSettings");
    if (!settings) {
        throw Error(ErrorNumber::ObjectNotSet);
    }
    return std::make_shared<AutomationIOSettings>(std::move(settings));
}

void AutomationDiscovery::SetSettings(const std::shared_ptr<ports::IOSettings>& settings) {
    m_control.PutObject(L"IOSettings", settings ? AutomationBehind(*settings) : nullptr);
}

std::unique_ptr<Subscription> AutomationDiscovery::ReceiveEvents(ports::DiscoveryEvents& receiver) {
    std::unique_ptr<Subscription> subscription;
    TrapErrors([&] {
        subscription = SubscribeToEvents(m_control.Object(), DiscoveryEventsId,
                                         [&receiver](DISPID event, const DISPPARAMS&) {
                                             if (event == ConnectionChange) {
                                                 receiver.OnConnectionChange();
                                             }
                                         });
    });
    return subscription;
}

}  // namespace krv::windows
