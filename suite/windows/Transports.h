// The transports that the suite's components connect through.
#pragma once

#include "suite/Transport.h"

namespace krv::suitecom {

[[nodiscard]] const server::TransportRegistry& KnownTransports();

}  // namespace krv::suitecom
