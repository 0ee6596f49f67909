// Cell values as automation callers receive and give them: single values, and two-dimensional
// arrays of VARIANT with both lower bounds 1.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <comdef.h>
#include <oleauto.h>

#include "bench/book/BookRange.h"
#include "common/Value.h"

namespace krv::bench {

// Text is taken as if it were typed, and an object as its default property. Throws Error 13 for
// what no cell can hold.
[[nodiscard]] Value CellValueOf(const VARIANT& value);

// The values of the first area. Throws Error 7 for more cells than an array can hold.
[[nodiscard]] _variant_t ReadCells(const BookRange& range);
// One value for all cells, or an array for the cells of each area: rows and columns for two
// dimensions, the same row again and again for one. Cells beyond the array become "#N/A". Throws
// Error 13.
void WriteCells(const BookRange& range, const VARIANT& values);

}  // namespace krv::bench
