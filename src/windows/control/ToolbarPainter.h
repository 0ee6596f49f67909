// How the toolbar's buttons lie and look, the same whether the control has a window or is only
// drawn.
#pragma once

#include <windows.h>

#include <optional>
#include <vector>

#include "control/Toolbar.h"

namespace krv::windows {

// In pixels at 96 dots an inch: one button, and the toolbar with all that it has.
inline constexpr int ButtonSide = 24;
inline constexpr SIZE NaturalToolbarSize{7 * ButtonSide, ButtonSide};

struct ButtonLook {
    bool hot = false;
    bool pressed = false;
    bool focused = false;
};

// Where each button lies in the place, from its left edge on; nothing for one that is invisible and
// so takes no room. Buttons are square and shrink where the place is too small for them.
[[nodiscard]] std::vector<std::optional<RECT>> PlaceButtons(const control::Toolbar& toolbar,
                                                            const RECT& place, int dotsPerInch);

void DrawButton(HDC context, const RECT& place, const control::ToolbarButton& button,
                const ButtonLook& look);
// The whole toolbar at rest, on its background.
void DrawToolbar(HDC context, const RECT& place, const control::Toolbar& toolbar, int dotsPerInch);

}  // namespace krv::windows
