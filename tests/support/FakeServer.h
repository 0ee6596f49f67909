// FakeServer: an instrument server that records what it is asked, one line a call.
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "common/Error.h"
#include "ports/suite/InstrumentServer.h"

namespace krv::tests {

class FakeServer final : public ports::InstrumentServer,
                         public ports::ConnectedInstrument,
                         public ports::ArbWaveform,
                         public ports::IoSession,
                         public ports::SerialSession,
                         public std::enable_shared_from_this<FakeServer> {
 public:
    // --- the instrument as the test sets it up
    // ----------------------------------------------------
    std::string ModelName = "M7718C";
    bool DualArb = true;
    bool Selected = false;
    std::string SelectedName;
    std::deque<ports::InstrumentError> Errors;
    // Errors that the instrument notes when a waveform has been transferred.
    std::deque<ports::InstrumentError> ErrorsAfterTransfer;
    bool Connected = true;
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
    Value State = std::string("as switched on");

    // --- what it was asked
    // ---------------------------------------------------------------------------
    std::vector<std::string> Calls;
    std::vector<std::int16_t> ICodes;
    std::vector<std::int16_t> QCodes;
    std::vector<std::int16_t> Interleaved;
    std::vector<std::int16_t> Markers;

    static std::shared_ptr<FakeServer> Make(const std::string& model = "M7718C") {
        auto server = std::make_shared<FakeServer>();
        server->ModelName = model;
        return server;
    }

    std::shared_ptr<ports::ConnectedInstrument> Instrument() override { return shared_from_this(); }
    std::shared_ptr<ports::ArbWaveform> Arb() override { return shared_from_this(); }
    std::vector<std::string> InstalledOptions() override { return {"R2X"}; }

    std::string Model() override {
        Ask("Model");
        return ModelName;
    }
    std::string FirmwareRevision() override { return "B.03.40"; }
    std::string SerialNumber() override {
        Ask("SerialNumber");
        return InstrumentNumber;
    }
    std::shared_ptr<ports::IoSession> IO() override {
        Ask("IO");
        return Connected ? shared_from_this() : nullptr;
    }
    bool FileExists(const std::string&) override { return false; }
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
    void Note(const std::string& call, const std::string& name = {}) {
        Calls.push_back(name.empty() ? call : call + ' ' + name);
        Ask(call);
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
