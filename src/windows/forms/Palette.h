// Palette: brushes and colour values for the colour numbers of controls.
#pragma once

#include <windows.h>

#include <map>

#include "common/forms/Control.h"

namespace krv::windows {

[[nodiscard]] COLORREF ToColorRef(forms::Color color);

// Keeps one brush a plain colour; system colours use the system's own brushes.
class Palette {
 public:
    Palette() = default;
    Palette(const Palette&) = delete;
    Palette& operator=(const Palette&) = delete;
    ~Palette();

    [[nodiscard]] HBRUSH Brush(forms::Color color);

 private:
    std::map<forms::Color, HBRUSH> m_brushes;
};

}  // namespace krv::windows
