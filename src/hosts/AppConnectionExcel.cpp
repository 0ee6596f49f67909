#include "hosts/AppConnectionExcel.h"

#include <utility>

#include "common/Error.h"
#include "common/Text.h"
#include "hosts/OfficeProcedures.h"
#include "hosts/ToolbarButtons.h"

namespace krv {
namespace {

// Excel's own cursor constants.
constexpr std::int32_t WaitCursor = 2;
constexpr std::int32_t DefaultCursor = -4143;

constexpr const char* DataTransferSavedKey = "dataTransferSaved";
constexpr const char* AddInName = "KRV.XLA";
constexpr const char* HelpFileName = "\\krvxltool.chm";

// The host may refuse anything at any time, and the control has no use for its reasons.
template <class Work>
void TrapErrors(const Work& work) {
    try {
        work();
    } catch (const Error&) {
        return;
    }
}

}  // namespace

AppConnectionExcel::AppConnectionExcel(const HostServices& services) : m_services(services) {}

AppConnectionExcel::~AppConnectionExcel() {
    m_workbookEvents.reset();
    TrapErrors([&] {
        if (!m_excelApp || !m_workbook) {
            return;
        }
        const auto active = m_excelApp->ActiveWorkbook();
        if (active && active->Name() != m_workbook->Name()) {
            ShowInitialState();
        }
    });
}

bool AppConnectionExcel::DoDataTransfer(bool /*immed*/, DateValue /*startDate*/,
                                        std::int32_t /*num_samples*/,
                                        double /*intervalInSeconds*/) {
    return false;
}

void AppConnectionExcel::DoPictureTransfer() {
    if (m_services.pictures == nullptr) {
        throw Error(ErrorNumber::ActionNotSupported);
    }
    m_services.pictures->TransferToExcel(Excel(), Server(), m_hDC);
}

bool AppConnectionExcel::Init(const std::shared_ptr<office::HostApplication>& app,
                              const std::shared_ptr<suite::KRVServer>& server, HostedControl& ctl,
                              desktop::DeviceContext m_HDC) {
    if (m_excelApp) {
        return true;
    }
    try {
        Attach(app, ctl);
    } catch (const Error&) {
        return false;
    }
    m_server = server;
    m_hDC = m_HDC;
    if (!m_dataTransfer) {
        m_dataTransfer = std::make_unique<DataTransfer>();
    }
    return true;
}

void AppConnectionExcel::Attach(const std::shared_ptr<office::HostApplication>& app,
                                HostedControl& ctl) {
    std::shared_ptr<office::Workbook> workbook;
    std::shared_ptr<office::ExcelHost> excel;
    if (!app) {
        const auto utilities = m_services.suite.CreateUtilities();
        workbook = m_services.kinds.AsWorkbook(utilities->ContainingDocument(ctl.Surface()));
        excel = workbook->Application();
    } else {
        excel = m_services.kinds.AsExcel(app);
        workbook = excel->ActiveWorkbook();
    }
    m_workbookEvents = excel->ReceiveWorkbookEvents(*this);
    m_excelApp = std::move(excel);
    m_workbook = std::move(workbook);
    m_ownToolbar = ctl.OwnToolbar();
}

void AppConnectionExcel::TransferDataToApp() {
    TrapErrors([&] {
        if (!m_dataTransfer) {
            throw Error(ErrorNumber::ObjectNotSet);
        }
        auto excel = m_excelApp;
        m_dataTransfer->DoDataTransfer(excel, m_server);
        m_excelApp = std::move(excel);
    });
}

void AppConnectionExcel::UpdateConnectedIconAndTooltip(const std::string& hostName) {
    TrapErrors([&] { ShowConnected(hostName); });
}

void AppConnectionExcel::ShowConnected(const std::string& hostName) {
    const auto session = Server().Instrument()->IO();
    if (!session) {
        ShowInitialState();
        return;
    }
    const std::string toolTip = ConnectedToolTip(Server().Model(), session->Address(), hostName);
    m_hostName = hostName;
    OnToolbars([&](office::CommandBar& toolbar) { ApplyConnectedLook(toolbar, toolTip); });
}

void AppConnectionExcel::EnableToolbarButtons(std::int16_t ConnectType) {
    TrapErrors([&] {
        const auto changes = DecideButtons(ConnectType, Server().Model(),
                                           [&] { return Server().Options()->ArbInstalled(); });
        OnToolbars([&](office::CommandBar& toolbar) { ApplyChanges(toolbar, changes); });
    });
}

void AppConnectionExcel::UpdateStatus(const std::string& msg) {
    TrapErrors([&] {
        if (Excel().IsStatusBarDisplayed()) {
            Excel().SetStatusBarText(msg);
        }
    });
}

void AppConnectionExcel::SetBusyCursor(bool val) {
    TrapErrors([&] { Excel().SetCursor(val ? WaitCursor : DefaultCursor); });
}

void AppConnectionExcel::WriteProperties(PropertyBag& propBag) {
    TrapErrors([&] {
        if (m_dataTransfer) {
            propBag.Write(DataTransferSavedKey, true);
            m_dataTransfer->WriteProperties(propBag);
        }
    });
}

void AppConnectionExcel::ReadProperties(PropertyBag& propBag) {
    TrapErrors([&] {
        if (propBag.ReadBoolean(DataTransferSavedKey, false)) {
            m_dataTransfer = std::make_unique<DataTransfer>();
            m_dataTransfer->ReadProperties(propBag);
        }
    });
}

void AppConnectionExcel::DoHelp(desktop::WindowHandle topHwnd, std::int32_t /*contextID*/) {
    TrapErrors([&] {
        for (const auto& addIn : Excel().AddIns()) {
            if (UpperCase(addIn->Name()) == AddInName) {
                m_services.help.ShowHelp(topHwnd, addIn->Path() + HelpFileName,
                                         desktop::HelpCommand::TableOfContents);
            }
        }
    });
}

void AppConnectionExcel::SetInitialToolbarState() {
    TrapErrors([&] { ShowInitialState(); });
}

void AppConnectionExcel::ShowInitialState() {
    if (m_ownToolbar) {
        ApplyInitialState(*m_ownToolbar);
    }
    SetExcelInitialToolbarState(Excel());
}

void AppConnectionExcel::OnWorkbookActivate(office::Workbook& activated) {
    TrapErrors([&] {
        if (!m_server || !IsOwnWorkbook(activated) || !m_server->Instrument()->IO()) {
            return;
        }
        if (m_inRepeatDataTransfer) {
            EnableRepeatMeaureButtons();
        } else {
            EnableSingleMeaureButtons();
        }
        UpdateConnectedIconAndTooltip(m_hostName);
    });
}

void AppConnectionExcel::OnWorkbookDeactivate(office::Workbook& deactivated) {
    TrapErrors([&] {
        if (IsOwnWorkbook(deactivated)) {
            ShowInitialState();
        }
    });
}

bool AppConnectionExcel::IsOwnWorkbook(office::Workbook& other) const {
    return m_workbook && m_workbook->IsSame(other);
}

office::ExcelHost& AppConnectionExcel::Excel() {
    if (!m_excelApp) {
        throw Error(ErrorNumber::ObjectNotSet);
    }
    return *m_excelApp;
}

suite::KRVServer& AppConnectionExcel::Server() {
    if (!m_server) {
        throw Error(ErrorNumber::ObjectNotSet);
    }
    return *m_server;
}

void AppConnectionExcel::OnToolbars(const std::function<void(office::CommandBar&)>& rule) {
    if (m_ownToolbar) {
        rule(*m_ownToolbar);
    }
    rule(*Excel().CommandBarByName(ToolbarName));
}

}  // namespace krv
