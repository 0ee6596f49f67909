// OfficeConnection: what the adapters for Excel and for Word share: the toolbar's looks on the
// host's command bar and on the control's own buttons, the status bar, the busy cursor and the
// add-in's help. Each adapter derives from it and adds what its application does differently.
//
// A host may refuse any call at any time. Members then end quietly, since the control has no use
// for the reason.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "hosts/AppConnection.h"
#include "hosts/HostServices.h"
#include "hosts/ToolbarButtons.h"
#include "ports/office/OfficeHost.h"

namespace krv::hosts {

class OfficeConnection : public AppConnection {
 public:
    OfficeConnection(const OfficeConnection&) = delete;
    OfficeConnection& operator=(const OfficeConnection&) = delete;
    ~OfficeConnection() override { m_services.bar->Forget(*this); }

    void UpdateConnectedIconAndTooltip(const std::string& hostName) override;
    void EnableToolbarButtons(std::int16_t ConnectType) override;
    void UpdateStatus(const std::string& msg) override;
    void SetBusyCursor(bool val) override;
    void DoHelp(ports::WindowHandle topHwnd, std::int32_t contextID) override;
    void SetInitialToolbarState() override;

 protected:
    // The names of an application's add-in and of the add-in's help file.
    struct Kind {
        // In upper case.
        const char* addInName;
        // Follows the add-in's folder.
        const char* helpFileName;
    };

    OfficeConnection(const HostServices& services, const Kind& kind)
        : m_services(services), m_kind(kind) {}

    // Throws Error 91 before the adapter is attached.
    virtual ports::OfficeHost& Office() = 0;
    // The initial state on the host's own command bar. Throws the host's first Error.
    virtual void SetHostInitialState() = 0;
    // Carries out a change of the host's own command bar. Throws the change's Error.
    virtual void ChangeHostBar(const std::function<void()>& change) { change(); }
    // No document of another adapter is active, as far as the host tells. Throws the host's Error.
    virtual bool IsInFront() { return true; }
    // Follows each change of the buttons' state. Throws the host's first Error.
    virtual void AfterEnabling() {}

    // Takes over what the control gives an adapter that has attached to its host, and shows the
    // initial state when no instrument is connected.
    void Adopt(const std::shared_ptr<ports::KRVServer>& server, HostedControl& ctl,
               ports::DeviceContext context);
    // Throws Error 91 before the adapter is attached.
    const std::shared_ptr<ports::KRVServer>& Server();
    // Leaves the toolbars unconnected when another document than the adapter's comes to the front:
    // the host's bar stays as it is while it shows another adapter's connection. Throws the host's
    // first Error.
    void LeaveToolbars();
    // Shows on both what leaving them took: the buttons as last decided, and the connected look.
    void ReturnToToolbars();

    HostServices m_services;
    std::shared_ptr<ports::KRVServer> m_server;
    ports::DeviceContext m_hDC = 0;
    // The computer that was last shown as connected.
    std::string m_computer;

 private:
    void ShowConnected(const std::string& hostName);
    // On both toolbars, but for the host's bar while that shows another adapter's connection to the
    // user of its document. Throws the host's first Error.
    void ShowInitialState();
    void ApplyHostInitialState();
    // At its contents where the topic is empty.
    void OpenHelp(ports::WindowHandle topHwnd, const std::string& file, const std::string& topic);
    // The control's own buttons first: they follow also where the host refuses.
    void OnToolbars(const std::function<void(ports::CommandBar&)>& rule);

    Kind m_kind;
    // What the connected instrument allows, as last decided.
    std::vector<ButtonChange> m_decided = NothingDecided();
    std::shared_ptr<ports::CommandBar> m_ownToolbar;
};

}  // namespace krv::hosts
