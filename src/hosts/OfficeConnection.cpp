#include "hosts/OfficeConnection.h"

#include "common/Error.h"
#include "common/ErrorTrap.h"
#include "common/Text.h"
#include "hosts/ToolbarButtons.h"

namespace krv::hosts {

void OfficeConnection::Adopt(const std::shared_ptr<ports::KRVServer>& server, HostedControl& ctl,
                             ports::DeviceContext context) {
    m_server = server;
    m_hDC = context;
    m_ownToolbar = ctl.OwnToolbar();
}

void OfficeConnection::UpdateConnectedIconAndTooltip(const std::string& hostName) {
    TrapErrors([&] { ShowConnected(hostName); });
}

void OfficeConnection::ShowConnected(const std::string& hostName) {
    const auto session = Server().Instrument()->IO();
    if (!session) {
        ShowInitialState();
        return;
    }
    OnToolbars([](ports::CommandBar& toolbar) { ShowConnectedButton(toolbar); });
    m_computer = hostName;
    const std::string toolTip = ConnectedToolTip(Server().Model(), session->Address(), hostName);
    OnToolbars([&](ports::CommandBar& toolbar) {
        toolbar.ControlByCaption(ButtonKey::Connected)->SetTooltipText(toolTip);
    });
}

void OfficeConnection::EnableToolbarButtons(std::int16_t ConnectType) {
    TrapErrors([&] {
        const auto changes = DecideButtons(ConnectType, Server().Model(),
                                           [&] { return Server().Options()->ArbInstalled(); });
        OnToolbars([&](ports::CommandBar& toolbar) { ApplyChanges(toolbar, changes); });
        AfterEnabling();
    });
}

void OfficeConnection::UpdateStatus(const std::string& msg) {
    TrapErrors([&] {
        if (Office().IsStatusBarDisplayed()) {
            Office().SetStatusBarText(msg);
        }
    });
}

void OfficeConnection::SetBusyCursor(bool val) {
    TrapErrors([&] { Office().SetBusyCursor(val); });
}

void OfficeConnection::DoHelp(ports::WindowHandle topHwnd, std::int32_t /*contextID*/) {
    TrapErrors([&] {
        for (const auto& addIn : Office().AddIns()) {
            if (UpperCase(addIn->Name()) == m_kind.addInName) {
                m_services.help.ShowHelp(topHwnd, addIn->Path() + m_kind.helpFileName,
                                         ports::HelpCommand::TableOfContents);
            }
        }
    });
}

void OfficeConnection::SetInitialToolbarState() {
    TrapErrors([&] { ShowInitialState(); });
}

void OfficeConnection::ShowInitialState() {
    if (m_ownToolbar) {
        ApplyInitialState(*m_ownToolbar);
    }
    SetHostInitialState();
}

ports::KRVServer& OfficeConnection::Server() {
    if (!m_server) {
        throw Error(ErrorNumber::ObjectNotSet);
    }
    return *m_server;
}

void OfficeConnection::OnToolbars(const std::function<void(ports::CommandBar&)>& rule) {
    if (m_ownToolbar) {
        rule(*m_ownToolbar);
    }
    rule(*Office().CommandBarByName(ToolbarName));
}

}  // namespace krv::hosts
