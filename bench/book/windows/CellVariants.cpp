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

Value SingleValue(Value value) {
    if (std::holds_alternative<ByteArray>(value) || std::holds_alternative<ArrayValue>(value)) {
        throw Error(ErrorNumber::TypeMismatch);
    }
    return value;
}

// Elements of an array by row and column from 0.
class GivenArray {
 public:
    explicit GivenArray(const VARIANT& values)
        : m_array(V_ARRAY(&values)), m_kind(V_VT(&values) & VT_TYPEMASK) {
        const UINT dimensions = m_array != nullptr ? SafeArrayGetDim(m_array) : 0;
        if (dimensions < 1 || dimensions > 2) {
            throw Error(ErrorNumber::TypeMismatch);
        }
        m_columns = Bound(dimensions, m_firstColumn);
        m_rows = dimensions == 2 ? Bound(1, m_firstRow) : 0;
    }

    [[nodiscard]] Value At(std::int32_t row, std::int32_t column) const {
        if (column >= m_columns || (m_rows != 0 && row >= m_rows)) {
            return ErrorCodeValue{CellError::NotAvailable};
        }
        LONG place[2] = {m_firstRow + row, m_firstColumn + column};
        _variant_t element;
        V_VT(&element) = m_kind == VT_VARIANT ? static_cast<VARTYPE>(VT_EMPTY) : m_kind;
        void* const target = m_kind == VT_VARIANT ? static_cast<void*>(&element)
                                                  : static_cast<void*>(&V_I4(&element));
        const HRESULT got = SafeArrayGetElement(m_array, m_rows != 0 ? place : place + 1, target);
        if (FAILED(got)) {
            V_VT(&element) = VT_EMPTY;
        }
        windows::ThrowIfFailed(got);
        return CellValueOf(element);
    }

 private:
    LONG Bound(UINT dimension, LONG& first) const {
        LONG last = -1;
        windows::ThrowIfFailed(SafeArrayGetLBound(m_array, dimension, &first));
        windows::ThrowIfFailed(SafeArrayGetUBound(m_array, dimension, &last));
        return last - first + 1;
    }

    SAFEARRAY* m_array;
    VARTYPE m_kind;
    LONG m_firstRow = 0;
    LONG m_firstColumn = 0;
    LONG m_rows = 0;
    LONG m_columns = 0;
};

// An object is taken as what its default property holds: a range gives its value.
_variant_t DefaultOf(IDispatch* object) {
    _variant_t value;
    DISPPARAMS none{};
    if (object == nullptr ||
        FAILED(object->Invoke(DISPID_VALUE, IID_NULL, LOCALE_USER_DEFAULT,
                              DISPATCH_PROPERTYGET | DISPATCH_METHOD, &none, &value, nullptr,
                              nullptr)) ||
        V_VT(&value) == VT_DISPATCH) {
        throw Error(ErrorNumber::TypeMismatch);
    }
    return value;
}

template <class CellValue>
void Fill(Sheet& sheet, const CellArea& area, const CellValue& valueAt) {
    // From the far corner, so that each column is enlarged once.
    for (std::int32_t column = area.columns - 1; column >= 0; --column) {
        for (std::int32_t row = area.rows - 1; row >= 0; --row) {
            sheet.Set({area.row + row, area.column + column}, valueAt(row, column));
        }
    }
}

}  // namespace

Value CellValueOf(const VARIANT& value) {
    switch (V_VT(&value)) {
        case VT_BSTR:
            return ParseCellText(TextIn(value));
        case VT_DISPATCH:
            return CellValueOf(DefaultOf(V_DISPATCH(&value)));
        default:
            return SingleValue(windows::ToValue(value));
    }
}

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

void WriteCells(const BookRange& range, const VARIANT& values) {
    range.Book()->ChangeCells([&](Sheet& sheet) {
        if ((V_VT(&values) & VT_ARRAY) == 0) {
            const Value value = CellValueOf(values);
            for (const CellArea& area : range.Areas()) {
                if (std::holds_alternative<EmptyValue>(value)) {
                    sheet.Clear(area);
                } else {
                    Fill(sheet, area, [&](std::int32_t, std::int32_t) { return value; });
                }
            }
            return;
        }
        const GivenArray given(values);
        for (const CellArea& area : range.Areas()) {
            Fill(sheet, area,
                 [&](std::int32_t row, std::int32_t column) { return given.At(row, column); });
        }
    });
}

}  // namespace krv::bench
