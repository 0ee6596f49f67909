#include "waveform/run/DownloadRun.h"

#include <optional>
#include <utility>

#include "common/Text.h"
#include "waveform/checks/WaveformConversion.h"
#include "waveform/readers/WaveformFetch.h"
#include "waveform/run/Connection.h"
#include "waveform/run/TimeEstimate.h"
#include "waveform/run/WaveformTransfer.h"

namespace krv::waveform {

void BeginRun(SourceKind source, RunMode mode, RunProgress& progress) {
    const bool download = mode == RunMode::Download;
    const std::string verb = download ? "Download " : "Validate ";
    progress.Begin("KRV -- " + verb + (source == SourceKind::Files ? "Files" : "Data"), download);
    progress.ShowMessage("Preliminary validation...");
    progress.ShowProgress(100, 50);
}

bool DownloadRun::Run() {
    if (!Prepare()) {
        return false;
    }
    RunProgress& progress = m_services.progress;
    if (m_plan.mode == RunMode::Convert) {
        return !progress.TestCancelFlag();
    }
    const bool download = m_plan.mode == RunMode::Download;
    if (download && !CheckDualArbOption()) {
        return false;
    }
    progress.ShowOverall(RunProgress::ValidationEnd);
    if (!EstimateDownloadTime(m_plan, m_results.codes, m_services, m_results.record) ||
        (download && !Download())) {
        return false;
    }
    progress.ClearOverall();
    return true;
}

bool DownloadRun::Prepare() {
    RunProgress& progress = m_services.progress;
    ports::Clock& clock = m_services.desktop.clock;
    // The codes of an earlier run make room, and none is left to be sent by mistake.
    m_results.codes = {};
    progress.ShowOverall(RunProgress::ReadingStart);
    const auto startMs = clock.TickCountMs();
    if (!FetchWaveformData(m_plan, m_services, m_results.data)) {
        return false;
    }
    const auto readMs = clock.TickCountMs();
    m_results.record.readMs = static_cast<std::int64_t>(readMs - startMs);
    progress.ShowOverall(RunProgress::CheckingStart);
    const auto link = progress.LinkChecks();
    auto codes = CheckAndConvertWaveform(m_plan, m_results.data, m_services);
    if (!codes) {
        return false;
    }
    m_results.codes = std::move(*codes);
    m_results.record.convertMs = static_cast<std::int64_t>(clock.TickCountMs() - readMs);
    return true;
}

bool DownloadRun::CheckDualArbOption() {
    m_services.progress.ShowOverall(RunProgress::ValidationEnd);
    // Without a session, or from another one, the instrument would seem to lack the option.
    RequireSameInstrument(m_plan.instrument);
    if (RequireArb(*m_plan.instrument.server)->HasDualArbOption()) {
        return true;
    }
    m_services.user.Tell("Option R2X (Dual Arbitrary Waveform Generator) is not installed.",
                         ports::MessageIcon::None);
    return false;
}

bool DownloadRun::Download() {
    RunProgress& progress = m_services.progress;
    progress.ShowOverall(RunProgress::ValidationEnd);
    WaveformTransfer transfer(m_plan, m_services, m_results.codes, m_results.record);
    if (!transfer.CheckDestinationAndTransfer()) {
        return false;
    }
    progress.ShowOverall(RunProgress::DownloadEnd);
    progress.ShowMessage("Downloading waveform to the instrument...");
    progress.ShowProgress(1000, 1000);
    const std::string verified = transfer.VerifiedText();
    const std::string end = verified.empty() ? verified : std::string(CrLf) + verified;
    m_services.user.Tell(std::string(DownloadComplete) + end, ports::MessageIcon::None);
    return true;
}

}  // namespace krv::waveform
