// WaveformConversion: the check step of a run, from raw values or cells to DAC codes.
#pragma once

namespace krv {

class frmDataTransfer;

class WaveformConversion {
 public:
    explicit WaveformConversion(frmDataTransfer& dialog) : m_dialog(dialog) {}

    // True when the dialog's Codes are ready. A violated rule, a bad value, a declined warning or a
    // cancel gives false; the dialog's raw data stays as it was.
    bool Run();

 private:
    frmDataTransfer& m_dialog;
};

}  // namespace krv
