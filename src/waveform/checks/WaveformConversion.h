// WaveformConversion: the check step of a run, from raw values or cells to DAC codes.
#pragma once

#include "waveform/checks/PointCountRules.h"

namespace krv::waveform {

class frmDataTransfer;

class WaveformConversion {
 public:
    explicit WaveformConversion(frmDataTransfer& dialog) : m_dialog(dialog) {}

    // True when the dialog's Codes are ready. A violated rule, a bad value, a declined warning or a
    // cancel gives false and leaves no codes; the dialog's raw data stays as it was. All but a
    // cancel have been shown to the user.
    bool Run();

 private:
    bool CheckAndConvert();
    // Sources, type and counts as the dialog's controls and data have them.
    [[nodiscard]] PointCounts CollectCounts();
    // Shows what the rules have to say; true when the run may go on.
    bool RulesAllow(const PointCounts& counts);

    frmDataTransfer& m_dialog;
};

}  // namespace krv::waveform
