// The arbitrary-waveform object of an instrument server.
#pragma once

#include <memory>

#include "suite/windows/server/ServerState.h"

namespace krv::suite {

// With one reference. Throws std::bad_alloc.
[[nodiscard]] IDispatch* NewArb(std::shared_ptr<ServerState> state);

}  // namespace krv::suite
