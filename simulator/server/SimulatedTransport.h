// The way to a simulated generator in the same process.
#pragma once

#include "simulator/device/GeneratorSettings.h"
#include "suite/transport/Transport.h"

namespace krv::simulator {

// Adds `sim://MODEL`: each opened connection talks to a generator of its own, which has the
// settings apart from the model. Opening throws Error when the model isn't known.
void AddSimulatedTransport(suite::TransportRegistry& registry,
                           const GeneratorSettings& settings = {});

}  // namespace krv::simulator
