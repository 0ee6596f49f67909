#include "bench/shared/windows/ComAddIns.h"

#include <algorithm>
#include <utility>

#include "bench/shared/windows/AddInObjects.h"
#include "common/ErrorTrap.h"
#include "windows/base/WideText.h"

namespace krv::bench {

ComAddIns::ComAddIns(OfficeAutomation& automation, std::function<void(const std::string&)> report)
    : m_automation(automation), m_report(std::move(report)) {
    const std::wstring application = automation.Traits().officeName;
    for (RegisteredAddIn& registered : FindAddIns(application)) {
        m_all.push_back(std::make_shared<ComAddIn>(std::move(registered), application));
    }
    automation.SetComAddIns(m_all);
}

void ComAddIns::ConnectAtStartup() {
    for (const auto& addIn : m_all) {
        if (!addIn->Registered().IsForStartup()) {
            continue;
        }
        const auto failure = FailureOf([&] {
            addIn->Connect(m_automation.ApplicationObject(), ObjectOf(addIn).Get(),
                           windows::ConnectMode::Startup);
        });
        if (failure) {
            m_report("The add-in " + windows::ToUtf8(addIn->Registered().progId) +
                     " wasn't loaded.  " + failure->Description());
        }
    }
}

void ComAddIns::TellStartupComplete() {
    for (const auto& addIn : m_all) {
        addIn->TellStartupComplete();
    }
}

void ComAddIns::ShutDown() {
    for (const auto& addIn : m_all) {
        addIn->TellBeginShutdown();
    }
    for (const auto& addIn : m_all) {
        addIn->Disconnect(windows::DisconnectMode::HostShutdown);
    }
}

bool ComAddIns::HasConnected() const {
    return std::any_of(m_all.begin(), m_all.end(),
                       [](const auto& addIn) { return addIn->IsConnected(); });
}

OfficeAutomation::Object ComAddIns::ObjectOf(const std::shared_ptr<ComAddIn>& addIn) const {
    const _variant_t object = NewComAddIn(m_automation.shared_from_this(), addIn);
    return V_DISPATCH(&object);
}

}  // namespace krv::bench
