// The toolbar control's side of capturing and restoring settings: a snapshot of the instrument's
// state, bound to the instrument by its serial number.
//
// A snapshot is one byte array: the contents of a property bag. The instrument is asked of the
// server each time, since it may have been exchanged.
#pragma once

#include "common/Value.h"
#include "ports/desktop/MessageBoxes.h"
#include "ports/suite/InstrumentServer.h"

namespace krv::settings {

// Both return the instrument to its front panel, however they end.

// Throws the server's Error.
[[nodiscard]] Value CaptureSettings(ports::InstrumentServer& server);

// The snapshot may come from anywhere. It is restored only to the instrument that it was taken
// from. A message says when that is another one, and shows each failure; nothing is thrown.
void RestoreSettings(ports::InstrumentServer& server, const Value& snapshot,
                     ports::MessageBoxes& messageBoxes);

}  // namespace krv::settings
