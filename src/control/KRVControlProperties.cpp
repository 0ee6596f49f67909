// What the host's document keeps of the control: which adapter it had, the captured states and
// its connection.
#include "common/ErrorTrap.h"
#include "common/ScopeExit.h"
#include "control/KRVControl.h"
#include "control/frmConnect.h"

namespace krv::control {
namespace {

constexpr const char* AdapterKey = "DataCWritten";
constexpr const char* StatesKey = "instrSetupInfoWritten";
constexpr const char* SettingsKey = "IOSettingWritten";

}  // namespace

void KRVControl::WriteProperties(PropertyBag& propBag) {
    if (m_appConnection) {
        propBag.Write(AdapterKey, std::int32_t{m_appConnection->SavedDataCValue()});
        m_appConnection->WriteProperties(propBag);
    } else {
        propBag.Write(AdapterKey, std::int32_t{hosts::NoneSaved});
    }
    if (m_instrSetupInfo) {
        propBag.Write(StatesKey, true);
        m_instrSetupInfo->WriteProperties(propBag);
    }
    if (m_settings) {
        propBag.Write(SettingsKey, true);
        m_settings->WriteProperties(propBag);
    }
}

void KRVControl::ReadProperties(PropertyBag& propBag) {
    TrapErrors([&] {
        ReadAdapter(propBag);
        ReadStates(propBag);
        ReadSettings(propBag);
    });
    FollowConnection();
}

void KRVControl::ReadAdapter(PropertyBag& propBag) {
    const std::int32_t kind = propBag.ReadLong(AdapterKey, hosts::NoneSaved);
    if (kind == hosts::NoneSaved) {
        return;
    }
    const auto adapter = m_services.adapters.CreateAdapter(
        kind == hosts::ExcelSaved ? hosts::ExcelSaved : hosts::WordSaved);
    m_appConnection = adapter;
    adapter->ReadProperties(propBag);
    // It finds its host through the control, and without one it waits for the host's own call.
    adapter->Init(nullptr, Server(), *this, m_services.surface.ContextHandle());
}

void KRVControl::ReadStates(PropertyBag& propBag) {
    if (propBag.ReadBoolean(StatesKey, false)) {
        const auto states = m_services.suite.CreateStateInfo();
        states->ReadProperties(propBag);
        m_instrSetupInfo = states;
    }
}

void KRVControl::ReadSettings(PropertyBag& propBag) {
    if (!propBag.ReadBoolean(SettingsKey, false)) {
        // Empty on purpose: the usual settings are for controls that were never saved.
        m_settings = m_services.suite.CreateIOSettings();
        return;
    }
    LoadDiscovery();
    m_settings = m_services.suite.CreateIOSettings();
    m_settings->ReadProperties(propBag);
    const auto session = m_settings->IO();
    if (!session || !session->IsAlive()) {
        return;
    }
    UseSession(session);
    const ScopeExit leave([this] { ReturnInstrumentToLocal(); });
    CheckIdentification();
}

// The suite's discovery component is started once, since settings that it saved may need it to be
// read.
void KRVControl::LoadDiscovery() {
    frmConnect dialog(m_services.desktop.screen);
    dialog.SetTag("yuck");
    dialog.Unload();
}

void KRVControl::PropertiesChanged() const {
    if (OnPropertiesChanged) {
        OnPropertiesChanged();
    }
}

}  // namespace krv::control
