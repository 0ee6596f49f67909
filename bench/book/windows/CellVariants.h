// Cell values as automation callers receive them: single values, and two-dimensional arrays of
// VARIANT with both lower bounds 1.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <comdef.h>
#include <oleauto.h>

#include "bench/book/BookRange.h"
#include "common/Value.h"

namespace krv::bench {

// The values of the first area. Throws Error 7 for more cells than an array can hold.
[[nodiscard]] _variant_t ReadCells(const BookRange& range);

}  // namespace krv::bench
