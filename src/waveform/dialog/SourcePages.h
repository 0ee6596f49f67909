// SourcePages: the file page and the spreadsheet page, which occupy one place and agree in their
// source and waveform type.
#pragma once

namespace krv::waveform {

class frmDataTransfer;

class SourcePages {
 public:
    explicit SourcePages(frmDataTransfer& dialog) : m_dialog(dialog) {}

    // An option button of either page has been set.
    void SourceClicked(bool spreadsheet);

    // A waveform type box has been set; each brings the other page's box in step.
    void WaveformTypeClicked();
    void WaveformTypeSSClicked();

    // What the spreadsheet page only repeats, since cells have neither file type nor file name.
    void RepeatFileSettings();

 private:
    void AllowSeparateQFile(int waveformType);
    void RefuseSeparateQFile();

    frmDataTransfer& m_dialog;
};

}  // namespace krv::waveform
