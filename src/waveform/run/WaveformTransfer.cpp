#include "waveform/run/WaveformTransfer.h"

#include <array>
#include <cstdio>
#include <span>
#include <utility>

#include "common/Text.h"
#include "waveform/data/ModelFamily.h"
#include "waveform/dialog/frmDataTransfer.h"
#include "waveform/run/Connection.h"
#include "waveform/run/DestinationRules.h"
#include "waveform/run/Failure.h"
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
    EmptyErrorQueue();
    const std::string name = DestinationName();
    if (const std::string fault = DestinationFault(name); !fault.empty()) {
        Warn(fault);
        return false;
    }
    m_dialog.LastRun.destinationName = name;
    const bool sent = TransferWaveform(true);
    const bool accepted = ReportErrorQueue();
    return sent && accepted && Verify(name);
}

bool WaveformTransfer::Verify(const std::string& name) {
    if (m_dialog.VerifyWith == nullptr) {
        return true;
    }
    m_dialog.Callback1().SetWaitMessage(2, "Verifying the waveform in the instrument...");
    std::string fault;
    if (const auto failure = FailureOf([&] {
            fault =
                VerificationFault(m_expected, m_dialog.VerifyWith->ReadBack(name), m_interleaved);
        })) {
        fault = failure->Description();
    }
    m_dialog.Callback1().ClearWaitMessage(2);
    m_dialog.LastRun.verified = fault.empty();
    if (!fault.empty()) {
        Warn(fault);
    }
    return fault.empty();
}

std::string WaveformTransfer::VerifiedText() const {
    return m_dialog.LastRun.verified.value_or(false) ? VerificationText(m_expected, m_interleaved)
                                                     : std::string();
}

void WaveformTransfer::Expect(ports::StoredArray& array, std::span<const std::int16_t> codes) {
    if (m_dialog.VerifyWith != nullptr) {
        array = SumUp(codes);
    }
}

std::string WaveformTransfer::DestinationName() const {
    return std::string(TrimBlanks(m_dialog.TextDestinationName.Text.Get()));
}

std::string WaveformTransfer::DestinationFault(const std::string& name) const {
    std::string fault = DestinationNameFault(name);
    if (fault.empty()) {
        const auto arb = RequireArb(m_dialog.instrServer);
        if (arb->ArbFileSelected()) {
            fault = SelectedFileFault(name, arb->SelectedArbFile());
        }
    }
    return fault;
}

void WaveformTransfer::EmptyErrorQueue() {
    const auto instrument = RequireServer(m_dialog.instrServer).Instrument();
    for (int count = 0; count < MaxErrorsRead; ++count) {
        if (instrument->ReadError().number == 0) {
            return;
        }
    }
}

bool WaveformTransfer::ReportErrorQueue() {
    const auto instrument = RequireServer(m_dialog.instrServer).Instrument();
    for (int count = 0; count < MaxErrorsRead; ++count) {
        ports::InstrumentError entry;
        if (const auto failure = FailureOf([&] { entry = instrument->ReadError(); })) {
            Warn(failure->Description());
            return false;
        }
        if (entry.number == 0) {
            return m_dialog.LastRun.instrumentErrors.empty();
        }
        m_dialog.LastRun.instrumentErrors.push_back(entry);
        Warn("Instrument error " + std::to_string(entry.number) + std::string(CrLf) +
             entry.message);
    }
    return false;
}

bool WaveformTransfer::TransferWaveform(bool showTimes) {
    const bool interleaved = IsSentInterleaved(m_dialog.ConnectedModel());
    m_expected = {};
    m_interleaved = interleaved;
    if (showTimes) {
        ShowTimes();
    }
    const auto failure = Send(interleaved);
    if (failure) {
        Warn(failure->Description());
    }
    m_dialog.Callback1().ClearWaitMessage(2);
    m_dialog.LastRun.transferred = !failure;
    return !failure;
}

void WaveformTransfer::ShowTimes() {
    const int start = m_dialog.Services().clock.LocalSecondOfDay();
    const std::int64_t end = std::int64_t{start} + m_dialog.EstimatedSeconds;
    progress::frmCallback& progress = m_dialog.Callback1();
    progress.HideProgressBar(2, "Download started at " + TimeOfDayText(start) + std::string(CrLf) +
                                    "Estimated completion at " + TimeOfDayText(end));
    progress.SetWaitMessage(2, "Downloading waveform to the instrument...");
}

std::optional<Error> WaveformTransfer::Send(bool interleaved) {
    const DacCodes& codes = m_dialog.Codes;
    ports::Clock& clock = m_dialog.Services().clock;
    const std::string name = DestinationName();
    const std::uint64_t startMs = clock.TickCountMs();
    auto failure = FailureOf([&] {
        const auto arb = RequireArb(m_dialog.instrServer);
        if (interleaved) {
            SendInterleaved(*arb, name);
        } else if (m_dialog.Data.UseQData) {
            Expect(m_expected.codes, codes.IDacData.Span());
            Expect(m_expected.qCodes, codes.QDacData.Span());
            arb->DownloadIQ(name, codes.IDacData.Span(), codes.QDacData.Span(), 0);
        } else {
            Expect(m_expected.codes, codes.IDacData.Span());
            arb->DownloadIQ(name, codes.IDacData.Span(), {}, 0);
        }
    });
    m_dialog.LastRun.transferMs = static_cast<std::int64_t>(clock.TickCountMs() - startMs);
    return failure;
}

void WaveformTransfer::SendInterleaved(ports::ArbWaveform& arb, const std::string& name) {
    const DacCodes& codes = m_dialog.Codes;
    if (m_dialog.Data.UseQData) {
        SendBothInterleaved(arb, name);
    } else {
        Expect(m_expected.codes, codes.IDacData.Span());
        arb.DownloadInterleaved(name, codes.IDacData.Span(), 0);
    }
    Expect(m_expected.markers, codes.MarkerDacData.Span());
    arb.DownloadMarkers(name, codes.MarkerDacData.Span(), 0);
}

// While the array is sent the channels are nowhere else; afterwards they are in their places again.
void WaveformTransfer::SendBothInterleaved(ports::ArbWaveform& arb, const std::string& name) {
    DacCodes& codes = m_dialog.Codes;
    const std::size_t iCount = codes.IDacData.Size();
    const std::size_t qCount = codes.QDacData.Size();
    SampleBuffer<std::int16_t> interleaved =
        InterleaveCodes(codes.IDacData, codes.QDacData, ZeroCode(codes.IsNewModel));
    Expect(m_expected.codes, interleaved.Span());
    const auto separate = [&] {
        SeparateCodes channels = SeparateInterleaved(interleaved, iCount, qCount);
        codes.IDacData = std::move(channels.iCodes);
        codes.QDacData = std::move(channels.qCodes);
    };
    try {
        arb.DownloadInterleaved(name, interleaved.Span(), 0);
    } catch (...) {
        separate();
        throw;
    }
    separate();
}

void WaveformTransfer::Warn(const std::string& text) {
    m_dialog.ShowMessage(text, ports::MessageIcon::Exclamation);
}

}  // namespace krv::waveform
