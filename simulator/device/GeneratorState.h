// GeneratorState: all that can be set on the generator, as one block of bytes and back.
//
// Waveforms and files aren't settings: a state names the selected waveform, which must be there
// when the state comes back.
#pragma once

#include <cstddef>
#include <span>
#include <string>

#include "simulator/device/Generator.h"

namespace krv::simulator {

[[nodiscard]] std::string CapturedState(Generator& generator);

// The block may come from anywhere. Everything is looked at before anything is set: throws
// CommandFailure, and leaves the generator as it was, for a block that is damaged or not a state, a
// state of another model, a setting out of its range and a selected waveform that isn't there.
void RestoreState(Generator& generator, std::span<const std::byte> block);

}  // namespace krv::simulator
