#include "windows/automation/VariantArrays.h"

#include <cstring>
#include <new>

#include "common/Hexadecimal.h"
#include "windows/automation/ArrayAccess.h"
#include "windows/automation/VariantValue.h"

namespace krv::windows {
namespace {

struct TypeOfKind {
    ElementKind kind;
    VARTYPE type;
};

constexpr TypeOfKind Types[] = {
    {ElementKind::Boolean, VT_BOOL}, {ElementKind::Integer, VT_I2},
    {ElementKind::Long, VT_I4},      {ElementKind::Single, VT_R4},
    {ElementKind::Double, VT_R8},    {ElementKind::Currency, VT_CY},
    {ElementKind::Date, VT_DATE},    {ElementKind::ErrorCode, VT_ERROR},
    {ElementKind::Text, VT_BSTR},    {ElementKind::Any, VT_VARIANT},
};

ElementKind KindOf(VARTYPE type) {
    for (const TypeOfKind& entry : Types) {
        if (entry.type == type) {
            return entry.kind;
        }
    }
    throw WrongKind(static_cast<VARTYPE>(VT_ARRAY | type));
}

VARTYPE TypeOf(ElementKind kind) {
    for (const TypeOfKind& entry : Types) {
        if (entry.kind == kind) {
            return entry.type;
        }
    }
    throw Error(ErrorNumber::TypeMismatch);
}

Error TooLarge() {
    return Error(ErrorNumber::TypeMismatch, "The array is too large or too deep.");
}

std::vector<ArrayDimension> DimensionsOf(SAFEARRAY* array) {
    const UINT count = SafeArrayGetDim(array);
    if (count > ValueLimit::Dimensions) {
        throw TooLarge();
    }
    std::vector<ArrayDimension> dimensions;
    for (UINT dimension = 1; dimension <= count; ++dimension) {
        dimensions.push_back(
            {static_cast<std::uint32_t>(Extent(array, dimension)), LowerBound(array, dimension)});
    }
    return dimensions;
}

Value FromBytes(SAFEARRAY* array) {
    const ArrayAccess access(array);
    const auto* const first = access.Elements<const std::byte>();
    return ByteArray{{first, first + Extent(array, 1)}, LowerBound(array, 1)};
}

// A typed element lies in memory as it does in a VARIANT of its type.
Value FromTyped(const std::byte* element, std::size_t size, VARTYPE type) {
    VARIANT view;
    VariantInit(&view);
    V_VT(&view) = type;
    std::memcpy(&V_I8(&view), element, size);
    return ToValue(view);
}

// The elements of an array of any type that Value has.
std::vector<ArrayElement> ElementsOf(SAFEARRAY* array, VARTYPE type, std::size_t count,
                                     ArrayBudget& budget) {
    const ArrayAccess access(array);
    const std::size_t size = SafeArrayGetElemsize(array);
    std::vector<ArrayElement> elements;
    elements.reserve(count);
    for (std::size_t index = 0; index < count; ++index) {
        elements.push_back(
            {type == VT_VARIANT
                 ? ToValue(access.Elements<const VARIANT>()[index], budget)
                 : FromTyped(access.Elements<const std::byte>() + index * size, size, type)});
    }
    return elements;
}

SAFEARRAY* NewArray(VARIANT& variant, VARTYPE type, std::span<const ArrayDimension> dimensions) {
    std::vector<SAFEARRAYBOUND> bounds;
    for (const ArrayDimension& dimension : dimensions) {
        bounds.push_back({dimension.count, dimension.lowerBound});
    }
    SAFEARRAY* const array = SafeArrayCreate(type, static_cast<UINT>(bounds.size()), bounds.data());
    if (array == nullptr) {
        throw std::bad_alloc();
    }
    V_VT(&variant) = static_cast<VARTYPE>(VT_ARRAY | type);
    V_ARRAY(&variant) = array;
    return array;
}

}  // namespace

Error WrongKind(VARTYPE kind) {
    return Error(ErrorNumber::TypeMismatch, "A value of the automation kind 0x" +
                                                Hexadecimal(kind, 4) + " can't be used here.");
}

Value FromArray(const VARIANT& variant, ArrayBudget& budget) {
    SAFEARRAY* const array = V_ARRAY(&variant);
    if (array == nullptr) {
        throw WrongKind(V_VT(&variant));
    }
    const VARTYPE type = ElementType(array);
    if (type == VT_UI1 && SafeArrayGetDim(array) == 1) {
        return FromBytes(array);
    }
    ArrayValue value{KindOf(type), DimensionsOf(array), {}};
    const std::optional<std::size_t> count = ElementCount(value.dimensions);
    if (!count || *count > budget.elements || budget.levels == 0) {
        throw TooLarge();
    }
    budget.elements -= *count;
    --budget.levels;
    value.elements = ElementsOf(array, type, *count, budget);
    ++budget.levels;
    return value;
}

void FillArray(VARIANT& variant, const ByteArray& value) {
    const ArrayDimension whole{static_cast<std::uint32_t>(value.bytes.size()), value.lowerBound};
    const ArrayAccess access(NewArray(variant, VT_UI1, {&whole, 1}));
    if (!value.bytes.empty()) {
        std::memcpy(access.Elements<std::byte>(), value.bytes.data(), value.bytes.size());
    }
}

void FillArray(VARIANT& variant, const ArrayValue& value) {
    if (!HasItsShape(value)) {
        throw Error(ErrorNumber::TypeMismatch);
    }
    const VARTYPE type = TypeOf(value.kind);
    SAFEARRAY* const array = NewArray(variant, type, value.dimensions);
    const ArrayAccess access(array);
    const std::size_t size = SafeArrayGetElemsize(array);
    for (std::size_t index = 0; index < value.elements.size(); ++index) {
        if (!FitsKind(value.elements[index].value, value.kind)) {
            throw Error(ErrorNumber::TypeMismatch);
        }
        _variant_t single = ToVariant(value.elements[index].value);
        if (type == VT_VARIANT) {
            access.Elements<VARIANT>()[index] = single.Detach();
        } else {
            std::memcpy(access.Elements<std::byte>() + index * size, &V_I8(&single), size);
            V_VT(&single) = VT_EMPTY;  // the array owns a text now
        }
    }
}

}  // namespace krv::windows
