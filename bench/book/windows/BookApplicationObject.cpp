#include "bench/book/windows/BookApplicationObject.h"

#include "bench/book/BookErrors.h"
#include "bench/book/windows/RangeObject.h"
#include "bench/book/windows/WorkbookObjects.h"

namespace krv::bench {

std::span<const Member<BookApplicationObject>> BookApplicationObject::Members() {
    using Own = BookApplicationObject;
    constexpr auto ReadWrite = MemberKind::ReadWrite;
    static constexpr auto Table = Joined(
        Rows(), std::array<Member<Own>, 10>{
                    {{L"ActiveWorkbook", &Own::GetActiveWorkbook},
                     {L"ActiveSheet", &Own::GetActiveSheet},
                     {L"ActiveCell", &Own::GetActiveCell},
                     {L"Selection", &Own::GetSelection},
                     {L"Range", &Own::Range, MemberKind::TakesArguments},
                     {L"Cells", &Own::GetCells},
                     {L"StatusBar", &Own::StatusBar, ReadWrite},
                     {L"Cursor", &Own::Cursor, ReadWrite},
                     {L"ScreenUpdating", &Own::ScreenUpdating, ReadWrite},
                     {L"InchesToPoints", &Own::InchesToPoints, MemberKind::TakesArguments}}});
    return Table;
}

OfficeAutomation::Object BookApplicationObject::NewDocumentObject(
    const std::shared_ptr<OfficeAutomation>& automation,
    const std::shared_ptr<OfficeDocument>& document) {
    return NewWorkbookObject(automation, document);
}

BookApplicationObject::BookApplicationObject(const std::shared_ptr<OfficeAutomation>& automation)
    : ApplicationMembers(automation), m_events(this, windows::ExcelEventsId) {
    automation->SetEventListener([this](OfficeEvent event, const OfficeAutomation::Object& book,
                                        bool& isCancelled) { Raise(event, book, isCancelled); });
}

// Excel names the arguments of its events, the first in front.
void BookApplicationObject::Raise(OfficeEvent event, const OfficeAutomation::Object& book,
                                  bool& isCancelled) const {
    using namespace windows;
    const _variant_t workbook = AsVariant(book.Get());
    const auto tellWindow = [&](DISPID id) {
        const _variant_t window = NewActiveWindow(Automation());
        m_events.RaiseNamed(id, {workbook, window});
    };
    CancelArgument cancel;
    switch (event) {
        case OfficeEvent::New:
            return m_events.RaiseNamed(ExcelEvent::NewWorkbook, {workbook});
        case OfficeEvent::Open:
            return m_events.RaiseNamed(ExcelEvent::WorkbookOpen, {workbook});
        case OfficeEvent::Activate:
            return m_events.RaiseNamed(ExcelEvent::WorkbookActivate, {workbook});
        case OfficeEvent::Deactivate:
            return m_events.RaiseNamed(ExcelEvent::WorkbookDeactivate, {workbook});
        case OfficeEvent::WindowActivate:
            return tellWindow(ExcelEvent::WindowActivate);
        case OfficeEvent::WindowDeactivate:
            return tellWindow(ExcelEvent::WindowDeactivate);
        case OfficeEvent::BeforeClose:
            m_events.RaiseNamed(ExcelEvent::WorkbookBeforeClose, {workbook, cancel.Reference()});
            break;
        case OfficeEvent::BeforeSave:
            m_events.RaiseNamed(ExcelEvent::WorkbookBeforeSave,
                                {workbook, AsVariant(false), cancel.Reference()});
            break;
    }
    isCancelled = cancel.IsSet();
}

_variant_t BookApplicationObject::GetActiveWorkbook(const MemberCall&) {
    return AsVariant(Automation()->ObjectOf(Books().Active()).Get());
}

_variant_t BookApplicationObject::GetActiveSheet(const MemberCall&) {
    const auto book = Books().ActiveBook();
    return book ? NewWorksheet(Automation(), book) : AsVariant(static_cast<IDispatch*>(nullptr));
}

_variant_t BookApplicationObject::GetActiveCell(const MemberCall&) {
    const auto book = Books().ActiveBook();
    if (!book) {
        return AsVariant(static_cast<IDispatch*>(nullptr));
    }
    const auto [row, column] = book->Selected().ActiveCell();
    return NewRange(Automation(), BookRange(book, {{row, column, 1, 1}}));
}

_variant_t BookApplicationObject::GetSelection(const MemberCall&) {
    const auto book = Books().ActiveBook();
    return book ? NewRange(Automation(), BookRange(book, book->Selected().Areas()))
                : AsVariant(static_cast<IDispatch*>(nullptr));
}

_variant_t BookApplicationObject::Range(const MemberCall& call) {
    const std::string text = call.Text(0);
    const BookApplication& books = Books();
    try {
        return NewRange(Automation(), books.Range(text));
    } catch (const Error&) {
        // Not even a text: all that callers learn is that there is no such range.
        throw ApplicationError({});
    }
}

_variant_t BookApplicationObject::GetCells(const MemberCall&) {
    return NewRange(Automation(), Books().Range(AddressOf(WholeSheet)));
}

// Without a text of its own it is False, and setting it to False gives it back to the application.
_variant_t BookApplicationObject::StatusBar(const MemberCall& call) {
    if (call.IsPut()) {
        const _variant_t text = call.NewValue();
        const bool isGivenBack = V_VT(&text) == VT_BOOL && V_BOOL(&text) == VARIANT_FALSE;
        Books().SetStatus(isGivenBack ? std::nullopt : std::optional(TextIn(text)));
        return {};
    }
    const auto& text = Books().GivenStatus();
    return text ? AsVariant(*text) : AsVariant(false);
}

_variant_t BookApplicationObject::ScreenUpdating(const MemberCall& call) {
    if (call.IsPut()) {
        Books().SetScreenUpdating(FlagIn(call.NewValue()));
    }
    return AsVariant(Books().IsScreenUpdating());
}

_variant_t BookApplicationObject::InchesToPoints(const MemberCall& call) {
    constexpr double PointsPerInch = 72;
    return AsVariant(RealIn(call.Argument(0)) * PointsPerInch);
}

}  // namespace krv::bench
