// What the generator's display shows: its settings, the selected waveform and the oldest error.
#pragma once

#include "suite/picture/Picture.h"

namespace krv::simulator {

class Generator;

namespace ScreenSize {
inline constexpr int Width = 640;
inline constexpr int Height = 320;
}  // namespace ScreenSize

// Under the generator's lock.
[[nodiscard]] suite::picture::Picture DrawScreen(Generator& generator);

}  // namespace krv::simulator
