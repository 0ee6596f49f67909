#include "waveform/run/DownloadRun.h"

#include "common/Text.h"
#include "common/progress/ProgressLink.h"
#include "waveform/dialog/frmDataTransfer.h"
#include "waveform/run/Connection.h"
#include "waveform/run/TimeEstimate.h"
#include "waveform/run/WaveformTransfer.h"

namespace krv::waveform {
namespace {

// The ends of the overall progress bar and the places on it where each phase begins.
constexpr std::int32_t ReadingStart = 100;
constexpr std::int32_t CheckingStart = 500;
constexpr std::int32_t ValidationEnd = 600;
constexpr std::int32_t DownloadEnd = 1000;

// A download that is over sooner starts without asking.
constexpr std::int32_t SecondsWorthAsking = 11;

}  // namespace

DownloadRun::DownloadRun(frmDataTransfer& dialog)
    : m_dialog(dialog), m_progress(dialog.Callback1()) {}

void DownloadRun::Run() {
    const bool download = m_dialog.DownloadMode;
    if (!Prepare() || (download && !CheckDualArbOption())) {
        return;
    }
    ShowOverall(ValidationEnd);
    if (!EstimateDownloadTime(download) || (download && !Download())) {
        return;
    }
    m_progress.ClearWaitMessage(1);
    m_dialog.RunSucceeded = true;
}

bool DownloadRun::Prepare() {
    BeginProgress();
    if (!m_dialog.ValidateDownloadInputs()) {
        m_progress.ClearWaitMessage(2);
        return false;
    }
    ShowOverall(ReadingStart);
    ports::Clock& clock = m_dialog.Services().clock;
    const auto startMs = clock.TickCountMs();
    if (!m_dialog.FetchWaveformData()) {
        return false;
    }
    const auto readMs = clock.TickCountMs();
    m_dialog.LastRun.readMs = static_cast<std::int64_t>(readMs - startMs);
    ShowOverall(CheckingStart);
    const progress::ProgressLink link(m_progress, 2, CheckingStart, ValidationEnd);
    if (!m_dialog.CheckAndConvertWaveform()) {
        return false;
    }
    m_dialog.LastRun.convertMs = static_cast<std::int64_t>(clock.TickCountMs() - readMs);
    return true;
}

void DownloadRun::BeginProgress() {
    m_progress.SetFormCaption(ProgressCaption());
    m_dialog.OverallMax = m_dialog.DownloadMode ? DownloadEnd : ValidationEnd;
    m_progress.SetWaitMessage(1, "Overall progress...");
    ShowOverall(0);
    m_progress.SetWaitMessage(2, "Preliminary validation...");
    m_progress.SetProgressBar(2, 0, 100, 50);
}

void DownloadRun::ShowOverall(std::int32_t value) {
    m_progress.SetProgressBar(1, 0, m_dialog.OverallMax, value);
}

const char* DownloadRun::ProgressCaption() const {
    if (m_dialog.optFileFolders.Value) {
        return m_dialog.DownloadMode ? "KRV -- Download Files" : "KRV -- Validate Files";
    }
    return m_dialog.DownloadMode ? "KRV -- Download Data" : "KRV -- Validate Data";
}

bool DownloadRun::CheckDualArbOption() {
    ShowOverall(ValidationEnd);
    // Without a session the instrument would seem to lack the option.
    static_cast<void>(RequireSession(m_dialog.instrServer));
    if (RequireArb(m_dialog.instrServer)->HasDualArbOption()) {
        return true;
    }
    m_dialog.ShowMessage("Option R2X (Dual Arbitrary Waveform Generator) is not installed.",
                         ports::MessageIcon::None);
    return false;
}

bool DownloadRun::EstimateDownloadTime(bool download) {
    m_progress.SetWaitMessage(2, "Estimating download time...");
    m_progress.SetProgressBar(2, 0, 100, 50);
    if (m_progress.TestCancelFlag()) {
        return false;
    }
    const TransferRate rate = ReadTransferRate(*RequireSession(m_dialog.instrServer));
    if (rate.IsKnown()) {
        const DacCodes& codes = m_dialog.Codes;
        const std::size_t qPoints = m_dialog.Data.UseQData ? codes.QDacData.Size() : 0;
        m_dialog.EstimatedSeconds = EstimateSeconds(codes.IDacData.Size() + qPoints, rate);
        m_dialog.LastRun.estimatedSeconds = m_dialog.EstimatedSeconds;
    }
    const bool isShort = rate.IsKnown() && m_dialog.EstimatedSeconds < SecondsWorthAsking;
    if (m_progress.TestCancelFlag()) {
        return false;
    }
    const std::string text =
        EstimateText(rate, m_dialog.EstimatedSeconds, m_dialog.Services().numberFormat);
    if (!download) {
        m_dialog.ShowMessage(text, ports::MessageIcon::None);
        return true;
    }
    return isShort || m_dialog.ShowMessage(
                          text + std::string(CrLf) + std::string(CrLf) + "Do you want to continue?",
                          ports::MessageIcon::Exclamation,
                          ports::MessageButtons::YesNo) == ports::MessageAnswer::Yes;
}

bool DownloadRun::Download() {
    ShowOverall(ValidationEnd);
    WaveformTransfer transfer(m_dialog);
    if (!transfer.CheckDestinationAndTransfer()) {
        return false;
    }
    ShowOverall(DownloadEnd);
    m_progress.SetWaitMessage(2, "Downloading waveform to the instrument...");
    m_progress.SetProgressBar(2, 0, 1000, 1000);
    const std::string verified = transfer.VerifiedText();
    m_dialog.ShowMessage(
        "Download complete." + (verified.empty() ? verified : std::string(CrLf) + verified),
        ports::MessageIcon::None);
    return true;
}

}  // namespace krv::waveform
