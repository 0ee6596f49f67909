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

std::string NameOf(const InstrumentInUse& instrument) {
    return instrument.model + ", serial number " + instrument.serialNumber + ", at " +
           instrument.address;
}

}  // namespace

InstrumentInUse TakeInstrument(std::shared_ptr<ports::InstrumentServer> server) {
    InstrumentInUse instrument;
    instrument.server = Require(std::move(server));
    instrument.connected = instrument.server->Instrument();
    instrument.model = TrimBlanks(instrument.connected->Model());
    instrument.isNewModel = IsNewModelName(instrument.model);
    instrument.isSentInterleaved = IsSentInterleaved(instrument.model);
    if (const auto session = instrument.connected->IO()) {
        instrument.serialNumber = instrument.connected->SerialNumber();
        instrument.address = session->Address();
    }
    return instrument;
}

void RequireSameInstrument(const InstrumentInUse& instrument) {
    static_cast<void>(RequireSession(*instrument.server->Instrument()));
    const InstrumentInUse now = TakeInstrument(instrument.server);
    if (NameOf(now) != NameOf(instrument)) {
        throw Error(
            ErrorNumber::InvalidCall,
            "Another instrument has been connected since the run was started:" + std::string(CrLf) +
                NameOf(now) + std::string(CrLf) + "instead of" + std::string(CrLf) +
                NameOf(instrument) + std::string(CrLf) + "Nothing has been sent.");
    }
}

std::shared_ptr<ports::IoSession> RequireSession(ports::ConnectedInstrument& instrument) {
    const std::shared_ptr<ports::IoSession> session = Require(instrument.IO());
    return Require(session->IsAlive() ? session : nullptr);
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
