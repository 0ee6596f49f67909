#include "waveform/frmDataTransfer.h"

#include "common/Text.h"
#include "waveform/checks/WaveformConversion.h"
#include "waveform/readers/WaveformFetch.h"
#include "waveform/run/DownloadRun.h"

namespace krv {

frmDataTransfer::frmDataTransfer(const desktop::Desktop& desktop,
                                 office::RunningApplications* runningApplications)
    : Form("frmDataTransfer", desktop.screen),
      commondialogIBrowse(*this, "commondialogIBrowse", desktop.fileDialogs),
      commondialogQBrowse(*this, "commondialogQBrowse", desktop.fileDialogs),
      commondialogMarkerBrowse(*this, "commondialogMarkerBrowse", desktop.fileDialogs),
      m_desktop(desktop),
      m_runningApplications(runningApplications),
      m_progress(desktop.screen, desktop.eventPump) {}

frmDataTransfer::~frmDataTransfer() = default;

bool frmDataTransfer::ValidateDownloadInputs() {
    return false;
}
bool frmDataTransfer::FetchWaveformData() {
    return WaveformFetch(*this).Run();
}
bool frmDataTransfer::CheckAndConvertWaveform() {
    return WaveformConversion(*this).Run();
}
bool frmDataTransfer::PrepareWaveform() {
    return DownloadRun(*this).Prepare();
}
bool frmDataTransfer::StartRun(bool download) {
    DownloadMode = download;
    return false;
}
bool frmDataTransfer::StartConversion() {
    return false;
}
void frmDataTransfer::UpdateValidateCaption() {}
void frmDataTransfer::WatchFiles() {}

std::string frmDataTransfer::ConnectedModel() {
    return std::string(TrimBlanks(instrServer->Instrument()->Model()));
}

desktop::MessageAnswer frmDataTransfer::ShowMessage(const std::string& text,
                                                    desktop::MessageIcon icon,
                                                    desktop::MessageButtons buttons) {
    return m_desktop.messageBoxes.Show({text, Caption, icon, buttons});
}

void frmDataTransfer::OnLoad() {
    static_cast<void>(m_runningApplications);
}
void frmDataTransfer::OnActivate() {}
bool frmDataTransfer::OnKeyDown(int, bool, bool, bool) {
    return false;
}
void frmDataTransfer::RunDownload() {
    DownloadRun(*this).Run();
}

}  // namespace krv
