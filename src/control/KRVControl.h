// KRVControl: the toolbar control. It owns its seven buttons, the instrument server, the connection
// settings, the captured states, the host adapter and the download dialog, and runs the commands
// that the user's clicks and the host's calls give. The suite's state control asks it for snapshots
// of the instrument's state.
//
// One lives as long as its toolbar, on the host's user-interface thread. The server and the
// settings are created on first use and shared by reference with dialogs and adapter. Commands end
// quietly on an Error and leave the control as it was; when a component of the suite isn't
// installed, a message names it. DoSaveScreenImage alone raises an error to its caller.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "common/Value.h"
#include "control/ControlServices.h"
#include "control/Toolbar.h"
#include "hosts/AppConnection.h"
#include "hosts/HostedControl.h"
#include "ports/suite/IOSettings.h"
#include "ports/suite/KRVServer.h"
#include "ports/suite/StateInfo.h"
#include "waveform/dialog/frmDataTransfer.h"

namespace krv::control {

class frmConnect;

class KRVControl final : public ports::SetupInterface, private hosts::HostedControl {
 public:
    explicit KRVControl(const ControlServices& services);
    KRVControl(const KRVControl&) = delete;
    KRVControl& operator=(const KRVControl&) = delete;
    ~KRVControl() override;

    // Ends the control's work before its container destroys it: the download dialog goes. A
    // download that is under way is cancelled, and the dialog goes after it.
    void Terminate();

    [[nodiscard]] Toolbar& Toolbar1() noexcept { return *m_toolbar; }

    // --- members of IToolbarSupport, in its order ------------------------------------------------
    void DoAbout();
    void DoConnect();
    // The host's application object; null without an adapter.
    [[nodiscard]] std::shared_ptr<ports::HostApplication> ConnectedApplication();
    // Chooses the adapter by the kind of application, or attaches the one that there is again. An
    // application that no adapter takes leaves the control without one.
    void SetConnectedApplication(const std::shared_ptr<ports::HostApplication>& app);
    void UpdateConnectedStatus();
    void DoSetup();
    // Throws Error 0x80040005 without an adapter; any other failure is shown and not raised.
    void DoSaveScreenImage();
    // A flag of 1 asks for the data of a range.
    void DoDataTransfer(const Value& data, const Value& flag);
    void StartTransfer(const Value& /*first*/, const Value& /*second*/) {}
    void StopTransfer(const Value& /*first*/, const Value& /*second*/) {}
    void DoHelp();

    // --- members of ISetupInterface, in its order ------------------------------------------------
    std::string Model() override;
    Value SetupValue() override;
    void SetSetupValue(const Value& snapshot) override;
    std::string Version() override;
    std::shared_ptr<ports::LegacyFileInfo> GetLegacyVantorFileInfo(
        const std::string& first, const std::string& second) override;

    // A click on the toolbar button of this key.
    void ToolbarClicked(const std::string& key);

    // --- what the host's document keeps of the control -------------------------------------------
    // Throws Error when the bag refuses an entry or a contained object can't be written.
    void WriteProperties(PropertyBag& propBag);
    // Once, when the document loads the control. Reading ends at the first failure, quietly, and
    // keeps what was restored before; the connection is restored last, so that nothing is sent to
    // an instrument unless everything else could be read.
    void ReadProperties(PropertyBag& propBag);
    // Called after a command has changed what WriteProperties writes.
    std::function<void()> OnPropertiesChanged;

 private:
    ports::ControlSurface& Surface() override { return m_services.surface; }
    std::shared_ptr<ports::CommandBar> OwnToolbar() override { return m_toolbar; }

    const std::shared_ptr<ports::KRVServer>& Server();
    const std::shared_ptr<ports::IOSettings>& Settings();
    waveform::frmDataTransfer& DataTransferForm();
    std::shared_ptr<void> KeepForDialog();
    void EndDialog();

    void Command(const std::function<void()>& work);
    void ShowMessage(const std::string& text, ports::MessageIcon icon);
    void ChooseAdapter(const std::shared_ptr<ports::HostApplication>& app);
    bool InitAdapter(hosts::AppConnection& adapter,
                     const std::shared_ptr<ports::HostApplication>& app);
    // The host's window that the control lies in; 0 without an adapter.
    ports::WindowHandle ApplicationWindow();
    // 0 also where no window contains the control: its dialogs then open without an owner.
    ports::WindowHandle TopLevelWindow();
    void ReturnInstrumentToLocal();
    void TransferScreenImage();
    void ShowSetupDialog();
    static void TakeSetupInterfaceBack(ports::StateInfo& states);

    void SetBusy(bool busy);
    std::unique_ptr<frmConnect> MakeConnectDialog();
    void ConnectThrough(frmConnect& dialog);
    void EvaluateConnection(const std::string& oldComputer);
    void UseSession(const std::shared_ptr<ports::IoSession>& session);
    // Warns of what the connected instrument can't do and sets the buttons for what it can.
    void CheckIdentification();
    void ShowUnconnected();
    // Follows each command, in which the connection may have gone.
    void FollowConnection();

    void ReadAdapter(PropertyBag& propBag);
    void ReadStates(PropertyBag& propBag);
    void ReadSettings(PropertyBag& propBag);
    void LoadDiscovery();
    void PropertiesChanged() const;

    ControlServices m_services;
    std::shared_ptr<Toolbar> m_toolbar;
    std::shared_ptr<ports::KRVServer> m_server;
    std::shared_ptr<ports::IOSettings> m_settings;
    // Null until the settings command is given for the first time.
    std::shared_ptr<ports::StateInfo> m_instrSetupInfo;
    std::shared_ptr<hosts::AppConnection> m_appConnection;
    std::unique_ptr<waveform::frmDataTransfer> m_dataTransferForm;
    // How many inputs to the dialog are being handled, one within another.
    int m_dialogInputs = 0;
    bool m_isTerminating = false;
    bool m_showsConnected = false;
};

}  // namespace krv::control
