// How the user writes numbers, by the regional settings in force at the call.
#pragma once

#include "common/Numbers.h"

namespace krv::windows {

// A decimal separator that isn't a single ASCII character counts as a dot.
[[nodiscard]] NumberFormat UserNumberFormat();

}  // namespace krv::windows
