#include "bench/book/windows/RangeObject.h"

#include <array>
#include <limits>

#include "bench/book/BookErrors.h"
#include "bench/book/CellText.h"
#include "bench/book/windows/WorkbookObjects.h"
#include "bench/shared/windows/CollectionObject.h"
#include "common/Text.h"
#include "windows/automation/LateBound.h"

namespace krv::bench {
namespace {

constexpr std::wstring_view RowAndColumn = L"RowIndex,ColumnIndex";

// A column is given by its number or its letters.
std::int64_t ColumnNumber(const MemberCall& call, std::size_t index) {
    const _variant_t given = call.Argument(index);
    if (V_VT(&given) == VT_BSTR) {
        const std::string name = TextIn(given);
        if (const auto range = ParseRangeText(name + ":" + name)) {
            return range->areas.front().column + 1;
        }
    }
    return NumberIn(given);
}

std::string TextOfCell(const _variant_t& cell) {
    return V_VT(&cell) == VT_DISPATCH ? windows::LateBound(cell).GetText(L"Address") : TextIn(cell);
}

}  // namespace

std::span<const Member<RangeObject>> RangeObject::Members() {
    using Own = RangeObject;
    constexpr auto ReadWrite = MemberKind::ReadWrite;
    static constexpr std::array<Member<Own>, 24> Table{
        {{L"_Default", &Own::Default, ReadWrite, RowAndColumn, true},
         {L"Item", &Own::Item, ReadWrite, RowAndColumn},
         {L"Cells", &Own::GetCells},
         {L"Areas", &Own::GetAreas},
         {L"Rows", &Own::GetRows},
         {L"Columns", &Own::GetColumns},
         {L"Count", &Own::GetCount},
         {L"Row", &Own::GetRow},
         {L"Column", &Own::GetColumn},
         {L"Left", &Own::GetLeft},
         {L"Top", &Own::GetTop},
         {L"Width", &Own::GetWidth},
         {L"Height", &Own::GetHeight},
         {L"Address", &Own::Address, MemberKind::ReadOnly,
          L"RowAbsolute,ColumnAbsolute,ReferenceStyle,External,RelativeTo"},
         {L"Value", &Own::Value, ReadWrite, L"RangeValueDataType"},
         {L"Value2", &Own::Value2, ReadWrite},
         {L"Text", &Own::GetText},
         {L"Offset", &Own::Offset, MemberKind::ReadOnly, L"RowOffset,ColumnOffset"},
         {L"Resize", &Own::Resize, MemberKind::ReadOnly, L"RowSize,ColumnSize"},
         {L"Select", &Own::Select, MemberKind::Method},
         {L"Activate", &Own::Activate, MemberKind::Method},
         {L"Worksheet", &Own::GetWorksheet},
         {L"Parent", &Own::GetWorksheet},
         {L"Application", &Own::GetApplication}}};
    return Table;
}

_variant_t RangeObject::Default(const MemberCall& call) {
    return call.Count() == 0 ? Values(call, CellKinds::Kept) : Item(call);
}

_variant_t RangeObject::Item(const MemberCall& call) {
    if (m_unit != RangeUnit::Cells && call.Count() == 1) {
        return Give(m_unit == RangeUnit::Rows ? m_range.Row(call.Number(0))
                                              : m_range.Column(ColumnNumber(call, 0)),
                    m_unit);
    }
    const BookRange cell = call.Has(1) ? m_range.Item(call.Number(0), ColumnNumber(call, 1))
                                       : m_range.Item(call.Number(0));
    if (call.IsPut()) {
        WriteCells(cell, call.NewValue());
        return {};
    }
    return Give(cell);
}

_variant_t RangeObject::GetAreas(const MemberCall&) {
    const BookRange range = m_range;
    const std::shared_ptr<BookAutomation> automation = Automation();
    return AutomationObject::Give(windows::MakeCom<CollectionObject>(
        automation,
        CollectionContent{[range] { return static_cast<std::int32_t>(range.Areas().size()); },
                          [range, automation](const _variant_t& key) {
                              return NewRange(automation, range.Area(NumberIn(key)));
                          }}));
}

_variant_t RangeObject::GetCount(const MemberCall&) {
    switch (m_unit) {
        case RangeUnit::Rows:
            return AsVariant(m_range.FirstArea().rows);
        case RangeUnit::Columns:
            return AsVariant(m_range.FirstArea().columns);
        case RangeUnit::Cells:
            break;
    }
    return AsVariant(m_range.Count());
}

_variant_t RangeObject::Address(const MemberCall& call) {
    return AsVariant(m_range.Address({call.Flag(0, true), call.Flag(1, true)}));
}

_variant_t RangeObject::Values(const MemberCall& call, CellKinds kinds) {
    if (call.IsPut()) {
        WriteCells(m_range, call.NewValue());
        return {};
    }
    return ReadCells(m_range, kinds);
}

_variant_t RangeObject::GetText(const MemberCall&) {
    return AsVariant(CellText(m_range.Book()->Cells().At(m_range.FirstArea().First())));
}

_variant_t RangeObject::Offset(const MemberCall& call) {
    return Give(
        m_range.Offset(call.OptionalNumber(0).value_or(0), call.OptionalNumber(1).value_or(0)));
}

_variant_t RangeObject::Resize(const MemberCall& call) {
    return Give(m_range.Resize(call.OptionalNumber(0), call.OptionalNumber(1)));
}

_variant_t RangeObject::Select(const MemberCall&) {
    // As in a real sheet, which must be in front.
    if (m_range.Book() != Application().ActiveBook()) {
        throw ApplicationError("Select method of Range class failed");
    }
    m_range.Select();
    return AsVariant(true);
}

_variant_t RangeObject::Activate(const MemberCall& call) {
    return Select(call);
}

_variant_t RangeObject::GetWorksheet(const MemberCall&) {
    return NewWorksheet(Automation(), m_range.Book());
}

_variant_t RangeObject::Give(BookRange range, RangeUnit unit) const {
    return AutomationObject::Give(
        windows::MakeCom<RangeObject>(Automation(), std::move(range), unit));
}

_variant_t NewRange(const std::shared_ptr<BookAutomation>& automation, BookRange range) {
    return _variant_t(
        static_cast<IDispatch*>(windows::MakeCom<RangeObject>(automation, std::move(range)).Get()));
}

BookRange RangeFromCall(const MemberCall& call, const std::shared_ptr<Workbook>& book,
                        const char* objectName) {
    try {
        std::string text = TextOfCell(call.Argument(0));
        if (call.Has(1)) {
            text += ":" + TextOfCell(call.Argument(1));
        }
        if (book) {
            return {book, book->ResolveRange(text)};
        }
    } catch (const Error&) {
        // All that callers learn is that there is no such range.
    }
    throw MethodFailed("Range", objectName);
}

}  // namespace krv::bench
