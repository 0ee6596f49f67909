// AppConnectionExcel: the host adapter for Excel.
//
// It belongs to one workbook: while another one is active the toolbar looks unconnected. Created by
// the control and shared with its dialogs; what it refers to is released with it.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "common/Subscription.h"
#include "hosts/AppConnection.h"
#include "hosts/DataTransfer.h"
#include "hosts/HostServices.h"
#include "ports/office/ExcelHost.h"

namespace krv {

class AppConnectionExcel : public AppConnection, private office::WorkbookEvents {
 public:
    explicit AppConnectionExcel(const HostServices& services);
    AppConnectionExcel(const AppConnectionExcel&) = delete;
    AppConnectionExcel& operator=(const AppConnectionExcel&) = delete;
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
    void UpdateConnectedIconAndTooltip(const std::string& hostName) override;
    void EnableToolbarButtons(std::int16_t ConnectType) override;
    void EnableRepeatMeaureButtons() override {}
    void EnableSingleMeaureButtons() override {}
    void UpdateStatus(const std::string& msg) override;
    void SetBusyCursor(bool val) override;
    void WriteProperties(PropertyBag& propBag) override;
    void ReadProperties(PropertyBag& propBag) override;
    void DoHelp(desktop::WindowHandle topHwnd, std::int32_t contextID) override;
    void SetInitialToolbarState() override;
    void SetInRepeatDataTransfer(bool val) override { m_inRepeatDataTransfer = val; }

 private:
    void OnWorkbookActivate(office::Workbook& activated) override;
    void OnWorkbookDeactivate(office::Workbook& deactivated) override;

    void Attach(const std::shared_ptr<office::HostApplication>& app, HostedControl& ctl);
    void ShowConnected(const std::string& hostName);
    void ShowInitialState();
    // Throws Error 91 before the adapter is attached.
    office::ExcelHost& Excel();
    suite::KRVServer& Server();
    [[nodiscard]] bool IsOwnWorkbook(office::Workbook& other) const;
    // The control's own buttons first: they follow also where the host refuses.
    void OnToolbars(const std::function<void(office::CommandBar&)>& rule);

    HostServices m_services;
    std::shared_ptr<office::ExcelHost> m_excelApp;
    std::shared_ptr<suite::KRVServer> m_server;
    desktop::DeviceContext m_hDC = 0;
    std::unique_ptr<DataTransfer> m_dataTransfer;
    std::shared_ptr<office::Workbook> m_workbook;
    bool m_inRepeatDataTransfer = false;
    std::string m_hostName;

    std::shared_ptr<office::CommandBar> m_ownToolbar;
    // Last, so that no event arrives once anything of the above is gone.
    std::unique_ptr<Subscription> m_workbookEvents;
};

}  // namespace krv
