#include "hosts/OfficeConnection.h"

#include "common/Error.h"
#include "common/ErrorTrap.h"
#include "common/Text.h"
#include "hosts/HelpTopics.h"
#include "hosts/OfficeProcedures.h"

namespace krv::hosts {

void OfficeConnection::Adopt(const std::shared_ptr<ports::KRVServer>& server, HostedControl& ctl,
                             ports::DeviceContext context) {
    m_server = server;
    m_hDC = context;
    m_ownToolbar = ctl.OwnToolbar();
    if (!m_server || !LiveSession(*m_server)) {
        TrapErrors([&] { LeaveToolbars(); });
    }
}

void OfficeConnection::UpdateConnectedIconAndTooltip(const std::string& hostName) {
    TrapErrors([&] { ShowConnected(hostName); });
}

void OfficeConnection::ShowConnected(const std::string& hostName) {
    m_computer = hostName;
    const auto server = Server();
    const auto session = LiveSession(*server);
    if (!session) {
        ShowInitialState();
        return;
    }
    const std::string toolTip = ConnectedToolTip(server->Model(), session->Address(), hostName);
    OnToolbars([&](ports::CommandBar& toolbar) {
        ShowConnectedButton(toolbar);
        toolbar.ControlByCaption(ButtonKey::Connected)->SetTooltipText(toolTip);
    });
    m_services.bar->ShowsConnected(*this);
}

void OfficeConnection::EnableToolbarButtons(std::int16_t ConnectType) {
    TrapErrors([&] {
        const auto changes = DecideButtons(
            ConnectType, [&] { return Server()->Model(); },
            [&] { return Server()->Options()->ArbInstalled(); });
        Remember(m_decided, changes);
        OnToolbars([&](ports::CommandBar& toolbar) { ApplyChanges(toolbar, changes); });
    });
    TrapErrors([&] { AfterEnabling(); });
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

void OfficeConnection::DoHelp(ports::WindowHandle topHwnd, std::int32_t contextID) {
    TrapErrors([&] {
        for (const auto& addIn : Office().AddIns()) {
            if (UpperCase(addIn->Name()) == m_kind.addInName) {
                OpenHelp(topHwnd, addIn->Path() + m_kind.helpFileName, HelpTopic(contextID));
            }
        }
    });
}

void OfficeConnection::OpenHelp(ports::WindowHandle topHwnd, const std::string& file,
                                const std::string& topic) {
    if (topic.empty()) {
        m_services.help.ShowHelp(topHwnd, file, ports::HelpCommand::TableOfContents);
    } else {
        m_services.help.ShowTopic(topHwnd, file, topic);
    }
}

void OfficeConnection::SetInitialToolbarState() {
    TrapErrors([&] { ShowInitialState(); });
}

void OfficeConnection::ShowInitialState() {
    m_decided = NothingDecided();
    if (m_ownToolbar) {
        ApplyInitialState(*m_ownToolbar);
    }
    if (!m_services.bar->ShowsAnother(*this) || IsInFront()) {
        ApplyHostInitialState();
    }
}

void OfficeConnection::ApplyHostInitialState() {
    m_services.bar->ShowsUnconnected();
    ChangeHostBar([this] { SetHostInitialState(); });
}

void OfficeConnection::LeaveToolbars() {
    if (m_ownToolbar) {
        ApplyInitialState(*m_ownToolbar);
    }
    if (!m_services.bar->ShowsAnother(*this)) {
        ApplyHostInitialState();
    }
}

void OfficeConnection::ReturnToToolbars() {
    TrapErrors([this] {
        OnToolbars(
            [decided = m_decided](ports::CommandBar& toolbar) { ApplyChanges(toolbar, decided); });
    });
    UpdateConnectedIconAndTooltip(m_computer);
}

const std::shared_ptr<ports::KRVServer>& OfficeConnection::Server() {
    if (!m_server) {
        throw Error(ErrorNumber::ObjectNotSet);
    }
    return m_server;
}

void OfficeConnection::OnToolbars(const std::function<void(ports::CommandBar&)>& rule) {
    if (m_ownToolbar) {
        rule(*m_ownToolbar);
    }
    ChangeHostBar([&] { rule(*Office().CommandBarByName(ToolbarName)); });
}

}  // namespace krv::hosts
