#include "hosts/AppConnectionExcel.h"

#include <utility>

#include "common/AsKind.h"
#include "common/Error.h"
#include "common/ErrorTrap.h"
#include "hosts/OfficeProcedures.h"

namespace krv::hosts {
namespace {

constexpr const char* DataTransferSavedKey = "dataTransferSaved";

}  // namespace

AppConnectionExcel::AppConnectionExcel(const HostServices& services)
    : OfficeConnection(services, {.addInName = "KRV.XLA", .helpFileName = "\\krvxltool.chm"}) {}

AppConnectionExcel::~AppConnectionExcel() {
    m_workbookEvents.reset();
    TrapErrors([&] {
        if (!m_excelApp || !m_workbook) {
            return;
        }
        const auto active = m_excelApp->ActiveWorkbook();
        if (active && active->Name() != m_workbook->Name()) {
            LeaveToolbars();
        }
    });
}

bool AppConnectionExcel::DoDataTransfer(bool /*immed*/, DateValue /*startDate*/,
                                        std::int32_t /*num_samples*/,
                                        double /*intervalInSeconds*/) {
    return false;
}

void AppConnectionExcel::DoPictureTransfer() {
    m_services.pictures.TransferToExcel(Excel(), Server(), m_hDC);
}

bool AppConnectionExcel::Init(const std::shared_ptr<ports::HostApplication>& app,
                              const std::shared_ptr<ports::KRVServer>& server, HostedControl& ctl,
                              ports::DeviceContext m_HDC) {
    if (m_excelApp) {
        return true;
    }
    if (!TrapErrors([&] { Attach(app, ctl); })) {
        return false;
    }
    Adopt(server, ctl, m_HDC);
    if (!m_dataTransfer) {
        m_dataTransfer = std::make_unique<DataTransfer>();
    }
    return true;
}

void AppConnectionExcel::Attach(const std::shared_ptr<ports::HostApplication>& app,
                                HostedControl& ctl) {
    std::shared_ptr<ports::Workbook> workbook;
    std::shared_ptr<ports::ExcelHost> excel;
    if (!app) {
        const auto utilities = m_services.suite.CreateUtilities();
        workbook = AsKind<ports::Workbook>(utilities->ContainingDocument(ctl.Surface()));
        excel = workbook->Application();
    } else {
        excel = AsKind<ports::ExcelHost>(app);
        workbook = excel->ActiveWorkbook();
    }
    m_workbookEvents = excel->ReceiveWorkbookEvents(*this);
    m_excelApp = std::move(excel);
    m_workbook = std::move(workbook);
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

void AppConnectionExcel::SetHostInitialState() {
    SetExcelInitialToolbarState(*Excel());
}

bool AppConnectionExcel::IsInFront() {
    const auto active = Excel()->ActiveWorkbook();
    return !m_workbook || !active || IsOwnWorkbook(*active);
}

void AppConnectionExcel::OnWorkbookActivate(ports::Workbook& activated) {
    TrapErrors([&] {
        if (!m_workbook) {
            m_workbook = Excel()->ActiveWorkbook();
        }
        if (!m_server || !IsOwnWorkbook(activated) || !LiveSession(*m_server)) {
            return;
        }
        if (m_inRepeatDataTransfer) {
            EnableRepeatMeaureButtons();
        } else {
            EnableSingleMeaureButtons();
        }
        ReturnToToolbars();
    });
}

void AppConnectionExcel::OnWorkbookDeactivate(ports::Workbook& deactivated) {
    TrapErrors([&] {
        if (IsOwnWorkbook(deactivated)) {
            LeaveToolbars();
        }
    });
}

bool AppConnectionExcel::IsOwnWorkbook(ports::Workbook& other) const {
    return m_workbook && m_workbook->IsSame(other);
}

const std::shared_ptr<ports::ExcelHost>& AppConnectionExcel::Excel() {
    if (!m_excelApp) {
        throw Error(ErrorNumber::ObjectNotSet);
    }
    return m_excelApp;
}

}  // namespace krv::hosts
