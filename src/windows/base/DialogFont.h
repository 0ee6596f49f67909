// The font of dialogs.
#pragma once

#include "windows/base/Handles.h"

namespace krv::windows {

// Eight points at this resolution.
[[nodiscard]] Font NewDialogFont(int dotsPerInch);

}  // namespace krv::windows
