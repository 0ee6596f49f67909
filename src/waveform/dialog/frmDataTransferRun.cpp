// The part of the download dialog that starts runs and is called back by the progress dialog.
#include <utility>

#include "common/ErrorTrap.h"
#include "common/ScopeExit.h"
#include "common/Text.h"
#include "hosts/OfficeProcedures.h"
#include "waveform/dialog/FormReading.h"
#include "waveform/dialog/frmDataTransfer.h"
#include "waveform/run/Connection.h"
#include "waveform/run/DownloadRun.h"

namespace krv::waveform {

bool frmDataTransfer::StartRun(bool download) {
    return RunUnderProgress(download ? RunMode::Download : RunMode::Validate);
}

bool frmDataTransfer::StartConversion() {
    return RunUnderProgress(RunMode::Convert);
}

bool frmDataTransfer::RunUnderProgress(RunMode mode) {
    if (m_progress.IsModal()) {
        return false;
    }
    RunSucceeded = false;
    m_mode = mode;
    DownloadMode = mode == RunMode::Download;
    const std::int32_t expectedSeconds = LastRun.expectedSeconds;
    LastRun = {};
    LastRun.expectedSeconds = expectedSeconds;
    m_progress.Load();
    // A dialog that shows some message modeless could not be shown modal.
    m_progress.Hide();
    m_progress.SetCallbackID(1);
    m_progress.CallbackOwner = this;
    const ScopeExit unregister([this] {
        m_progress.SetCallbackID(0);
        m_progress.CallbackOwner = nullptr;
    });
    m_progress.ShowModal();
    return RunSucceeded;
}

void frmDataTransfer::RunDownload() {
    const auto failure = FailureOf([this] { RunSucceeded = Run(); });
    if (failure && !failure->IsCancel()) {
        Tell(failure->Description(), ports::MessageIcon::Critical);
    }
}

bool frmDataTransfer::Run() {
    // Held, since others may put another in the dialog's hands while the run lets events through.
    const auto server = instrServer;
    const auto excel = m_excel;
    const auto session = server ? hosts::LiveSession(*server) : nullptr;
    const ScopeExit leave([&] { hosts::ReturnToLocal(session); });
    RunProgress progress(m_progress);
    BeginRun(SourceOf(*this), m_mode, progress);
    const auto plan = ValidateDownloadInputs(m_mode);
    if (!plan) {
        progress.ClearPhase();
        return false;
    }
    const RunServices services{m_desktop, progress, *this, excel.get()};
    return DownloadRun(*plan, services, {Data, Codes, LastRun}).Run();
}

std::optional<DownloadPlan> frmDataTransfer::ValidateDownloadInputs(RunMode mode) {
    InstrumentInUse instrument;
    try {
        instrument = TakeInstrument(instrServer);
    } catch (const Error& error) {
        Tell("The instrument's model could not be read." + std::string(CrLf) + error.Description(),
             ports::MessageIcon::Exclamation);
        return std::nullopt;
    }
    IQInterleaved = instrument.isNewModel;
    UseQData = !(optFileFolders.Value ? PathIn(TextQFileName.Text.Get())
                                      : TrimBlanks(textQRange.Text.Get()))
                    .empty();
    const std::string_view failure = FirstInputFailure(ReadInputs(*this));
    if (!failure.empty()) {
        Tell(std::string(failure), ports::MessageIcon::Exclamation);
        return std::nullopt;
    }
    return ReadPlan(*this, mode, std::move(instrument));
}

void frmDataTransfer::ShowCount(ChannelRole channel, std::int32_t count) {
    forms::TextBox& box = channel == ChannelRole::I   ? textISize
                          : channel == ChannelRole::Q ? textQSize
                                                      : TextMarkerFileNumPoints;
    box.Text = std::to_string(count);
}

ports::MessageAnswer frmDataTransfer::Tell(const std::string& text, ports::MessageIcon icon,
                                           ports::MessageButtons buttons) {
    return m_desktop.messageBoxes.Show({text, Caption, icon, buttons});
}

}  // namespace krv::waveform
