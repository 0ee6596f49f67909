// The arbitrary-waveform object of an instrument server.
#pragma once

#include <memory>

#include "suite/windows/server/ServerState.h"

namespace krv::suitecom {

// With one reference. Throws std::bad_alloc.
[[nodiscard]] IDispatch* NewArb(std::shared_ptr<ServerState> state);

}  // namespace krv::suitecom
