#include "waveform/dialog/Layout.h"

#include <string>

#include "waveform/dialog/frmDataTransfer.h"

namespace krv::waveform {
namespace {

using forms::Place;

constexpr Place FormPlace{0, 0, 8400, 6780};

constexpr const char* WaveformTypeTip =
    "Select the waveform type.  Includes scalable waveform, M771XB internal values, and M7718C "
    "internal values.";
constexpr const char* RangeTip =
    "Enter the desired Excel Spreadsheet cell range, or highlight the desired cells in your Excel "
    "Spreadsheet.  Then use the 'Capture Button' to paste it into this data range box.";

// The columns that the frames share: labels from 180, boxes from 1380, browse buttons from 5400,
// counts from 6480.
void LayOutFilePage(frmDataTransfer& dialog) {
    dialog.frameFileFolders.LayOut({120, 120, 8160, 2580}, "Waveforms");
    dialog.labelSource.LayOut({180, 330, 1140, 195}, "Source");
    dialog.optSpreadsheet.LayOut({1380, 300, 1500, 255}, "Spreadsheet");
    dialog.optFileFolders.LayOut({3000, 300, 1500, 255}, "File Folders");
    dialog.labelFileType.LayOut({180, 720, 1140, 195}, "File type");
    dialog.cboFileTypeWF.LayOut(
        {1380, 660, 2520, 315},
        "Select the file type.  Includes ASCII, Binary (Little Endian), Binary (Big Endian).");
    dialog.labelType.LayOut({4560, 720, 660, 195}, "Type");
    dialog.cboWaveformType.LayOut({5400, 660, 2580, 315}, WaveformTypeTip);
    dialog.labelNumberOfPoints.LayOut({6480, 1110, 1500, 195}, "Number of points");
    dialog.labelIFileName.LayOut({180, 1410, 1140, 195}, "I File name");
    dialog.TextIFileName.LayOut(
        {1380, 1350, 3900, 315},
        "Enter the file containing the waveform data for the I data points or I and Q "
        "(interleaved) data points for M7718C.");
    dialog.cmdIBrowse.LayOut({5400, 1335, 960, 345}, "Browse...", "Browse I data files.");
    dialog.textISize.LayOut({6480, 1350, 1500, 315}, "Displays the number of I data points.");
    dialog.labelQFileName.LayOut({180, 1830, 1140, 195}, "Q File name");
    dialog.TextQFileName.LayOut(
        {1380, 1770, 3900, 315},
        "Enter the file containing the waveform data for the Q  data points. ");
    dialog.cmdQBrowse.LayOut({5400, 1755, 960, 345}, "Browse...", "Browse Q data files.");
    dialog.textQSize.LayOut({6480, 1770, 1500, 315}, "Displays the number of Q data points.");
    dialog.checkAutoFindQ.LayOut(
        {1380, 2190, 3900, 255}, "Auto find Q - file name",
        "Auto Finds Q-File name.  File name format matches the I file name.");
}

void LayOutSpreadsheetPage(frmDataTransfer& dialog) {
    dialog.frameSpreadSheet.LayOut({120, 120, 8160, 2580}, "Waveform");
    dialog.labelSourceSS.LayOut({180, 330, 1140, 195}, "Source");
    dialog.optSpreadSheetSS.LayOut({1380, 300, 1500, 255}, "Spreadsheet");
    dialog.optFileFoldersSS.LayOut({3000, 300, 1500, 255}, "File Folders");
    dialog.labelFileTypeSS.LayOut({180, 720, 1140, 195}, "File type");
    dialog.cboFileTypeWFSS.LayOut(
        {1380, 660, 2520, 315},
        "Select the file format type.  Includes ASCII, Windows binary, or Unix binary.");
    dialog.labelTypeSS.LayOut({4560, 720, 660, 195}, "Type");
    dialog.cboWaveformTypeSS.LayOut({5400, 660, 2580, 315}, WaveformTypeTip);
    dialog.labelDataRange.LayOut({1380, 1110, 3900, 195}, "Data range");
    dialog.labelNumberOfPointsSS.LayOut({6480, 1110, 1500, 195}, "Number of points");
    dialog.labelIData.LayOut({180, 1410, 1140, 195}, "I-Data");
    dialog.textIRange.LayOut({1380, 1350, 3900, 315}, RangeTip);
    dialog.CommandCaptureSelectionI.LayOut(
        {5400, 1335, 435, 345}, "",
        "Capture cell range you entered in the Data Range, or the highlighted cells from your "
        "Excel Spreadsheet");
    dialog.textINumberPoints.LayOut(
        {6480, 1350, 1500, 315},
        "Displays the number of I data points in a selected block of cells.");
    dialog.labelQData.LayOut({180, 1830, 1140, 195}, "Q-Data");
    dialog.textQRange.LayOut({1380, 1770, 3900, 315}, RangeTip);
    dialog.CommandCaptureSelectionQ.LayOut(
        {5400, 1755, 435, 345}, "",
        "Capture cell range you entered in the data range, or the highlighted cells from your "
        "Excel Spreadsheet.");
    dialog.textQNumberPoints.LayOut(
        {6480, 1770, 1500, 315},
        "Displays the number of Q data points in a selected block of cells.");
    dialog.Check1.LayOut({1380, 2190, 3900, 255}, "Auto find Q - file name");
}

void LayOutMarkers(frmDataTransfer& dialog) {
    dialog.FrameDataFormat.LayOut({120, 2820, 8160, 1980}, "Markers");
    dialog.chkMarkerSource.LayOut({180, 300, 3000, 255}, "User Marker File:");
    dialog.labelMarkerNumberOfPoints.LayOut({6480, 360, 1500, 195}, "Number of points");
    dialog.labelMarkerFile.LayOut({180, 660, 1140, 195}, "Marker file");
    dialog.TextMarker.LayOut({1380, 600, 3900, 315}, "Marker file input box.");
    dialog.cmdMarkerBrowse.LayOut({5400, 585, 960, 345}, "Browse...", "Browse for a marker file.");
    dialog.TextMarkerFileNumPoints.LayOut({6480, 600, 1500, 315},
                                          "Displays the number of markers in the file.");
    dialog.checkAutoFindMarker.LayOut({1380, 1020, 3900, 255}, "Auto find marker - file name");
    dialog.labelMarkerStart.LayOut(
        {180, 1500, 1140, 195}, "Marker start",
        "Specifies the starting point, relative to the scalable waveform data, where a marker "
        "pulse will be placed.");
    dialog.TextMarkerStart.LayOut(
        {1380, 1440, 1500, 315},
        "Enter the desired starting point, relative to the scalable waveform data, where a marker "
        "pulse will be placed.");
    dialog.labelMarkerLength.LayOut(
        {3120, 1500, 600, 195}, "Length",
        "Specifies the width, in points, of your desired marker pulse.  Specify zero to omit the "
        "marker pulse.");
    dialog.TextMarkerLength.LayOut(
        {3780, 1440, 1500, 315},
        "Enter the width, in points, of your desired marker pulse.  Specify zero to omit the "
        "marker pulse.");
}

void LayOutDestination(frmDataTransfer& dialog) {
    dialog.frameDestination.LayOut({120, 4920, 8160, 1200}, "KRV Destination");
    dialog.labelScaleFactor.LayOut(
        {180, 360, 1140, 195}, "Scale factor",
        "Scales input waveform to this percentage of the full output range of the KRV");
    dialog.TextScaleFactor.LayOut({1380, 300, 1500, 315},
                                  "Enter a scaling percentage value for the waveform.");
    dialog.labelFileName.LayOut({180, 780, 1140, 195}, "File name");
    dialog.TextDestinationName.LayOut(
        {1380, 720, 3900, 315}, "Enter the name of the destination file inside the instrument.");
    dialog.checkAutoName.LayOut({5400, 750, 2580, 255}, "Auto name",
                                "Auto names the file name in the instrument if selected.");
}

void LayOutButtons(frmDataTransfer& dialog) {
    dialog.CommandValidate.LayOut(
        {2160, 6255, 1620, 390}, "Validate Files",
        "Reads the input files, counts the points, and validates the data.  Does not initate "
        "download.");
    dialog.cmdDownload.LayOut({3900, 6255, 1620, 390}, "Start Download",
                              "Initates download to the instrument");
    dialog.cmdCancel.LayOut({5640, 6255, 1260, 390}, "Cancel");
    dialog.CommandHelp.LayOut({7020, 6255, 1260, 390}, "Help");
}

void FillLists(frmDataTransfer& dialog) {
    dialog.cboFileTypeWF.Items = {"ASCII", "Binary (Little Endian)", "Binary (Big Endian)"};
    dialog.cboFileTypeWFSS.Items = {"ASCII", "Binary-Little Endian", "Binary-Big Endian"};
    dialog.cboWaveformType.Items = {"Waveform", "14-bit internal values", "16-bit internal values"};
    dialog.cboWaveformTypeSS.Items = {"Waveform", "14-bit internal values",
                                      "16-bit  internal values"};
    for (forms::ComboBox* combo : {&dialog.cboFileTypeWF, &dialog.cboFileTypeWFSS,
                                   &dialog.cboWaveformType, &dialog.cboWaveformTypeSS}) {
        combo->ListIndex = 0;
    }
}

void SetBrowseDialogs(frmDataTransfer& dialog) {
    dialog.commondialogIBrowse.DialogTitle = "Browse for I - File Name";
    dialog.commondialogQBrowse.DialogTitle = "Browse for Q - File Name";
    dialog.commondialogMarkerBrowse.DialogTitle = "Browse for Marker File Name";
    for (forms::CommonDialog* browse : {&dialog.commondialogIBrowse, &dialog.commondialogQBrowse,
                                        &dialog.commondialogMarkerBrowse}) {
        browse->Filter = "ASCII (*.asc;*.txt)|*.asc;*.txt|Binary (*.bin)|*.bin|All files (*.*)|*.*";
    }
}

void SetDesignValues(frmDataTransfer& dialog) {
    for (forms::TextBox* display : {&dialog.textISize, &dialog.textQSize, &dialog.textINumberPoints,
                                    &dialog.textQNumberPoints, &dialog.TextMarkerFileNumPoints}) {
        display->Locked = true;
        display->TabStop = false;
        display->BackColor = forms::SystemColor::ButtonFace;
    }
    dialog.optFileFolders.Value = true;
    dialog.optFileFoldersSS.Value = true;
    dialog.frameSpreadSheet.Visible = false;
    dialog.checkAutoFindQ.Value = true;
    dialog.checkAutoName.Value = true;
    dialog.TextScaleFactor.Text = "100";
    dialog.TextMarkerStart.Text = "0";
    dialog.TextMarkerLength.Text = "0";
    dialog.cmdDownload.IsDefault = true;
    dialog.cmdCancel.IsCancel = true;
}

}  // namespace

void LayOutPreviewButton(forms::CommandButton& button) {
    button.LayOut(
        {780, 6255, 1260, 390}, "Preview",
        "Shows the waveform as the instrument will play it.  Does not initiate download.");
}

void ApplyLayout(frmDataTransfer& dialog) {
    dialog.Caption = frmDataTransfer::Title;
    dialog.Place = FormPlace;
    LayOutFilePage(dialog);
    LayOutSpreadsheetPage(dialog);
    LayOutMarkers(dialog);
    LayOutDestination(dialog);
    LayOutButtons(dialog);
    FillLists(dialog);
    SetBrowseDialogs(dialog);
    SetDesignValues(dialog);
}

}  // namespace krv::waveform
