// Scale: twips of a form's layout to pixels of the monitor that its window is on.
#pragma once

#include <windows.h>

#include "common/forms/Control.h"
#include "windows/base/DotsPerInch.h"

namespace krv::windows {

class Scale {
 public:
    static constexpr int TwipsPerInch = 1440;

    explicit Scale(UINT dotsPerInch) : m_dotsPerInch(static_cast<int>(dotsPerInch)) {}

    [[nodiscard]] int Pixels(int twips) const { return MulDiv(twips, m_dotsPerInch, TwipsPerInch); }
    // Both edges are rounded, not the size, so that neighbours that meet in twips meet in pixels.
    [[nodiscard]] RECT Rectangle(const forms::Place& place, int offsetLeft, int offsetTop) const {
        const int left = place.left + offsetLeft;
        const int top = place.top + offsetTop;
        return {Pixels(left), Pixels(top), Pixels(left + place.width), Pixels(top + place.height)};
    }
    [[nodiscard]] int DotsPerInch() const { return m_dotsPerInch; }

 private:
    int m_dotsPerInch;
};

}  // namespace krv::windows
