// The control's settings command, and what the suite's state control asks of it meanwhile.
#include "common/ErrorTrap.h"
#include "common/ScopeExit.h"
#include "control/KRVControl.h"
#include "settings/FrmSetup.h"
#include "settings/SettingsSnapshot.h"

namespace krv::control {

void KRVControl::DoSetup() {
    Command([&] {
        if (!m_instrSetupInfo) {
            m_instrSetupInfo = m_services.suite.CreateStateInfo();
        }
        ShowSetupDialog();
    });
}

void KRVControl::ShowSetupDialog() {
    settings::FrmSetup dialog(m_services.desktop.screen);
    const ScopeExit leave([&] {
        TakeSetupInterfaceBack();
        dialog.Unload();
    });
    m_instrSetupInfo->SetSetupInterface(this);
    dialog.SetInstrSetupInfo(m_instrSetupInfo);
    dialog.ShowModal(ApplicationWindow());
    PropertiesChanged();
    // Restoring a state may have changed what is connected.
    CheckIdentification();
    ReturnInstrumentToLocal();
}

// Or the control and its list of states would keep each other alive.
void KRVControl::TakeSetupInterfaceBack() {
    if (m_instrSetupInfo) {
        TrapErrors([this] { m_instrSetupInfo->SetSetupInterface(nullptr); });
    }
}

std::string KRVControl::Model() {
    return Server()->Instrument()->Model();
}

Value KRVControl::SetupValue() {
    return settings::CaptureSettings(*Server());
}

void KRVControl::SetSetupValue(const Value& snapshot) {
    settings::RestoreSettings(*Server(), snapshot, m_services.desktop.messageBoxes);
}

std::string KRVControl::Version() {
    return Server()->Instrument()->FirmwareRevision();
}

std::shared_ptr<ports::LegacyFileInfo> KRVControl::GetLegacyVantorFileInfo(
    const std::string& /*first*/, const std::string& /*second*/) {
    return nullptr;
}

}  // namespace krv::control
