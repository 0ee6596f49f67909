#include "waveform/run/WaveformTransfer.h"

#include <array>
#include <cstdio>
#include <span>
#include <utility>

#include "common/ErrorTrap.h"
#include "common/ScopeExit.h"
#include "common/Text.h"
#include "waveform/data/ModelFamily.h"
#include "waveform/run/Connection.h"
#include "waveform/run/DestinationRules.h"
#include "waveform/run/InterleaveCodes.h"
#include "waveform/run/WaveformVerification.h"

namespace krv::waveform {
namespace {

// "hh:mm:ss"; the day's end is followed by the next day's beginning.
std::string TimeOfDayText(std::int64_t secondOfDay) {
    const int second = static_cast<int>(secondOfDay % 86400);
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%02d:%02d:%02d", second / 3600, second / 60 % 60,
                  second % 60);
    return text.data();
}

}  // namespace

bool WaveformTransfer::CheckDestinationAndTransfer() {
    bool isDone = false;
    if (const auto failure = FailureOf([&] { isDone = CheckAndTransfer(); })) {
        Report(*failure);
    }
    return isDone;
}

bool WaveformTransfer::CheckAndTransfer() {
    RequireSameInstrument(m_plan.instrument);
    EmptyErrorQueue();
    std::string fault = DestinationFault();
    if (fault.empty()) {
        fault = CodesFault();
    }
    if (!fault.empty()) {
        Warn(fault);
        return false;
    }
    m_record.destinationName = m_plan.destination;
    const bool sent = TransferWaveform();
    const bool accepted = ReportErrorQueue();
    return sent && accepted && Verify();
}

bool WaveformTransfer::Verify() {
    if (m_plan.verifyWith == nullptr) {
        return true;
    }
    m_services.progress.ShowMessage("Verifying the waveform in the instrument...");
    std::string fault;
    if (const auto failure = FailureOf([&] {
            fault = VerificationFault(m_expected, m_plan.verifyWith->ReadBack(m_plan.destination),
                                      m_plan.instrument.isSentInterleaved);
        })) {
        fault = failure->Description();
    }
    m_services.progress.ClearPhase();
    m_record.verified = fault.empty();
    if (!fault.empty()) {
        Warn(fault);
    }
    return fault.empty();
}

std::string WaveformTransfer::VerifiedText() const {
    return m_record.verified.value_or(false)
               ? VerificationText(m_expected, m_plan.instrument.isSentInterleaved)
               : std::string();
}

void WaveformTransfer::Expect(ports::StoredArray& array, std::span<const std::int16_t> codes) {
    if (m_plan.verifyWith != nullptr) {
        array = SumUp(codes);
    }
}

std::string WaveformTransfer::DestinationFault() {
    std::string fault = DestinationNameFault(m_plan.destination);
    if (fault.empty()) {
        m_arb = RequireArb(*m_plan.instrument.server);
        if (m_arb->ArbFileSelected()) {
            fault = SelectedFileFault(m_plan.destination, m_arb->SelectedArbFile());
        }
    }
    return fault;
}

std::string WaveformTransfer::CodesFault() const {
    if (m_codes.isNewModel) {
        return {};
    }
    CodeRange range = RangeOf(m_codes.i.Span());
    range.Add(RangeOf(m_codes.q.Span()));
    if (range.smallest > range.largest ||
        (range.smallest >= 0 && range.largest <= LargestOldCode)) {
        return {};
    }
    return "The codes run from " + std::to_string(range.smallest) + " to " +
           std::to_string(range.largest) + ", but the " + m_plan.instrument.model + " takes 0 to " +
           std::to_string(LargestOldCode) + ".  Nothing has been sent.";
}

void WaveformTransfer::EmptyErrorQueue() {
    const auto& instrument = m_plan.instrument.connected;
    for (int count = 0; count < MaxErrorsRead; ++count) {
        if (instrument->ReadError().number == 0) {
            return;
        }
    }
}

