// frmConnect: the modal dialog in which the user connects to an instrument, by the suite's
// discovery control. Created for each connect command and unloaded after it.
#pragma once

#include <memory>
#include <string>

#include "common/Subscription.h"
#include "common/forms/Controls.h"
#include "common/forms/Form.h"
#include "hosts/AppConnection.h"
#include "ports/suite/DiscoveryControl.h"
#include "ports/suite/SuiteComponents.h"

namespace krv::control {

class frmConnect final : public forms::Form, private ports::DiscoveryEvents {
 public:
    explicit frmConnect(ports::FormScreen& screen);

    // --- set by the control before the dialog is shown, released when it is closed ---------------
    std::shared_ptr<hosts::AppConnection> AppConnection;
    std::shared_ptr<ports::KRVServer> server;
    ports::WindowHandle applicationHWND = 0;

    // The discovery control's own settings. Setting them loads the dialog and ignores errors; they
    // can still be read once the dialog has been closed.
    [[nodiscard]] std::shared_ptr<ports::IOSettings> IOSettings() const;
    void SetIOSettings(const std::shared_ptr<ports::IOSettings>& settings);

    // A text for its owner's own use. Like any other property it loads the dialog, and with it the
    // discovery control; throws Error when that can't be created.
    void SetTag(std::string tag);

    forms::ForeignControl ctlInstrumentDiscovery{*this, "ctlInstrumentDiscovery",
                                                 ports::ProgId::Discovery};
    forms::CommandButton cmdHelp{*this, "cmdHelp"};
    forms::CommandButton cmdClose{*this, "cmdClose"};

 protected:
    void OnLoad() override;
    void OnUnload() override;
    void OnQueryClose() override;
    bool OnKeyDown(int keyCode, bool shift, bool control, bool alt) override;

 private:
    void OnConnectionChange() override;
    void LayOut();
    void ShowHelp();
    void KeepSettings();

    std::string m_tag;
    std::shared_ptr<ports::IOSettings> m_settings;
    std::shared_ptr<ports::DiscoveryControl> m_discovery;
    std::unique_ptr<Subscription> m_discoveryEvents;
};

}  // namespace krv::control
