#include "bench/book/windows/RangeObject.h"

#include "bench/book/BookErrors.h"
#include "bench/book/RangeText.h"
#include "bench/book/windows/CellVariants.h"
#include "bench/book/windows/WorkbookObjects.h"
#include "bench/shared/windows/CollectionObject.h"
#include "windows/automation/LateBound.h"

namespace krv::bench {
std::span<const Member<RangeObject>> RangeObject::Members() {
    using Own = RangeObject;
    static constexpr std::array<Member<Own>, 13> Table{
        {{L"Item", &Own::Item, MemberKind::TakesArguments, true},
         {L"Cells", &Own::GetCells},
         {L"Areas", &Own::GetAreas},
         {L"Rows", &Own::GetRows},
         {L"Columns", &Own::GetColumns},
         {L"Count", &Own::GetCount},
         {L"Left", &Own::GetLeft},
         {L"Top", &Own::GetTop},
         {L"Address", &Own::GetAddress},
         {L"Worksheet", &Own::GetWorksheet},
         {L"Value", &Own::GetValue},
         {L"Resize", &Own::Resize, MemberKind::TakesArguments},
         {L"Application", &Own::GetApplication}}};
    return Table;
}

_variant_t RangeObject::Item(const MemberCall& call) {
    return Give(m_range.Item(call.Number(0), call.Number(1)));
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

_variant_t RangeObject::GetWorksheet(const MemberCall&) {
    return NewWorksheet(Automation(), m_range.Book());
}

_variant_t RangeObject::Resize(const MemberCall& call) {
    return Give(m_range.Resize(call.OptionalNumber(0), call.OptionalNumber(1)));
}

_variant_t NewRange(const std::shared_ptr<OfficeAutomation>& automation, BookRange range) {
    return NewObject<RangeObject>(automation, std::move(range));
}

}  // namespace krv::bench
