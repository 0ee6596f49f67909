// The control's connect command, and what follows each change of the connection.
#include "common/Error.h"
#include "common/ErrorTrap.h"
#include "common/ScopeExit.h"
#include "common/Text.h"
#include "control/Identification.h"
#include "control/KRVControl.h"
#include "control/frmConnect.h"
#include "hosts/OfficeProcedures.h"

namespace krv::control {
namespace {

std::string UpperCaseAddress(const std::shared_ptr<ports::IoSession>& session) {
    return session ? UpperCase(session->Address()) : std::string();
}

std::shared_ptr<ports::IOSettings> MakeDefaultSettings(ports::SuiteComponents& suite,
                                                       ports::KRVServer& server) {
    const auto settings = suite.CreateIOSettings();
    settings->SetInstrumentType("Signal Generator");
    for (const std::string& model : server.SupportedModels()) {
        settings->AddSupportedInstrument(model, model);
    }
    const auto serial = suite.CreateRS232Config();
    serial->SetPortCode(1);
    serial->SetBaudRate(19200);
    serial->SetDataBits(8);
    serial->SetHandshakeCode(3);
    settings->AddInterfaceConfiguration(serial, "RS232");
    return settings;
}

}  // namespace

void KRVControl::DoConnect() {
    Command([&] {
        const auto dialog = MakeConnectDialog();
        const ScopeExit leave([&] {
            ReturnInstrumentToLocal();
            dialog->Unload();
        });
        ConnectThrough(*dialog);
    });
}

std::unique_ptr<frmConnect> KRVControl::MakeConnectDialog() {
    // Starting the discovery component may take seconds.
    SetBusy(true);
    const ScopeExit idle([this] { SetBusy(false); });
    auto dialog = std::make_unique<frmConnect>(m_services.desktop.screen);
    dialog->SetIOSettings(Settings());
    dialog->AppConnection = m_appConnection;
    dialog->server = Server();
    dialog->applicationHWND = ApplicationWindow();
    return dialog;
}

void KRVControl::SetBusy(bool busy) {
    if (m_appConnection) {
        m_appConnection->SetBusyCursor(busy);
    } else {
        m_services.surface.SetBusyPointer(busy);
    }
}

void KRVControl::ConnectThrough(frmConnect& dialog) {
    const std::string oldComputer = Settings()->HostName();
    dialog.ShowModal(dialog.applicationHWND);
    m_settings = dialog.IOSettings();
    PropertiesChanged();
    EvaluateConnection(oldComputer);
}

void KRVControl::EvaluateConnection(const std::string& oldComputer) {
    const auto chosen = Settings()->IO();
    // A session whose connection has gone stays in the settings, which know its address by it.
    if (!chosen || !chosen->IsAlive()) {
        ShowUnconnected();
        return;
    }
    const auto current = hosts::LiveSession(*Server());
    if (UpperCaseAddress(chosen) == UpperCaseAddress(current) &&
        Settings()->HostName() == oldComputer) {
        Settings()->SetIO(current);
    } else {
        UseSession(chosen);
    }
    CheckIdentification();
}

// One that the server refuses has been asked already, and no command reaches it any more.
void KRVControl::UseSession(const std::shared_ptr<ports::IoSession>& session) {
    if (const auto failure = FailureOf([&] { Server()->SetInstrumentSession(session); })) {
        hosts::ReturnToLocal(session);
        throw Error(*failure);
    }
}

void KRVControl::CheckIdentification() {
    const auto instrument = Server()->Instrument();
    const std::string model(TrimBlanks(instrument->Model()));
    const std::string revision(TrimBlanks(instrument->FirmwareRevision()));
    const Identification found = Identify(model, revision, hosts::IsSessionSerial(*Server()));
    for (const std::string& warning : found.warnings) {
        ShowMessage(warning, ports::MessageIcon::Exclamation);
    }
    if (const auto adapter = m_appConnection) {
        adapter->EnableToolbarButtons(found.connectType);
        adapter->UpdateConnectedIconAndTooltip(Settings()->HostName());
    }
    m_showsConnected = true;
}

void KRVControl::ShowUnconnected() {
    m_showsConnected = false;
    if (const auto adapter = m_appConnection) {
        adapter->SetInitialToolbarState();
    }
}

void KRVControl::FollowConnection() {
    if (m_showsConnected && !hosts::LiveSession(*Server())) {
        ShowUnconnected();
    }
}

void KRVControl::ReturnInstrumentToLocal() {
    TrapErrors([this] { hosts::ReturnInstrumentToLocal(*Server()); });
}

const std::shared_ptr<ports::IOSettings>& KRVControl::Settings() {
    if (!m_settings) {
        m_settings = MakeDefaultSettings(m_services.suite, *Server());
    }
    return m_settings;
}

}  // namespace krv::control
