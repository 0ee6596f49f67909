#include "waveform/frmDataTransfer.h"

#include "waveform/checks/WaveformConversion.h"
#include "waveform/readers/WaveformFetch.h"

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
void frmDataTransfer::UpdateValidateCaption() {}
void frmDataTransfer::WatchFiles() {}

void frmDataTransfer::OnLoad() {
    static_cast<void>(m_runningApplications);
}
void frmDataTransfer::OnActivate() {}
bool frmDataTransfer::OnKeyDown(int, bool, bool, bool) {
    return false;
}
}  // namespace krv
