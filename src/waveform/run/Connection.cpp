#include "waveform/run/Connection.h"

#include <string>
#include <utility>

#include "common/Error.h"
#include "common/Text.h"
#include "waveform/data/ModelFamily.h"

namespace krv::waveform {
namespace {

template <class Pointer>
Pointer Require(Pointer pointer) {
    if (pointer == nullptr) {
        throw Error(ErrorNumber::ObjectNotSet, "No instrument is connected.");
    }
    return pointer;
}

}  // namespace

InstrumentInUse TakeInstrument(std::shared_ptr<ports::InstrumentServer> server) {
    InstrumentInUse instrument;
    instrument.server = Require(std::move(server));
    instrument.model = TrimBlanks(instrument.server->Instrument()->Model());
    instrument.isNewModel = IsNewModelName(instrument.model);
    instrument.isSentInterleaved = IsSentInterleaved(instrument.model);
    return instrument;
}

std::shared_ptr<ports::IoSession> RequireSession(ports::InstrumentServer& server) {
    return Require(server.Instrument()->IO());
}

std::shared_ptr<ports::ArbWaveform> RequireArb(ports::InstrumentServer& server) {
    return Require(server.Arb());
}

ports::SerialSession* FindSerial(ports::IoSession& session) {
    try {
        return session.Serial();
    } catch (const Error&) {
        return nullptr;
    }
}

}  // namespace krv::waveform
