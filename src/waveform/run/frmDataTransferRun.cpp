// The part of the download dialog that starts runs and is called back by the progress dialog.
#include "common/Text.h"
#include "waveform/dialog/frmDataTransfer.h"
#include "waveform/run/Connection.h"
#include "waveform/run/DownloadRun.h"
#include "waveform/run/Failure.h"

namespace krv::waveform {
namespace {

// Whatever ends a showing of the progress dialog, nobody stays registered with it.
class Registration {
 public:
    Registration(progress::frmCallback& progress, progress::CallbackWork& owner)
        : m_progress(progress) {
        m_progress.SetCallbackID(1);
        m_progress.CallbackOwner = &owner;
    }
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;
    ~Registration() {
        m_progress.SetCallbackID(0);
        m_progress.CallbackOwner = nullptr;
    }

 private:
    progress::frmCallback& m_progress;
};

}  // namespace

bool frmDataTransfer::StartRun(bool download) {
    return RunUnderProgress(download, false);
}

bool frmDataTransfer::StartConversion() {
    return RunUnderProgress(false, true);
}

bool frmDataTransfer::RunUnderProgress(bool download, bool convertOnly) {
    if (m_progress.IsModal()) {
        return false;
    }
    RunSucceeded = false;
    DownloadMode = download;
    m_convertOnly = convertOnly;
    LastRun = {};
    m_progress.Load();
    // A dialog that shows some message modeless could not be shown modal.
    m_progress.Hide();
    const Registration registration(m_progress, *this);
    m_progress.ShowModal();
    return RunSucceeded;
}

void frmDataTransfer::RunDownload() {
    const auto failure = FailureOf([this] {
        if (m_convertOnly) {
            RunSucceeded = PrepareWaveform() && !m_progress.TestCancelFlag();
        } else {
            DownloadRun(*this).Run();
        }
    });
    if (failure && !failure->IsCancel()) {
        ShowMessage(failure->Description(), ports::MessageIcon::Exclamation);
    }
}

bool frmDataTransfer::PrepareWaveform() {
    return DownloadRun(*this).Prepare();
}

std::string frmDataTransfer::ConnectedModel() {
    return std::string(TrimBlanks(RequireServer(instrServer).Instrument()->Model()));
}

ports::MessageAnswer frmDataTransfer::ShowMessage(const std::string& text, ports::MessageIcon icon,
                                                  ports::MessageButtons buttons) {
    return m_desktop.messageBoxes.Show({text, Caption, icon, buttons});
}

}  // namespace krv::waveform
