// Arrays of automation to the core's values and back; a part of VariantValue.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <oleauto.h>

#include <cstddef>

#include "common/Error.h"
#include "common/Value.h"

namespace krv::windows {

// What is left to take of ValueLimit while one value is converted, through references and arrays.
struct ArrayBudget {
    int levels = ValueLimit::ArrayLevels;
    std::size_t elements = ValueLimit::Elements;
};

[[nodiscard]] Value ToValue(const VARIANT& variant, ArrayBudget& budget);
[[nodiscard]] Value FromArray(const VARIANT& variant, ArrayBudget& budget);

// Makes an empty VARIANT an array. Throws std::bad_alloc, and Error 13 for an array whose elements
// fit neither its kind nor its dimensions.
void FillArray(VARIANT& variant, const ByteArray& value);
void FillArray(VARIANT& variant, const ArrayValue& value);

// That a kind of value can't be used here, naming it.
[[nodiscard]] Error WrongKind(VARTYPE kind);

}  // namespace krv::windows
