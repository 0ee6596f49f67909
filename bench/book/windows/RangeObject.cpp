#include "bench/book/windows/RangeObject.h"

#include "bench/book/BookErrors.h"
#include "bench/book/RangeText.h"
#include "bench/book/windows/CellVariants.h"
#include "bench/shared/windows/CollectionObject.h"
#include "windows/automation/LateBound.h"

namespace krv::bench {
namespace {

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
    static constexpr std::array<Member<Own>, 14> Table{
        {{L"_Default", &Own::Default, MemberKind::TakesArguments, true},
         {L"Item", &Own::Item, MemberKind::TakesArguments},
         {L"Cells", &Own::GetCells},
         {L"Areas", &Own::GetAreas},
         {L"Rows", &Own::GetRows},
         {L"Columns", &Own::GetColumns},
         {L"Count", &Own::GetCount},
         {L"Left", &Own::GetLeft},
         {L"Top", &Own::GetTop},
         {L"Address", &Own::GetAddress},
         {L"Value", &Own::Value, ReadWrite},
         {L"Resize", &Own::Resize, MemberKind::TakesArguments},
         {L"Select", &Own::Select},
         {L"Application", &Own::GetApplication}}};
    return Table;
}

_variant_t RangeObject::Default(const MemberCall& call) {
    return call.Count() == 0 ? Value(call) : Item(call);
}

_variant_t RangeObject::Item(const MemberCall& call) {
    if (m_unit != RangeUnit::Cells && call.Count() == 1) {
        return Give(m_unit == RangeUnit::Rows ? m_range.Row(call.Number(0))
                                              : m_range.Column(ColumnNumber(call, 0)),
                    m_unit);
    }
    return Give(call.Has(1) ? m_range.Item(call.Number(0), ColumnNumber(call, 1))
                            : m_range.Item(call.Number(0)));
}

_variant_t RangeObject::GetAreas(const MemberCall&) {
    const BookRange range = m_range;
    const std::shared_ptr<OfficeAutomation> automation = Automation();
    return NewObject<CollectionObject>(
        automation, CollectionObject::Content{
                        [range] { return static_cast<std::int32_t>(range.Areas().size()); },
                        [range, automation](const _variant_t& key) {
                            return NewRange(automation, range.Area(NumberIn(key)));
                        }});
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

_variant_t RangeObject::Value(const MemberCall& call) {
    if (call.IsPut()) {
        WriteCells(m_range, call.NewValue());
        return {};
    }
    return ReadCells(m_range);
}

_variant_t RangeObject::Resize(const MemberCall& call) {
    return Give(m_range.Resize(call.OptionalNumber(0), call.OptionalNumber(1)));
}

_variant_t RangeObject::Select(const MemberCall&) {
    const auto book = m_range.Book();
    // As in a real sheet, which must be in front.
    if (book != Application().Active()) {
        throw ApplicationError("Select method of Range class failed");
    }
    book->ChangeSelection([this](Selection& selection) { selection.Select(m_range.Areas()); });
    return AsVariant(true);
}

_variant_t NewRange(const std::shared_ptr<OfficeAutomation>& automation, BookRange range) {
    return NewObject<RangeObject>(automation, std::move(range));
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
    throw ApplicationError("Method 'Range' of object '" + std::string(objectName) + "' failed");
}

}  // namespace krv::bench
