// The colours of plots, which people with any kind of colour vision tell apart, by their lightness,
// too.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "plots/Canvas.h"
#include "suite/picture/Picture.h"

namespace krv::plots {

enum class Theme : std::uint8_t { Light, Dark };

// In the order of the inks.
using Palette = std::array<suite::picture::Color, 9>;

[[nodiscard]] inline Palette PaletteOf(Theme theme) noexcept {
    if (theme == Theme::Dark) {
        return {{{24, 26, 30},
                 {58, 62, 70},
                 {140, 146, 156},
                 {226, 228, 232},
                 {86, 180, 233},
                 {230, 159, 0},
                 {240, 228, 66},
                 {0, 190, 140},
                 {104, 100, 52}}};
    }
    return {{{255, 255, 255},
             {222, 224, 228},
             {110, 114, 122},
             {28, 30, 34},
             {0, 114, 178},
             {213, 94, 0},
             {60, 60, 120},
             {0, 130, 95},
             {176, 182, 214}}};
}

}  // namespace krv::plots
