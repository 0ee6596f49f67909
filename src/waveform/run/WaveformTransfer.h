// WaveformTransfer: the last phase of a download, from the destination's name to the instrument's
// error report. The codes are moved about while they are sent and afterwards are as they were.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "common/Error.h"
#include "ports/suite/InstrumentServer.h"
#include "ports/suite/WaveformReadback.h"
#include "waveform/data/DacCodes.h"
#include "waveform/data/DownloadPlan.h"
#include "waveform/data/RunRecord.h"
#include "waveform/data/RunServices.h"

namespace krv::waveform {

class WaveformTransfer {
 public:
    // An instrument that never runs out of errors is given up after so many in one reading.
    static constexpr int MaxErrorsRead = 30;

    // All of these outlive the transfer, which fills the record.
    WaveformTransfer(const DownloadPlan& plan, const RunServices& services, DacCodes& codes,
                     RunRecord& record)
        : m_plan(plan), m_services(services), m_codes(codes), m_record(record) {}

    // True when the waveform is in the instrument and the instrument has reported no error, nor
    // found something else than was sent where the plan asks for that. Every failure of the
    // rules, of a writing call and of the instrument has been shown; an instrument that can't be
    // asked beforehand, and one that isn't the plan's, throws Error with nothing sent.
    bool CheckDestinationAndTransfer();

    // What was verified, for the message of the download's success; empty when nothing was.
    [[nodiscard]] std::string VerifiedText() const;

 private:
    bool CheckAndTransfer();
    // Takes the waveforms of the instrument that the rules have been held against.
    [[nodiscard]] std::string DestinationFault();
    // The last guard before codes are sent that their family doesn't have; empty when all is well.
    [[nodiscard]] std::string CodesFault() const;
    void EmptyErrorQueue();
    // Writes the codes under the destination's name; true when no call failed. The second row shows
    // when the transfer began and may end.
    bool TransferWaveform();
    bool ReportErrorQueue();
    bool Verify();
    void ShowTimes();
    std::optional<Error> Send();
    void SendInterleaved(ports::ArbWaveform& arb);
    void SendBothInterleaved(ports::ArbWaveform& arb);
    // Shows what has failed; a cancel is thrown on.
    void Report(const Error& failure);
    void Warn(const std::string& text);
    // Notes what is about to be sent, where that will be verified.
    void Expect(ports::StoredArray& array, std::span<const std::int16_t> codes);

    const DownloadPlan& m_plan;
    const RunServices& m_services;
    DacCodes& m_codes;
    RunRecord& m_record;
    std::shared_ptr<ports::ArbWaveform> m_arb;
    ports::StoredWaveform m_expected;
};

}  // namespace krv::waveform
