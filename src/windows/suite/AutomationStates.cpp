#include "windows/suite/AutomationStates.h"

#include "windows/automation/PropertyBags.h"

namespace krv::windows {

void AutomationStateInfo::SetSetupInterface(ports::SetupInterface* setup) {
    if (setup == nullptr) {
        m_info.PutObject(L"SetupInterface", nullptr);
        return;
    }
    auto* const peer = dynamic_cast<SetupPeer*>(&setup->Surface());
    if (peer == nullptr) {
        throw Error(ErrorNumber::TypeMismatch);
    }
    m_info.PutObject(L"SetupInterface", peer->SetupAutomation());
}

void AutomationStateInfo::WriteProperties(PropertyBag& bag) {
    SaveObject(m_info.Object(), bag);
}

void AutomationStateInfo::ReadProperties(PropertyBag& bag) {
    LoadObject(m_info.Object(), bag);
}

void AutomationInstrumentState::SetStateInfo(const std::shared_ptr<ports::StateInfo>& info) {
    m_control.PutObject(L"StateInfo", info ? AutomationBehind(*info) : nullptr);
}

}  // namespace krv::windows
