// WaveformTransfer: the last phase of a download, from the destination's name to the instrument's
// error report. Works on the dialog's Codes, which it leaves as they are.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "common/Error.h"
#include "ports/suite/InstrumentServer.h"
#include "ports/suite/WaveformReadback.h"

namespace krv::waveform {

class frmDataTransfer;

class WaveformTransfer {
 public:
    // An instrument that never runs out of errors is given up after so many in one reading.
    static constexpr int MaxErrorsRead = 100;

    explicit WaveformTransfer(frmDataTransfer& dialog) : m_dialog(dialog) {}

    // True when the waveform is in the instrument and the instrument has reported no error, nor
    // found something else than was sent where the dialog asks for that. Every failure of the
    // rules, of a writing call and of the instrument has been shown; an instrument that can't be
    // asked beforehand throws Error.
    bool CheckDestinationAndTransfer();

    // What was verified, to be told with the download's success; empty when nothing was.
    [[nodiscard]] std::string VerifiedText() const;

    // Writes the codes under the destination's name; true when no call failed. Fills the dialog's
    // LastRun. With showTimes the second row tells when the transfer began and may end.
    bool TransferWaveform(bool showTimes);

 private:
    [[nodiscard]] std::string DestinationName() const;
    [[nodiscard]] std::string DestinationFault(const std::string& name) const;
    void EmptyErrorQueue();
    bool ReportErrorQueue();
    bool Verify(const std::string& name);
    void ShowTimes();
    std::optional<Error> Send(bool interleaved);
    void SendInterleaved(ports::ArbWaveform& arb, const std::string& name);
    void SendBothInterleaved(ports::ArbWaveform& arb, const std::string& name);
    void Warn(const std::string& text);
    // Notes what is about to be sent, where that will be verified.
    void Expect(ports::StoredArray& array, std::span<const std::int16_t> codes);

    frmDataTransfer& m_dialog;
    ports::StoredWaveform m_expected;
    bool m_interleaved = false;
};

}  // namespace krv::waveform
