// The automation object of a range of cells.
#pragma once

#include <memory>

#include "bench/book/BookRange.h"
#include "bench/book/windows/CellVariants.h"
#include "bench/shared/windows/AutomationObject.h"

namespace krv::bench {

// What the range counts.
enum class RangeUnit : std::uint8_t { Cells, Rows, Columns };

class RangeObject final : public AutomationObject<RangeObject> {
 public:
    RangeObject(std::shared_ptr<OfficeAutomation> automation, BookRange range,
                RangeUnit unit = RangeUnit::Cells)
        : AutomationObject(std::move(automation)), m_range(std::move(range)), m_unit(unit) {}

    static std::span<const Member<RangeObject>> Members();

 private:
    _variant_t Item(const MemberCall& call);
    _variant_t GetCells(const MemberCall&) { return Give(m_range); }
    _variant_t GetAreas(const MemberCall&);
    _variant_t GetRows(const MemberCall&) { return Give(m_range, RangeUnit::Rows); }
    _variant_t GetColumns(const MemberCall&) { return Give(m_range, RangeUnit::Columns); }
    _variant_t GetCount(const MemberCall&);
    // In points.
    _variant_t GetLeft(const MemberCall&) {
        return AsVariant(m_range.FirstArea().column * CellSize::ColumnWidth);
    }
    _variant_t GetTop(const MemberCall&) {
        return AsVariant(m_range.FirstArea().row * CellSize::RowHeight);
    }
    _variant_t GetAddress(const MemberCall&) { return AsVariant(m_range.Address()); }
    _variant_t GetValue(const MemberCall&) { return ReadCells(m_range); }
    _variant_t GetWorksheet(const MemberCall&);
    _variant_t Resize(const MemberCall& call);

    [[nodiscard]] _variant_t Give(BookRange range, RangeUnit unit = RangeUnit::Cells) const {
        return NewObject<RangeObject>(Automation(), std::move(range), unit);
    }

    BookRange m_range;
    RangeUnit m_unit;
};

[[nodiscard]] _variant_t NewRange(const std::shared_ptr<OfficeAutomation>& automation,
                                  BookRange range);

}  // namespace krv::bench
