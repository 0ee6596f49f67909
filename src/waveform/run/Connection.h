// What a run needs of the connection, or a clear error where there is none.
#pragma once

#include <memory>

#include "ports/suite/InstrumentServer.h"
#include "waveform/data/DownloadPlan.h"

namespace krv::waveform {

// Asks the instrument for its model and, where it has a session, for what tells it from others of
// its model. Throws Error 91, "No instrument is connected.", without a server (null), and what the
// server throws.
[[nodiscard]] InstrumentInUse TakeInstrument(std::shared_ptr<ports::InstrumentServer> server);

// Throws Error 91 as above without a session, and Error 5, which names both, when the server now
// holds another instrument.
void RequireSameInstrument(const InstrumentInUse& instrument);

// Each throws Error 91 as above for want of a session or arbitrary-waveform object. What the server
// throws goes on to the caller.
[[nodiscard]] std::shared_ptr<ports::IoSession> RequireSession(
    ports::ConnectedInstrument& instrument);
[[nodiscard]] std::shared_ptr<ports::ArbWaveform> RequireArb(ports::InstrumentServer& server);

// The serial interface of a session, owned by it; null for a session that is not serial or fails to
// say so.
[[nodiscard]] ports::SerialSession* FindSerial(ports::IoSession& session);

}  // namespace krv::waveform
