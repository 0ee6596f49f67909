// FakeServer: an instrument server, with the instrument and its session, that records what it is
// asked, one line a call.
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "common/Error.h"
#include "ports/suite/KRVServer.h"
#include "tests/support/CallLog.h"

namespace krv::tests {

class FakeServer final : public ports::KRVServer,
                         public ports::ConnectedInstrument,
                         public ports::ArbWaveform,
                         public ports::InstrumentOptions,
                         public ports::IoSession,
                         public ports::SerialSession,
                         public std::enable_shared_from_this<FakeServer> {
 public:
    // --- the instrument as the test sets it up --------------------------------------------------
    std::string InstrumentModel = "M7718C";
    std::string Firmware = "B.03.40";
    std::vector<std::string> Models{"M7718C", "M9920D"};
    bool BasebandInstalled = true;
    // Whether the instrument holds a capture of its screen, answer for answer; the last one goes
    // on.
    std::deque<bool> Captured{true};
    bool DualArb = true;
    bool Selected = false;
    std::string SelectedName;
    std::deque<ports::InstrumentError> Errors;
    // Errors that the instrument notes when a waveform has been transferred.
    std::deque<ports::InstrumentError> ErrorsAfterTransfer;
    // Connected to this session, or, without one, to the server itself as its own session.
    std::shared_ptr<ports::IoSession> Session;
    bool Connected = true;
    // False: its own session's connection has gone.
    bool Alive = true;
    bool IsSerial = false;
    std::int32_t Baud = 19200;
    std::int32_t Bits = 8;
    std::int32_t Stop = 1;
    std::string Kind = "GPIB";
    // Called with the name of each operation before it runs; may throw, or change the instrument.
    std::function<void(const std::string&)> OnCall;
    // The call of this name ("DownloadIQ", "Model", ...) fails with this text.
    std::string FailingCall;
    std::string FailureText = "Time-out while writing";
    std::string InstrumentNumber = "US00000001";
    // Connected in this one's place from now on; may be none.
    std::shared_ptr<FakeServer> Other;
    Value State = std::string("as switched on");

    // --- what it was asked ----------------------------------------------------------------------
    std::vector<std::string> Calls;
    // The same between the calls of other doubles, with what is only read; may be none.
    CallLog* Log = nullptr;
    std::vector<std::int16_t> ICodes;
    std::vector<std::int16_t> QCodes;
    std::vector<std::int16_t> Interleaved;
    std::vector<std::int16_t> Markers;

    static std::shared_ptr<FakeServer> Make(const std::string& model = "M7718C") {
        auto server = std::make_shared<FakeServer>();
        server->InstrumentModel = model;
        return server;
    }

    std::shared_ptr<ports::ConnectedInstrument> Instrument() override { return Current(); }
    std::shared_ptr<ports::ArbWaveform> Arb() override { return Current(); }
    std::vector<std::string> InstalledOptions() override { return {"R2X"}; }

    std::string Model() override {
        Ask("Model");
        NoteInLog("Model");
        return InstrumentModel;
    }
    std::string FirmwareRevision() override { return Firmware; }
    std::string SerialNumber() override {
        Ask("SerialNumber");
        return InstrumentNumber;
    }
    std::shared_ptr<ports::IoSession> IO() override {
        Ask("IO");
        if (Session) {
            return Session;
        }
        return Connected ? shared_from_this() : nullptr;
    }
    bool FileExists(const std::string& name) override {
        Note("FileExists", name);
        const bool exists = Captured.front();
        if (Captured.size() > 1) {
            Captured.pop_front();
        }
        return exists;
    }
    ports::InstrumentError ReadError() override {
        Note("ReadError");
        if (Errors.empty()) {
            return {};
        }
        const auto error = Errors.front();
        Errors.pop_front();
        return error;
    }

    Value CaptureState() override {
        Note("CaptureState");
        return State;
    }
    void RestoreState(const Value& state) override {
        Note("RestoreState");
        State = state;
    }

    std::shared_ptr<ports::InstrumentOptions> Options() override { return shared_from_this(); }
    bool ArbInstalled() override {
        Note("ArbInstalled");
        return BasebandInstalled;
    }
    std::vector<std::string> SupportedModels() override { return Models; }
    void SetInstrumentSession(const std::shared_ptr<ports::IoSession>& session) override {
        Note("SetInstrumentSession", session ? session->Address() : "none");
        Session = session;
    }
    void PrepareForCapture() override { Note("PrepareForCapture"); }
    std::string ModelName() override {
        Note("ModelName");
        return InstrumentModel;
    }
    void SaveScreenImage(const std::string& file, std::int32_t format) override {
        Note("SaveScreenImage", file + ' ' + std::to_string(format));
    }

    bool IsAlive() override { return Alive; }
    std::string Address() override { return "tcp://127.0.0.1:5025"; }
    std::string ConnectionKind() override { return Kind; }
    ports::SerialSession* Serial() override {
        Ask("Serial");
        return IsSerial ? this : nullptr;
    }
    void ReturnToLocal() override { Note("ReturnToLocal"); }
    std::int32_t BaudRate() override { return Baud; }
    std::int32_t DataBits() override { return Bits; }
    std::int32_t StopBits() override { return Stop; }

    bool HasDualArbOption() override {
        Note("HasDualArbOption");
        return DualArb;
    }
    bool ArbFileSelected() override {
        Ask("ArbFileSelected");
        return Selected;
    }
    std::string SelectedArbFile() override { return SelectedName; }
    void DownloadIQ(const std::string& name, std::span<const std::int16_t> iCodes,
                    std::span<const std::int16_t> qCodes, std::int32_t) override {
        Note("DownloadIQ", name);
        ICodes.assign(iCodes.begin(), iCodes.end());
        QCodes.assign(qCodes.begin(), qCodes.end());
        FinishTransfer();
    }
    void DownloadInterleaved(const std::string& name, std::span<const std::int16_t> iqCodes,
                             std::int32_t) override {
        Note("DownloadInterleaved", name);
        Interleaved.assign(iqCodes.begin(), iqCodes.end());
        FinishTransfer();
    }
    void DownloadMarkers(const std::string& name, std::span<const std::int16_t> markers,
                         std::int32_t) override {
        Note("DownloadMarkers", name);
        Markers.assign(markers.begin(), markers.end());
    }

 private:
    std::shared_ptr<FakeServer> Current() { return Other ? Other : shared_from_this(); }
    void Note(const std::string& call, const std::string& what = {}) {
        Calls.push_back(what.empty() ? call : call + ' ' + what);
        Ask(call);
        NoteInLog(Calls.back());
    }
    void NoteInLog(const std::string& line) const {
        if (Log != nullptr) {
            Log->Note(line);
        }
    }
    // What is only read is not recorded among the calls.
    void Ask(const std::string& call) {
        if (OnCall) {
            OnCall(call);
        }
        if (call == FailingCall) {
            throw Error(ErrorNumber::Unspecified, FailureText);
        }
    }
    void FinishTransfer() {
        Errors.insert(Errors.end(), ErrorsAfterTransfer.begin(), ErrorsAfterTransfer.end());
        ErrorsAfterTransfer.clear();
    }
};

}  // namespace krv::tests
