#include "waveform/run/Connection.h"

#include "common/Error.h"

namespace krv::waveform {
namespace {

template <class Pointer>
const Pointer& Require(const Pointer& pointer) {
    if (pointer == nullptr) {
        throw Error(ErrorNumber::ObjectNotSet, "No instrument is connected.");
    }
    return pointer;
}

}  // namespace

ports::InstrumentServer& RequireServer(const std::shared_ptr<ports::InstrumentServer>& server) {
    return *Require(server);
}

std::shared_ptr<ports::IoSession> RequireSession(
    const std::shared_ptr<ports::InstrumentServer>& server) {
    return Require(RequireServer(server).Instrument()->IO());
}

std::shared_ptr<ports::ArbWaveform> RequireArb(
    const std::shared_ptr<ports::InstrumentServer>& server) {
    return Require(RequireServer(server).Arb());
}

}  // namespace krv::waveform
