#include "windows/automation/VariantValue.h"

#include <limits>

#include "common/Error.h"
#include "windows/automation/ArrayAccess.h"
#include "windows/automation/ComGuard.h"
#include "windows/automation/LateBound.h"
#include "windows/automation/VariantArrays.h"
#include "windows/automation/Variants.h"

namespace krv::windows {
namespace {

// The greatest magnitude up to which doubles hold every whole number.
constexpr std::int64_t ExactInDouble = std::int64_t{1} << 53;

// Errors of cells and of the classic language travel as results of this facility.
constexpr std::uint32_t ErrorValueBase = 0x800A0000;

Error WrongShape() {
    return Error(ErrorNumber::TypeMismatch,
                 "The application reported cells in another form than was asked for.");
}

Value FromInteger(std::int64_t number) {
    if (number >= std::numeric_limits<std::int32_t>::min() &&
        number <= std::numeric_limits<std::int32_t>::max()) {
        return static_cast<std::int32_t>(number);
    }
    if (number < -ExactInDouble || number > ExactInDouble) {
        throw Error(ErrorNumber::Overflow);
    }
    return static_cast<double>(number);
}

Value FromInteger(std::uint64_t number) {
    if (number > static_cast<std::uint64_t>(ExactInDouble)) {
        throw Error(ErrorNumber::Overflow);
    }
    return FromInteger(static_cast<std::int64_t>(number));
}

Value FromDecimal(DECIMAL decimal) {
    double number = 0;
    ThrowIfFailed(VarR8FromDec(&decimal, &number));
    return number;
}

Value FromErrorCode(SCODE code) {
    const auto bits = static_cast<std::uint32_t>(code);
    const bool isErrorValue = (bits & 0xFFFF0000) == ErrorValueBase;
    return ErrorCodeValue{static_cast<std::int32_t>(isErrorValue ? bits & 0xFFFF : bits)};
}

Value FromReference(const VARIANT& variant, ArrayBudget& budget) {
    _variant_t copy;
    ThrowIfFailed(VariantCopyInd(&copy, const_cast<VARIANT*>(&variant)));
    return ToValue(copy, budget);
}

// Integers of kinds that Value lacks, and decimals.
Value FromOtherNumber(const VARIANT& variant) {
    switch (V_VT(&variant)) {
        case VT_I1:
            return static_cast<std::int16_t>(static_cast<signed char>(V_I1(&variant)));
        case VT_UI1:
            return static_cast<std::int16_t>(V_UI1(&variant));
        case VT_UI2:
            return static_cast<std::int32_t>(V_UI2(&variant));
        case VT_INT:
            return static_cast<std::int32_t>(V_INT(&variant));
        case VT_UINT:
            return FromInteger(std::uint64_t{V_UINT(&variant)});
        case VT_UI4:
            return FromInteger(std::uint64_t{V_UI4(&variant)});
        case VT_I8:
            return FromInteger(std::int64_t{V_I8(&variant)});
        case VT_UI8:
            return FromInteger(std::uint64_t{V_UI8(&variant)});
        case VT_DECIMAL:
            return FromDecimal(V_DECIMAL(&variant));
        default:
            throw WrongKind(V_VT(&variant));
    }
}

// Makes the VARIANT that holds a value of each kind; it starts out empty.
struct VariantFiller {
    VARIANT& target;

