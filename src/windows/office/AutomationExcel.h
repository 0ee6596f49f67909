// Excel as the application around the control, over automation.
#pragma once

#include <utility>

#include "ports/office/ExcelHost.h"
#include "windows/automation/AutomationPeer.h"
#include "windows/automation/LateBound.h"

namespace krv::windows {

class AutomationExcel final : public ports::ExcelHost, public AutomationPeer {
 public:
    explicit AutomationExcel(LateBound application) : m_application(std::move(application)) {}
    [[nodiscard]] IDispatch* Automation() const override { return m_application.Object(); }

    std::shared_ptr<ports::Range> ResolveRange(const std::string& text) override;
    std::shared_ptr<ports::Range> Selection() override;
    std::shared_ptr<ports::CommandBar> CommandBarByName(const std::string& name) override;
    std::vector<std::shared_ptr<ports::AddIn>> AddIns() override;
    bool IsStatusBarDisplayed() override;
    void SetStatusBarText(const std::string& text) override;
    void SetBusyCursor(bool isBusy) override;
    std::shared_ptr<ports::Workbook> ActiveWorkbook() override;
    std::shared_ptr<ports::Cell> ActiveCell() override;
    std::shared_ptr<ports::Worksheet> ActiveSheet() override;
    double InchesToPoints(double inches) override;
    bool IsScreenUpdating() override;
    void SetScreenUpdating(bool isUpdating) override;
    std::unique_ptr<Subscription> ReceiveWorkbookEvents(ports::WorkbookEvents& receiver) override;

 private:
    LateBound m_application;
};

}  // namespace krv::windows