bool WaveformTransfer::ReportErrorQueue() {
    const auto& instrument = m_plan.instrument.connected;
    for (int count = 0; count < MaxErrorsRead; ++count) {
        ports::InstrumentError entry;
        if (const auto failure = FailureOf([&] { entry = instrument->ReadError(); })) {
            Report(*failure);
            return false;
        }
        if (entry.number == 0) {
            return m_record.instrumentErrors.empty();
        }
        m_record.instrumentErrors.push_back(entry);
        Warn("Instrument error " + std::to_string(entry.number) + std::string(CrLf) +
             entry.message);
    }
    Warn("The instrument goes on to report errors.  The first " + std::to_string(MaxErrorsRead) +
         " have been shown.");
    return false;
}

bool WaveformTransfer::TransferWaveform() {
    m_expected = {};
    ShowTimes();
    const auto failure = Send();
    if (failure) {
        Report(*failure);
    }
    m_services.progress.ClearPhase();
    m_record.transferred = !failure;
    return !failure;
}

void WaveformTransfer::ShowTimes() {
    const int start = m_services.desktop.clock.LocalSecondOfDay();
    const std::int64_t end = std::int64_t{start} + m_record.expectedSeconds;
    m_services.progress.ReplaceBar("Download started at " + TimeOfDayText(start) +
                                   std::string(CrLf) + "Estimated completion at " +
                                   TimeOfDayText(end));
    m_services.progress.ShowMessage("Downloading waveform to the instrument...");
}

std::optional<Error> WaveformTransfer::Send() {
    ports::Clock& clock = m_services.desktop.clock;
    const std::uint64_t startMs = clock.TickCountMs();
    auto failure = FailureOf([&] {
        if (m_plan.instrument.isSentInterleaved) {
            SendInterleaved(*m_arb);
            return;
        }
        const auto q = m_plan.useQ ? m_codes.q.Span() : std::span<const std::int16_t>();
        Expect(m_expected.codes, m_codes.i.Span());
        Expect(m_expected.qCodes, q);
        m_arb->DownloadIQ(m_plan.destination, m_codes.i.Span(), q, 0);
    });
    m_record.transferMs = static_cast<std::int64_t>(clock.TickCountMs() - startMs);
    return failure;
}

void WaveformTransfer::SendInterleaved(ports::ArbWaveform& arb) {
    if (m_plan.useQ) {
        SendBothInterleaved(arb);
    } else {
        Expect(m_expected.codes, m_codes.i.Span());
        arb.DownloadInterleaved(m_plan.destination, m_codes.i.Span(), 0);
    }
    Expect(m_expected.markers, m_codes.markers.Span());
    arb.DownloadMarkers(m_plan.destination, m_codes.markers.Span(), 0);
}

// While the array is sent the channels may be nowhere else; afterwards they are in their places
// again.
void WaveformTransfer::SendBothInterleaved(ports::ArbWaveform& arb) {
    const std::size_t iCount = m_codes.i.Size();
    const std::size_t qCount = m_codes.q.Size();
    SampleBuffer<std::int16_t> interleaved =
        InterleaveCodes(m_codes.i, m_codes.q, ZeroCode(m_codes.isNewModel));
    Expect(m_expected.codes, interleaved.Span());
    const ScopeExit separate(
        [&] { SeparateInterleaved(interleaved, m_codes.i, iCount, m_codes.q, qCount); });
    arb.DownloadInterleaved(m_plan.destination, interleaved.Span(), 0);
}

void WaveformTransfer::Report(const Error& failure) {
    if (failure.IsCancel()) {
        throw Error(failure);
    }
    Warn(failure.Description());
}

void WaveformTransfer::Warn(const std::string& text) {
    m_services.user.Tell(text, ports::MessageIcon::Exclamation);
}

}  // namespace krv::waveform
