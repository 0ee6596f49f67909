#include "waveform/dialog/SourcePages.h"

#include "waveform/dialog/BoxLooks.h"
#include "waveform/dialog/frmDataTransfer.h"

namespace krv::waveform {

void SourcePages::SourceClicked(bool spreadsheet) {
    frmDataTransfer& dialog = m_dialog;
    (spreadsheet ? dialog.optSpreadsheet : dialog.optFileFolders).Value = true;
    (spreadsheet ? dialog.optSpreadSheetSS : dialog.optFileFoldersSS).Value = true;
    (spreadsheet ? dialog.cboWaveformTypeSS : dialog.cboWaveformType).ListIndex =
        (spreadsheet ? dialog.cboWaveformType : dialog.cboWaveformTypeSS).ListIndex.Get();
    dialog.TextScaleFactor.Enabled = true;
    dialog.frameFileFolders.Visible = !spreadsheet;
    dialog.frameSpreadSheet.Visible = spreadsheet;
    (spreadsheet ? dialog.frameSpreadSheet : dialog.frameFileFolders).Refresh();
}

void SourcePages::WaveformTypeClicked() {
    const int index = m_dialog.cboWaveformType.ListIndex;
    const bool scalable = index < WaveformTypeIndex::Internal14;
    if (scalable) {
        m_dialog.cboFileTypeWF.ListIndex = FileTypeIndex::Ascii;
    }
    m_dialog.cboFileTypeWF.Enabled = !scalable;
    if (index == WaveformTypeIndex::Internal16) {
        RefuseSeparateQFile();
    } else {
        AllowSeparateQFile(index);
    }
    m_dialog.cboWaveformTypeSS.ListIndex = index;
}

void SourcePages::RefuseSeparateQFile() {
    // Clearing the check box hands the box and its button back to the user: it comes first.
    m_dialog.checkAutoFindQ.Value = false;
    m_dialog.checkAutoFindQ.Enabled = false;
    m_dialog.TextQFileName.Enabled = false;
    m_dialog.TextQFileName.Text = "";
    Paint(m_dialog.TextQFileName, false);
    m_dialog.cmdQBrowse.Enabled = false;
    Paint(m_dialog.cmdQBrowse, false);
}

void SourcePages::AllowSeparateQFile(int waveformType) {
    m_dialog.TextQFileName.Enabled = true;
    m_dialog.checkAutoFindQ.Enabled = true;
    m_dialog.checkAutoFindQ.Value = true;
    Paint(m_dialog.TextQFileName, waveformType != WaveformTypeIndex::Internal14);
}

void SourcePages::WaveformTypeSSClicked() {
    const int index = m_dialog.cboWaveformTypeSS.ListIndex;
    m_dialog.cboWaveformType.ListIndex = index;
    const bool separateQ = index != WaveformTypeIndex::Internal16;
    if (!separateQ) {
        m_dialog.textQRange.Text = "";
    }
    m_dialog.textQRange.Enabled = separateQ;
    Paint(m_dialog.textQRange, separateQ);
    m_dialog.CommandCaptureSelectionQ.Enabled = separateQ;
}

void SourcePages::RepeatFileSettings() {
    m_dialog.cboFileTypeWFSS.Enabled = false;
    m_dialog.cboFileTypeWFSS.ListIndex = m_dialog.cboFileTypeWF.ListIndex.Get();
    m_dialog.Check1.Enabled = false;
    m_dialog.Check1.Value = m_dialog.checkAutoFindQ.Value.Get();
}

}  // namespace krv::waveform
