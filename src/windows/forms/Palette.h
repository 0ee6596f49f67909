// Palette: brushes and colour values for the colour numbers of controls.
#pragma once

#include <windows.h>

#include <map>

#include "common/forms/Control.h"
#include "windows/base/Handles.h"

namespace krv::windows {

[[nodiscard]] COLORREF ToColorRef(forms::Color color);

// Keeps one brush a plain colour; system colours use the system's own brushes.
class Palette {
 public:
    // Lives as long as this.
    [[nodiscard]] HBRUSH BrushOf(forms::Color color);

 private:
    std::map<forms::Color, Brush> m_brushes;
};

}  // namespace krv::windows
