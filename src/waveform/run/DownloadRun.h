// DownloadRun: the order of steps and messages of a download or of a validation, inside the
// progress dialog's activation.
#pragma once

namespace krv {

class frmDataTransfer;

class DownloadRun {
 public:
    explicit DownloadRun(frmDataTransfer& dialog) : m_dialog(dialog) {}

    // The whole run; sets the dialog's RunSucceeded and LastRun.
    void Run();
    // Validation, reading and checks alone, with the overall progress bar: the run's first steps.
    bool Prepare();

 private:
    frmDataTransfer& m_dialog;
};

}  // namespace krv
