// Values of automation that are kept for someone else, an instrument's state for instance, and come
// back exactly as they were: of the same type, with the same bits.
//
// What Value holds exactly is kept as that. Anything else is kept as a byte array with the mark and
// the layout that docs/file-formats.md describes.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <comdef.h>

#include "common/Value.h"

namespace krv::windows {

// References are followed. Throws Error 13 naming the kind for objects and records, and Error 13
// for arrays that are nested too deep or have too many dimensions.
[[nodiscard]] Value KeepVariant(const VARIANT& variant);

// Takes any Value, also one that never was a VARIANT. The bytes behind a mark may come from
// anywhere: throws Error 321 for those that KeepVariant doesn't write. The memory taken is in
// proportion to them.
[[nodiscard]] _variant_t GiveBackVariant(const Value& value);

}  // namespace krv::windows
