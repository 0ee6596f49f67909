// AppConnectionExcel: the host adapter for Excel.
//
// It belongs to one workbook, which is the first one that becomes active when it attaches while
// none is open. While another one is active the toolbar looks unconnected. Created by the control
// and shared with its dialogs; what it refers to is released with it.
#pragma once

#include <memory>

#include "common/Subscription.h"
#include "hosts/DataTransfer.h"
#include "hosts/OfficeConnection.h"
#include "ports/office/ExcelHost.h"

namespace krv::hosts {

class AppConnectionExcel : public OfficeConnection, private ports::WorkbookEvents {
 public:
    explicit AppConnectionExcel(const HostServices& services);
    // Leaves the toolbar unconnected when another workbook than the adapter's is active.
    ~AppConnectionExcel() override;

    SavedDataCvalues SavedDataCValue() override { return ExcelSaved; }
    bool DoDataTransfer(bool immed, DateValue startDate, std::int32_t num_samples,
                        double intervalInSeconds) override;
    void DoPictureTransfer() override;
    // An adapter that is attached stays with its first application.
    bool Init(const std::shared_ptr<ports::HostApplication>& app,
              const std::shared_ptr<ports::KRVServer>& server, HostedControl& ctl,
              ports::DeviceContext m_HDC) override;
    std::shared_ptr<ports::HostApplication> hostApp() override { return m_excelApp; }
    void TransferDataToApp() override;
    void EnableRepeatMeaureButtons() override {}
    void EnableSingleMeaureButtons() override {}
    void WriteProperties(PropertyBag& propBag) override;
    void ReadProperties(PropertyBag& propBag) override;
    void SetInRepeatDataTransfer(bool val) override { m_inRepeatDataTransfer = val; }

 private:
    ports::OfficeHost& Office() override { return *Excel(); }
    void SetHostInitialState() override;
    bool IsInFront() override;

    void OnWorkbookActivate(ports::Workbook& activated) override;
    void OnWorkbookDeactivate(ports::Workbook& deactivated) override;

    void Attach(const std::shared_ptr<ports::HostApplication>& app, HostedControl& ctl);
    // Throws Error 91 before the adapter is attached.
    const std::shared_ptr<ports::ExcelHost>& Excel();
    [[nodiscard]] bool IsOwnWorkbook(ports::Workbook& other) const;

    std::shared_ptr<ports::ExcelHost> m_excelApp;
    std::unique_ptr<DataTransfer> m_dataTransfer;
    // Null until one is open.
    std::shared_ptr<ports::Workbook> m_workbook;
    bool m_inRepeatDataTransfer = false;
    // Last, so that no event arrives once anything of the above is gone.
    std::unique_ptr<Subscription> m_workbookEvents;
};

}  // namespace krv::hosts