    void operator()(EmptyValue) const {}
    void operator()(NullValue) const { V_VT(&target) = VT_NULL; }
    void operator()(bool value) const {
        V_VT(&target) = VT_BOOL;
        V_BOOL(&target) = value ? VARIANT_TRUE : VARIANT_FALSE;
    }
    void operator()(std::int16_t value) const {
        V_VT(&target) = VT_I2;
        V_I2(&target) = value;
    }
    void operator()(std::int32_t value) const {
        V_VT(&target) = VT_I4;
        V_I4(&target) = value;
    }
    void operator()(float value) const {
        V_VT(&target) = VT_R4;
        V_R4(&target) = value;
    }
    void operator()(double value) const {
        V_VT(&target) = VT_R8;
        V_R8(&target) = value;
    }
    void operator()(CurrencyValue value) const {
        V_VT(&target) = VT_CY;
        V_CY(&target).int64 = value.tenThousandths;
    }
    void operator()(DateValue value) const {
        V_VT(&target) = VT_DATE;
        V_DATE(&target) = value.days;
    }
    void operator()(ErrorCodeValue value) const {
        const auto bits = static_cast<std::uint32_t>(value.code);
        V_VT(&target) = VT_ERROR;
        V_ERROR(&target) = static_cast<SCODE>(bits <= 0xFFFF ? ErrorValueBase | bits : bits);
    }
    void operator()(const ByteArray& value) const { FillArray(target, value); }
    void operator()(const ArrayValue& value) const { FillArray(target, value); }
    void operator()(const std::string& value) const {
        // Before the type, which must not promise a text that isn't there.
        V_BSTR(&target) = NewText(value);
        V_VT(&target) = VT_BSTR;
    }
};

}  // namespace

Value ToValue(const VARIANT& variant) {
    ArrayBudget budget;
    return ToValue(variant, budget);
}

Value ToValueOrEmpty(const VARIANT& variant) {
    try {
        return ToValue(variant);
    } catch (const Error&) {
        return EmptyValue{};
    }
}

Value ToValue(const VARIANT& variant, ArrayBudget& budget) {
    switch (V_VT(&variant)) {
        case VT_R8:
            return V_R8(&variant);
        case VT_EMPTY:
            return EmptyValue{};
        case VT_BSTR:
            return TextOf(V_BSTR(&variant));
        case VT_NULL:
            return NullValue{};
        case VT_BOOL:
            return V_BOOL(&variant) != VARIANT_FALSE;
        case VT_I2:
            return std::int16_t{V_I2(&variant)};
        case VT_I4:
            return static_cast<std::int32_t>(V_I4(&variant));
        case VT_R4:
            return V_R4(&variant);
        case VT_CY:
            return CurrencyValue{V_CY(&variant).int64};
        case VT_DATE:
            return DateValue{V_DATE(&variant)};
        case VT_ERROR:
            return FromErrorCode(V_ERROR(&variant));
        default:
            if ((V_VT(&variant) & VT_BYREF) != 0) {
                return FromReference(variant, budget);
            }
            return (V_VT(&variant) & VT_ARRAY) != 0 ? FromArray(variant, budget)
                                                    : FromOtherNumber(variant);
    }
}

_variant_t ToVariant(const Value& value) {
    _variant_t variant;
    std::visit(VariantFiller{variant}, value);
    return variant;
}

void CopyCells(const VARIANT& block, std::size_t rows, std::size_t columns,
               std::span<Value> values) {
    if ((V_VT(&block) & VT_ARRAY) == 0 && rows == 1 && columns == 1) {
        values[0] = ToValue(block);
        return;
    }
    if (V_VT(&block) != (VT_ARRAY | VT_VARIANT)) {
        throw WrongShape();
    }
    SAFEARRAY* const array = V_ARRAY(&block);
    if (SafeArrayGetDim(array) != 2 || Extent(array, 1) != rows || Extent(array, 2) != columns) {
        throw WrongShape();
    }
    const ArrayAccess access(array);
    const auto* cells = access.Elements<VARIANT>();
    // The first index, the row, varies fastest in memory.
    for (std::size_t column = 0; column < columns; ++column) {
        for (std::size_t row = 0; row < rows; ++row) {
            values[row * columns + column] = ToValue(cells[column * rows + row]);
        }
    }
}

std::vector<std::string> ToTexts(const VARIANT& list) {
    _variant_t direct;
    ThrowIfFailed(VariantCopyInd(&direct, const_cast<VARIANT*>(&list)));
    if (V_VT(&direct) == VT_EMPTY) {
        return {};
    }
    if ((V_VT(&direct) & VT_ARRAY) == 0 || SafeArrayGetDim(V_ARRAY(&direct)) != 1) {
        throw WrongKind(V_VT(&direct));
    }
    const VARTYPE kind = ElementType(V_ARRAY(&direct));
    if (kind != VT_BSTR && kind != VT_VARIANT) {
        throw WrongKind(V_VT(&direct));
    }
    const ArrayAccess access(V_ARRAY(&direct));
    std::vector<std::string> texts(Extent(V_ARRAY(&direct), 1));
    for (std::size_t index = 0; index < texts.size(); ++index) {
        texts[index] = kind == VT_BSTR ? TextOf(access.Elements<BSTR>()[index])
                                       : TextOf(access.Elements<VARIANT>()[index]);
    }
    return texts;
}

}  // namespace krv::windows
