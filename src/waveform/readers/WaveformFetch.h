// WaveformFetch: the fetch step of a run, which decides what must be read again and reads it.
#pragma once

namespace krv {

class frmDataTransfer;

class WaveformFetch {
 public:
    explicit WaveformFetch(frmDataTransfer& dialog) : m_dialog(dialog) {}

    // True when all needed data is in the dialog's Data. A failure has been shown to the user, a
    // cancel has not; in both cases nothing that failed is marked loaded.
    bool Run();

 private:
    frmDataTransfer& m_dialog;
};

}  // namespace krv
