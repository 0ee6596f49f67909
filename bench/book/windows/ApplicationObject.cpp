#include "bench/book/windows/ApplicationObject.h"

#include <array>
#include <utility>

#include "bench/book/windows/RangeObject.h"
#include "bench/book/windows/WorkbookObjects.h"
#include "bench/shared/windows/BarObjects.h"

namespace krv::bench {

std::span<const Member<ApplicationObject>> ApplicationObject::Members() {
    using Own = ApplicationObject;
    constexpr auto ReadWrite = MemberKind::ReadWrite;
    static constexpr std::array<Member<Own>, 21> Table{
        {{L"Name", &Own::GetName, MemberKind::ReadOnly, {}, true},
         {L"Application", &Own::GetApplication},
         {L"Version", &Own::GetVersion},
         {L"ActiveWorkbook", &Own::GetActiveWorkbook},
         {L"ActiveSheet", &Own::GetActiveSheet},
         {L"ActiveCell", &Own::GetActiveCell},
         {L"Selection", &Own::GetSelection},
         {L"Workbooks", &Own::GetWorkbooks},
         {L"CommandBars", &Own::GetCommandBars},
         {L"AddIns", &Own::GetAddIns},
         {L"Range", &Own::Range, MemberKind::ReadOnly, L"Cell1,Cell2"},
         {L"Cells", &Own::GetCells},
         {L"StatusBar", &Own::StatusBar, ReadWrite},
         {L"DisplayStatusBar", &Own::DisplayStatusBar, ReadWrite},
         {L"Cursor", &Own::Cursor, ReadWrite},
         {L"ScreenUpdating", &Own::ScreenUpdating, ReadWrite},
         {L"InchesToPoints", &Own::InchesToPoints, MemberKind::Method, L"Inches"},
         {L"Visible", &Own::Visible, ReadWrite},
         {L"Hwnd", &Own::GetHwnd},
         {L"Parent", &Own::GetApplication},
         {L"Quit", &Own::Quit, MemberKind::Method}}};
    return Table;
}

ApplicationObject::ApplicationObject(const std::shared_ptr<BookAutomation>& automation)
    : AutomationObject(automation), m_events(this, ExcelEventsId) {
    Application().AddObserver(*this);
}

ApplicationObject::~ApplicationObject() {
    End();
}

void ApplicationObject::End() {
    if (std::exchange(m_isObserving, false)) {
        Application().RemoveObserver(*this);
    }
}

void* ApplicationObject::FindInterface(REFIID id) noexcept {
    return id == ExcelApplicationId ? static_cast<IDispatch*>(this)
                                    : AutomationObject::FindInterface(id);
}

void ApplicationObject::OnWorkbookActivate(Workbook& activated) {
    Raise(ExcelEvent::WorkbookActivate, activated);
}

void ApplicationObject::OnWorkbookDeactivate(Workbook& deactivated) {
    Raise(ExcelEvent::WorkbookDeactivate, deactivated);
}

void ApplicationObject::OnChanged(BookChange change) {
    if (change == BookChange::Books) {
        Automation()->ForgetClosedBooks();
    }
}

void ApplicationObject::Raise(DISPID event, const Workbook& book) {
    const _variant_t argument = Give(Automation()->ObjectOf(book));
    m_events.Raise(event, {argument});
}

_variant_t ApplicationObject::GetActiveWorkbook(const MemberCall&) {
    return Give(Automation()->ObjectOf(Application().ActiveBook()));
}

_variant_t ApplicationObject::GetActiveSheet(const MemberCall&) {
    const auto book = Application().ActiveBook();
    return book ? NewWorksheet(Automation(), book) : _variant_t(static_cast<IDispatch*>(nullptr));
}

_variant_t ApplicationObject::GetActiveCell(const MemberCall&) {
    const auto book = Application().ActiveBook();
    if (!book) {
        return _variant_t(static_cast<IDispatch*>(nullptr));
    }
    const auto [row, column] = book->Selected().ActiveCell();
    return NewRange(Automation(), BookRange(book, {{row, column, 1, 1}}));
}

_variant_t ApplicationObject::GetSelection(const MemberCall&) {
    return Application().ActiveBook() ? NewRange(Automation(), Application().SelectedRange())
                                      : _variant_t(static_cast<IDispatch*>(nullptr));
}

_variant_t ApplicationObject::GetWorkbooks(const MemberCall&) {
    return NewWorkbooks(Automation());
}

_variant_t ApplicationObject::GetCommandBars(const MemberCall&) {
    return NewCommandBars(Automation());
}

_variant_t ApplicationObject::GetAddIns(const MemberCall&) {
    return NewAddIns(Automation());
}

_variant_t ApplicationObject::Range(const MemberCall& call) {
    return NewRange(Automation(), RangeFromCall(call, Application().ActiveBook(), "_Application"));
}

_variant_t ApplicationObject::GetCells(const MemberCall&) {
    return NewRange(Automation(), Application().Range(AddressOf(WholeSheet)));
}

// Without a text of its own it is False, and setting it to False gives it back to the application.
_variant_t ApplicationObject::StatusBar(const MemberCall& call) {
    if (call.IsPut()) {
        const _variant_t text = call.NewValue();
        const bool isGivenBack = V_VT(&text) == VT_BOOL && V_BOOL(&text) == VARIANT_FALSE;
        Application().SetStatus(isGivenBack ? std::nullopt : std::optional(TextIn(text)));
        return {};
    }
    const auto& text = Application().GivenStatus();
    return text ? AsVariant(*text) : AsVariant(false);
}

_variant_t ApplicationObject::DisplayStatusBar(const MemberCall& call) {
    if (call.IsPut()) {
        Application().DisplayStatusBar(FlagIn(call.NewValue()));
    }
    return AsVariant(Application().IsStatusBarDisplayed());
}

_variant_t ApplicationObject::Cursor(const MemberCall& call) {
    if (call.IsPut()) {
        Application().SetCursor(NumberIn(call.NewValue()));
    }
    return AsVariant(Application().Cursor());
}

_variant_t ApplicationObject::ScreenUpdating(const MemberCall& call) {
    if (call.IsPut()) {
        Application().SetScreenUpdating(FlagIn(call.NewValue()));
    }
    return AsVariant(Application().IsScreenUpdating());
}

_variant_t ApplicationObject::InchesToPoints(const MemberCall& call) {
    constexpr double PointsPerInch = 72;
    return AsVariant(RealIn(call.Argument(0)) * PointsPerInch);
}

_variant_t ApplicationObject::Visible(const MemberCall& call) {
    if (call.IsPut()) {
        Automation()->Window().Show(FlagIn(call.NewValue()));
    }
    return AsVariant(Automation()->Window().IsShown());
}

_variant_t ApplicationObject::GetHwnd(const MemberCall&) {
    // Window handles fit 32 bits on every Windows.
    return AsVariant(static_cast<std::int32_t>(HandleToLong(Automation()->Window().Handle())));
}

_variant_t ApplicationObject::Quit(const MemberCall&) {
    Automation()->Window().Quit();
    return {};
}

}  // namespace krv::bench
