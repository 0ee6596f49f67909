// AppConnectionExcel: the host adapter for Excel.
//
// It belongs to one workbook: while another one is active the toolbar looks unconnected. Created by
// the control and shared with its dialogs; what it refers to is released with it.
#pragma once

#include <memory>

#include "common/Subscription.h"
#include "hosts/DataTransfer.h"
#include "hosts/OfficeConnection.h"
#include "ports/office/ExcelHost.h"

namespace krv {

class AppConnectionExcel : public OfficeConnection, private office::WorkbookEvents {
 public:
    explicit AppConnectionExcel(const HostServices& services);
    // Leaves the toolbar unconnected when another workbook than the adapter's is active.
    ~AppConnectionExcel() override;

    SavedDataCvalues SavedDataCValue() override { return ExcelSaved; }
    bool DoDataTransfer(bool immed, DateValue startDate, std::int32_t num_samples,
                        double intervalInSeconds) override;
    void DoPictureTransfer() override;
    // An adapter that is attached stays with its first application.
    bool Init(const std::shared_ptr<office::HostApplication>& app,
              const std::shared_ptr<suite::KRVServer>& server, HostedControl& ctl,
              desktop::DeviceContext m_HDC) override;
    std::shared_ptr<office::HostApplication> hostApp() override { return m_excelApp; }
    void TransferDataToApp() override;
    void EnableRepeatMeaureButtons() override {}
    void EnableSingleMeaureButtons() override {}
    void WriteProperties(PropertyBag& propBag) override;
    void ReadProperties(PropertyBag& propBag) override;
    void SetInRepeatDataTransfer(bool val) override { m_inRepeatDataTransfer = val; }

 private:
    office::OfficeHost& Office() override { return Excel(); }
    void SetHostInitialState() override;

    void OnWorkbookActivate(office::Workbook& activated) override;
    void OnWorkbookDeactivate(office::Workbook& deactivated) override;

    void Attach(const std::shared_ptr<office::HostApplication>& app, HostedControl& ctl);
    // Throws Error 91 before the adapter is attached.
    office::ExcelHost& Excel();
    [[nodiscard]] bool IsOwnWorkbook(office::Workbook& other) const;

    std::shared_ptr<office::ExcelHost> m_excelApp;
    std::unique_ptr<DataTransfer> m_dataTransfer;
    std::shared_ptr<office::Workbook> m_workbook;
    bool m_inRepeatDataTransfer = false;
    // Last, so that no event arrives once anything of the above is gone.
    std::unique_ptr<Subscription> m_workbookEvents;
};

}  // namespace krv
