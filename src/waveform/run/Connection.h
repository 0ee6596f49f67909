// What a run needs of the connection, or a clear error where there is none.
#pragma once

#include <memory>

#include "ports/suite/InstrumentServer.h"

namespace krv::waveform {

// Each throws Error 91, "No instrument is connected.", for want of a server, session or arbitrary-
// waveform object. What the server throws goes on to the caller.
[[nodiscard]] ports::InstrumentServer& RequireServer(
    const std::shared_ptr<ports::InstrumentServer>& server);
[[nodiscard]] std::shared_ptr<ports::IoSession> RequireSession(
    const std::shared_ptr<ports::InstrumentServer>& server);
[[nodiscard]] std::shared_ptr<ports::ArbWaveform> RequireArb(
    const std::shared_ptr<ports::InstrumentServer>& server);

}  // namespace krv::waveform
