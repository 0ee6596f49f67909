// DownloadRun: the order of steps and messages of a download or of a validation, inside the
// progress dialog's activation.
//
// A step that fails or is cancelled ends the run; it has shown why. What the instrument or the
// connection throws goes on to the caller as Error.
#pragma once

#include <cstdint>

namespace krv::progress {
class frmCallback;
}

namespace krv::waveform {

class frmDataTransfer;

class DownloadRun {
 public:
    explicit DownloadRun(frmDataTransfer& dialog);

    // The whole run; sets the dialog's RunSucceeded and LastRun.
    void Run();
    // Validation, reading and checks alone, with the overall progress bar: the run's first steps.
    bool Prepare();
    // Works out the transfer time; a validation shows it, a download asks for consent where it is
    // long. False when the user has cancelled or declined.
    bool EstimateDownloadTime(bool download);

 private:
    void BeginProgress();
    void ShowOverall(std::int32_t value);
    [[nodiscard]] const char* ProgressCaption() const;
    bool CheckDualArbOption();
    bool Download();

    frmDataTransfer& m_dialog;
    progress::frmCallback& m_progress;
};

}  // namespace krv::waveform
