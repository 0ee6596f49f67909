// The VARIANT kinds of automation to the core's values and back. Kinds stay apart: a date doesn't
// become a number, nor a number a text.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <comdef.h>
#include <oleauto.h>

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "common/Value.h"

namespace krv::windows {

// Exact for each kind that Value has. Kinds of integers that it lacks become the next wider one
// that holds the value, a decimal the nearest double; references are followed. Arrays keep the type
// of their elements, their dimensions and lower bounds. Throws Error 6 for a 64-bit integer that
// nothing holds exactly, Error 13 naming the kind for objects and for arrays of types that Value
// lacks, and Error 13 for arrays beyond ValueLimit.
[[nodiscard]] Value ToValue(const VARIANT& variant);
// The same, but the empty value for what ToValue refuses.
[[nodiscard]] Value ToValueOrEmpty(const VARIANT& variant);
[[nodiscard]] _variant_t ToVariant(const Value& value);

// The values of a block of cells as an application reports them, row by row: a two-dimensional
// array of VARIANT, or a single value for a single cell. The span has rows times columns elements.
// Throws Error 13 when the block has another shape, and what ToValue throws.
void CopyCells(const VARIANT& block, std::size_t rows, std::size_t columns,
               std::span<Value> values);

// A one-dimensional array of texts, typed or of VARIANT; nothing for an empty value. Throws Error
// 13 for anything else.
[[nodiscard]] std::vector<std::string> ToTexts(const VARIANT& list);

}  // namespace krv::windows
