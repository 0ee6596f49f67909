// The letters of pictures that are drawn without a font of the system.
#pragma once

#include <cstddef>
#include <string_view>

namespace krv::suite::picture {

namespace Glyph {
inline constexpr int Width = 5;
// Seven rows above the base line and two below it.
inline constexpr int Height = 9;
// From one letter to the next.
inline constexpr int Advance = 6;
}  // namespace Glyph

// The letter's rows from the top, each of Width characters and with a blank behind it; '#' is ink.
// The font has printable ASCII; any other character looks like '?'.
[[nodiscard]] std::string_view GlyphRows(char character) noexcept;

[[nodiscard]] inline bool IsInk(std::string_view rows, int column, int row) {
    return rows[static_cast<std::size_t>(row * (Glyph::Width + 1) + column)] == '#';
}

}  // namespace krv::suite::picture
