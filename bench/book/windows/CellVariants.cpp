#include "bench/book/windows/CellVariants.h"

#include "bench/book/CellText.h"
#include "bench/shared/windows/MemberCall.h"
#include "common/Error.h"
#include "windows/automation/ArrayAccess.h"
#include "windows/automation/ComGuard.h"
#include "windows/automation/VariantValue.h"

namespace krv::bench {
namespace {

constexpr std::int64_t MostCells = std::int64_t{1} << 27;

}  // namespace

_variant_t ReadCells(const BookRange& range) {
    const std::shared_ptr<Workbook> book = range.Book();
    const CellArea& area = range.FirstArea();
    if (area.CellCount() == 1) {
        return windows::ToVariant(book->Cells().At(area.First()));
    }
    if (area.CellCount() > MostCells) {
        throw Error(ErrorNumber::OutOfMemory);
    }
    SAFEARRAYBOUND bounds[2] = {{static_cast<ULONG>(area.rows), 1},
                                {static_cast<ULONG>(area.columns), 1}};
    _variant_t values;
    V_ARRAY(&values) = SafeArrayCreate(VT_VARIANT, 2, bounds);
    if (V_ARRAY(&values) == nullptr) {
        throw Error(ErrorNumber::OutOfMemory);
    }
    V_VT(&values) = VT_ARRAY | VT_VARIANT;
    const windows::ArrayAccess access(V_ARRAY(&values));
    // In memory the rows of a column lie side by side.
    VARIANT* next = access.Elements<VARIANT>();
    for (std::int32_t column = 0; column < area.columns; ++column) {
        for (std::int32_t row = 0; row < area.rows; ++row, ++next) {
            const CellPosition cell{area.row + row, area.column + column};
            *next = windows::ToVariant(book->Cells().At(cell)).Detach();
        }
    }
    return values;
}

}  // namespace krv::bench
