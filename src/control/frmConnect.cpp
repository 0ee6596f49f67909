#include "control/frmConnect.h"

#include <utility>

#include "common/ErrorTrap.h"
#include "hosts/HelpTopics.h"

namespace krv::control {

frmConnect::frmConnect(ports::FormScreen& screen) : Form("frmConnect", screen) {
    LayOut();
    cmdHelp.OnClick = [this] { ShowHelp(); };
    cmdClose.OnClick = [this] {
        KeepSettings();
        server = nullptr;
        AppConnection = nullptr;
        Unload();
    };
}

void frmConnect::LayOut() {
    Caption = " Connect To TQL/KRV Signal Generator";
    Place = forms::Place{0, 0, 7335, 5415};
    ctlInstrumentDiscovery.LayOut({120, 120, 7095, 4665});
    ctlInstrumentDiscovery.Properties = {{"connectbuttonsvisible", true},
                                         {"supportinstrumentslabelvisible", true}};
    cmdHelp.LayOut({4665, 4920, 1215, 375}, "Help");
    cmdClose.LayOut({6000, 4920, 1215, 375}, "Close");
    cmdClose.IsCancel = true;
}

std::shared_ptr<ports::IOSettings> frmConnect::IOSettings() const {
    return m_discovery ? m_discovery->Settings() : m_settings;
}

void frmConnect::SetIOSettings(const std::shared_ptr<ports::IOSettings>& settings) {
    m_settings = settings;
    // A discovery control that isn't there, or that refuses, is met again by showing the form.
    TrapErrors([&] {
        Load();
        if (m_discovery) {
            m_discovery->SetSettings(settings);
        }
    });
}

void frmConnect::SetTag(std::string tag) {
    Load();
    m_tag = std::move(tag);
}

void frmConnect::OnLoad() {
    m_discovery =
        std::dynamic_pointer_cast<ports::DiscoveryControl>(ctlInstrumentDiscovery.Object());
    if (m_discovery) {
        m_discoveryEvents = m_discovery->ReceiveEvents(*this);
    }
}

void frmConnect::OnUnload() {
    m_discoveryEvents.reset();
    m_discovery.reset();
}

void frmConnect::OnQueryClose() {
    KeepSettings();
    Unload();
}

bool frmConnect::OnKeyDown(int keyCode, bool shift, bool control, bool alt) {
    if (keyCode != forms::KeyCode::F1 || shift || control || alt) {
        return false;
    }
    ShowHelp();
    return true;
}

void frmConnect::ShowHelp() {
    if (AppConnection) {
        AppConnection->DoHelp(applicationHWND, hosts::HelpContext::Connect);
    }
}

// The discovery control goes with the dialog, its settings are what the dialog was shown for. When
// it can't hand them out, those that it was given stand.
void frmConnect::KeepSettings() {
    TrapErrors([this] { m_settings = IOSettings(); });
}

void frmConnect::OnConnectionChange() {
    TrapErrors([used = server, adapter = AppConnection] {
        if (used) {
            used->SetInstrumentSession(nullptr);
        }
        if (adapter) {
            adapter->SetInitialToolbarState();
        }
    });
}

}  // namespace krv::control
