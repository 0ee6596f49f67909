#include "windows/office/AutomationExcel.h"

#include "common/Error.h"
#include "windows/automation/ComGuard.h"
#include "windows/automation/EventSubscription.h"
#include "windows/automation/VariantValue.h"
#include "windows/office/AutomationRange.h"
#include "windows/office/AutomationWorkbook.h"
#include "windows/office/AutomationWorksheet.h"
#include "windows/office/OfficeObjects.h"

namespace krv::windows {
namespace {

// Excel's own constants.
constexpr std::int32_t ExcelWaitCursor = 2;
constexpr std::int32_t DefaultCursor = -4143;

// The application's events, and the numbers of those for workbooks.
constexpr IID ApplicationEventsId{
    0x00024413, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
constexpr DISPID WorkbookActivate = 0x620;
constexpr DISPID WorkbookDeactivate = 0x621;

// The workbook that an event is about, its only argument.
LateBound WorkbookIn(const DISPPARAMS& arguments) {
    const VARIANT* const workbook = EventArgument(arguments, 0);
    if (workbook == nullptr) {
        return {};
    }
    _variant_t direct;
    ThrowIfFailed(VariantCopyInd(&direct, const_cast<VARIANT*>(workbook)));
    return LateBound(direct);
}

void Deliver(ports::WorkbookEvents& receiver, DISPID event, const DISPPARAMS& arguments) {
    if (event != WorkbookActivate && event != WorkbookDeactivate) {
        return;
    }
    LateBound object = WorkbookIn(arguments);
    if (!object) {
        return;
    }
    AutomationWorkbook workbook(std::move(object));
    if (event == WorkbookActivate) {
        receiver.OnWorkbookActivate(workbook);
    } else {
        receiver.OnWorkbookDeactivate(workbook);
    }
}

}  // namespace

std::shared_ptr<ports::Range> AutomationExcel::ResolveRange(const std::string& text) {
    LateBound range = m_application.CallObject(L"Range", {ToVariant(text)});
    if (!range) {
        throw Error(ErrorNumber::ObjectNotSet, "There is no range \"" + text +
                                                   "\" in the active workbook.  Activate the "
                                                   "worksheet with the data, and try again.");
    }
    return std::make_shared<AutomationRange>(std::move(range));
}

std::shared_ptr<ports::Range> AutomationExcel::Selection() {
    const _variant_t selected = m_application.Get(L"Selection");
    LateBound range;
    if (V_VT(&selected) == VT_DISPATCH || V_VT(&selected) == VT_UNKNOWN) {
        range = LateBound(selected);
    }
    // Of all that can be selected, only cells have areas.
    if (!range.Has(L"Areas")) {
        throw Error(ErrorNumber::TypeMismatch,
                    "The selection in the workbook is not a range of cells.");
    }
    return std::make_shared<AutomationRange>(std::move(range));
}

std::shared_ptr<ports::CommandBar> AutomationExcel::CommandBarByName(const std::string& name) {
    return CommandBarOf(m_application, name);
}

std::vector<std::shared_ptr<ports::AddIn>> AutomationExcel::AddIns() {
    return AddInsOf(m_application, "KRV.XLA");
}

bool AutomationExcel::IsStatusBarDisplayed() {
    return m_application.GetBool(L"DisplayStatusBar");
}

void AutomationExcel::SetStatusBarText(const std::string& text) {
    m_application.Put(L"StatusBar", text.empty() ? ToVariant(false) : ToVariant(text));
}

void AutomationExcel::SetBusyCursor(bool isBusy) {
    m_application.Put(L"Cursor", ToVariant(isBusy ? ExcelWaitCursor : DefaultCursor));
}

std::shared_ptr<ports::Workbook> AutomationExcel::ActiveWorkbook() {
    LateBound workbook = m_application.GetObject(L"ActiveWorkbook");
    return workbook ? std::make_shared<AutomationWorkbook>(std::move(workbook)) : nullptr;
}

std::shared_ptr<ports::Cell> AutomationExcel::ActiveCell() {
    return CellOf(m_application.GetObject(L"ActiveCell"));
}

std::shared_ptr<ports::Worksheet> AutomationExcel::ActiveSheet() {
    return WorksheetOf(m_application.GetObject(L"ActiveSheet"));
}

double AutomationExcel::InchesToPoints(double inches) {
    return DoubleOf(m_application.Call(L"InchesToPoints", {ToVariant(inches)}));
}

bool AutomationExcel::IsScreenUpdating() {
    return m_application.GetBool(L"ScreenUpdating");
}

void AutomationExcel::SetScreenUpdating(bool isUpdating) {
    m_application.Put(L"ScreenUpdating", ToVariant(isUpdating));
}

std::unique_ptr<Subscription> AutomationExcel::ReceiveWorkbookEvents(
    ports::WorkbookEvents& receiver) {
    return SubscribeToEvents(m_application.Object(), ApplicationEventsId,
                             [&receiver](DISPID event, const DISPPARAMS& arguments) {
                                 Deliver(receiver, event, arguments);
                             });
}

}  // namespace krv::windows
