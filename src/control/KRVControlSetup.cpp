// The control's settings command, and what the suite's state control asks of it meanwhile.
#include <optional>
#include <vector>

#include "common/ErrorTrap.h"
#include "common/MemoryPropertyBag.h"
#include "common/ScopeExit.h"
#include "control/KRVControl.h"
#include "settings/FrmSetup.h"
#include "settings/SettingsSnapshot.h"

namespace krv::control {
namespace {

// What the document keeps of the states. Nothing when they can't be written; a document then counts
// as changed.
std::optional<std::vector<BagEntry>> EntriesOf(ports::StateInfo& states) {
    MemoryPropertyBag bag;
    if (!TrapErrors([&] { states.WriteProperties(bag); })) {
        return std::nullopt;
    }
    return bag.Entries();
}

}  // namespace

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
    const auto states = m_instrSetupInfo;
    const ScopeExit leave([&] {
        ReturnInstrumentToLocal();
        TakeSetupInterfaceBack(*states);
        dialog.Unload();
    });
    states->SetSetupInterface(this);
    dialog.SetInstrSetupInfo(states);
    const auto before = EntriesOf(*states);
    dialog.ShowModal(ApplicationWindow());
    if (!before || EntriesOf(*states) != before) {
        PropertiesChanged();
    }
    // Restoring a state may have changed what is connected.
    CheckIdentification();
}

// Or the control and its list of states would keep each other alive.
void KRVControl::TakeSetupInterfaceBack(ports::StateInfo& states) {
    TrapErrors([&] { states.SetSetupInterface(nullptr); });
}

std::string KRVControl::Model() {
    return Server()->Instrument()->Model();
}

Value KRVControl::SetupValue() {
    return settings::CaptureSettings(*Server());
}

void KRVControl::SetSetupValue(const Value& snapshot) {
    // It shows messages, during which the caller may release the control.
    const auto alive = m_services.surface.KeepAlive();
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
