// The arbitrary-waveform object of an instrument server.
#pragma once

#include <memory>

#include "suite/windows/server/ServerState.h"

namespace krv::suite {

// The object has one reference, which the caller owns. Throws std::bad_alloc.
[[nodiscard]] IDispatch* NewArb(std::shared_ptr<ServerState> state);

}  // namespace krv::suite
