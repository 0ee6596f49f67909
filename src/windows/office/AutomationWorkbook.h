// A workbook of Excel, over automation.
#pragma once

#include <utility>

#include "ports/office/ExcelHost.h"
#include "windows/automation/AutomationPeer.h"
#include "windows/automation/LateBound.h"

namespace krv::windows {

class AutomationWorkbook final : public ports::Workbook, public AutomationPeer {
 public:
    explicit AutomationWorkbook(LateBound workbook) : m_workbook(std::move(workbook)) {}
    [[nodiscard]] IDispatch* Automation() const override { return m_workbook.Object(); }

    std::string Name() override;
    std::shared_ptr<ports::ExcelHost> Application() override;
    // One application has one workbook of a name, so that objects without a common identity are
    // told apart by it.
    bool IsSame(ports::Workbook& other) override;

 private:
    LateBound m_workbook;
};

}  // namespace krv::windows
