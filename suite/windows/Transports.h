// The transports that the suite's components connect through.
#pragma once

#include "suite/transport/Transport.h"

namespace krv::suite {

[[nodiscard]] const suite::TransportRegistry& KnownTransports();

}  // namespace krv::suite
