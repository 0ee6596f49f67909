// Excel as the application that the toolbar control sits in, with its workbooks and their events.
// Every operation throws Error with the application's own description when it refuses.
#pragma once

#include <memory>
#include <string>

#include "common/Subscription.h"
#include "ports/office/Excel.h"
#include "ports/office/HostDocument.h"
#include "ports/office/OfficeHost.h"
#include "ports/office/Worksheet.h"

namespace krv::ports {

class ExcelHost;

class Workbook : public HostDocument {
 public:
    virtual std::string Name() = 0;
    virtual std::shared_ptr<ExcelHost> Application() = 0;
    // True when both objects stand for the same workbook of the application.
    virtual bool IsSame(Workbook& other) = 0;
};

// Receives the application's workbook events, on the thread of the host.
class WorkbookEvents {
 public:
    virtual ~WorkbookEvents() = default;
    virtual void OnWorkbookActivate(Workbook& activated) = 0;
    virtual void OnWorkbookDeactivate(Workbook& deactivated) = 0;
};

class ExcelHost : public ExcelApplication, public OfficeHost {
 public:
    // Null when no workbook is open.
    virtual std::shared_ptr<Workbook> ActiveWorkbook() = 0;
    // Throws Error where there is none, as on a chart sheet.
    virtual std::shared_ptr<Cell> ActiveCell() = 0;
    virtual std::shared_ptr<Worksheet> ActiveSheet() = 0;
    virtual double InchesToPoints(double inches) = 0;
    virtual bool IsScreenUpdating() = 0;
    virtual void SetScreenUpdating(bool isUpdating) = 0;
    // The receiver outlives the subscription.
    virtual std::unique_ptr<Subscription> ReceiveWorkbookEvents(WorkbookEvents& receiver) = 0;
};

}  // namespace krv::ports
