#include "waveform/dialog/Layout.h"

#include <array>
#include <string>

#include "common/Error.h"
#include "waveform/dialog/frmDataTransfer.h"

namespace krv::waveform {
namespace {

using forms::Control;
using forms::ControlKind;
using forms::Place;

struct Row {
    const char* name;
    // In twips, relative to the container.
    Place place;
    const char* caption;
    const char* tip;
};

constexpr Place FormPlace{0, 0, 8400, 6780};

constexpr const char* WaveformTypeTip =
    "Select the waveform type.  Includes scalable waveform, M771XB internal values, and M7718C "
    "internal values.";
constexpr const char* RangeTip =
    "Enter the desired Excel Spreadsheet cell range, or highlight the desired cells in your Excel "
    "Spreadsheet.  Then use the 'Capture Button' to paste it into this data range box.";

// The columns that the frames share: labels from 180, boxes from 1380, browse buttons from 5400,
// counts from 6480.
constexpr std::array FilePage{
    Row{"frameFileFolders", {120, 120, 8160, 2580}, "Waveforms", ""},
    Row{"labelSource", {180, 330, 1140, 195}, "Source", ""},
    Row{"optSpreadsheet", {1380, 300, 1500, 255}, "Spreadsheet", ""},
    Row{"optFileFolders", {3000, 300, 1500, 255}, "File Folders", ""},
    Row{"labelFileType", {180, 720, 1140, 195}, "File type", ""},
    Row{"cboFileTypeWF",
        {1380, 660, 2520, 315},
        "",
        "Select the file type.  Includes ASCII, Binary (Little Endian), Binary (Big Endian)."},
    Row{"labelType", {4560, 720, 660, 195}, "Type", ""},
    Row{"cboWaveformType", {5400, 660, 2580, 315}, "", WaveformTypeTip},
    Row{"labelNumberOfPoints", {6480, 1110, 1500, 195}, "Number of points", ""},
    Row{"labelIFileName", {180, 1410, 1140, 195}, "I File name", ""},
    Row{"TextIFileName",
        {1380, 1350, 3900, 315},
        "",
        "Enter the file containing the waveform data for the I data points or I and Q "
        "(interleaved) data points for M7718C."},
    Row{"cmdIBrowse", {5400, 1335, 960, 345}, "Browse...", "Browse I data files."},
    Row{"textISize", {6480, 1350, 1500, 315}, "", "Displays the number of I data points."},
    Row{"labelQFileName", {180, 1830, 1140, 195}, "Q File name", ""},
    Row{"TextQFileName",
        {1380, 1770, 3900, 315},
        "",
        "Enter the file containing the waveform data for the Q  data points. "},
    Row{"cmdQBrowse", {5400, 1755, 960, 345}, "Browse...", "Browse Q data files."},
    Row{"textQSize", {6480, 1770, 1500, 315}, "", "Displays the number of Q data points."},
    Row{"checkAutoFindQ",
        {1380, 2190, 3900, 255},
        "Auto find Q - file name",
        "Auto Finds Q-File name.  File name format matches the I file name."},
};

constexpr std::array SpreadsheetPage{
    Row{"frameSpreadSheet", {120, 120, 8160, 2580}, "Waveform", ""},
    Row{"labelSourceSS", {180, 330, 1140, 195}, "Source", ""},
    Row{"optSpreadSheetSS", {1380, 300, 1500, 255}, "Spreadsheet", ""},
    Row{"optFileFoldersSS", {3000, 300, 1500, 255}, "File Folders", ""},
    Row{"labelFileTypeSS", {180, 720, 1140, 195}, "File type", ""},
    Row{"cboFileTypeWFSS",
        {1380, 660, 2520, 315},
        "",
        "Select the file format type.  Includes ASCII, Windows binary, or Unix binary."},
    Row{"labelTypeSS", {4560, 720, 660, 195}, "Type", ""},
    Row{"cboWaveformTypeSS", {5400, 660, 2580, 315}, "", WaveformTypeTip},
    Row{"labelDataRange", {1380, 1110, 3900, 195}, "Data range", ""},
    Row{"labelNumberOfPointsSS", {6480, 1110, 1500, 195}, "Number of points", ""},
    Row{"labelIData", {180, 1410, 1140, 195}, "I-Data", ""},
    Row{"textIRange", {1380, 1350, 3900, 315}, "", RangeTip},
    Row{"CommandCaptureSelectionI",
        {5400, 1335, 435, 345},
        "",
        "Capture cell range you entered in the Data Range, or the highlighted cells from your "
        "Excel Spreadsheet"},
    Row{"textINumberPoints",
        {6480, 1350, 1500, 315},
        "",
        "Displays the number of I data points in a selected block of cells."},
    Row{"labelQData", {180, 1830, 1140, 195}, "Q-Data", ""},
    Row{"textQRange", {1380, 1770, 3900, 315}, "", RangeTip},
    Row{"CommandCaptureSelectionQ",
        {5400, 1755, 435, 345},
        "",
        "Capture cell range you entered in the data range, or the highlighted cells from your "
        "Excel Spreadsheet."},
    Row{"textQNumberPoints",
        {6480, 1770, 1500, 315},
        "",
        "Displays the number of Q data points in a selected block of cells."},
    Row{"Check1", {1380, 2190, 3900, 255}, "Auto find Q - file name", ""},
};

constexpr std::array Markers{
    Row{"FrameDataFormat", {120, 2820, 8160, 1980}, "Markers", ""},
    Row{"chkMarkerSource", {180, 300, 3000, 255}, "User Marker File:", ""},
    Row{"labelMarkerNumberOfPoints", {6480, 360, 1500, 195}, "Number of points", ""},
    Row{"labelMarkerFile", {180, 660, 1140, 195}, "Marker file", ""},
    Row{"TextMarker", {1380, 600, 3900, 315}, "", "Marker file input box."},
    Row{"cmdMarkerBrowse", {5400, 585, 960, 345}, "Browse...", "Browse for a marker file."},
    Row{"TextMarkerFileNumPoints",
        {6480, 600, 1500, 315},
        "",
        "Displays the number of markers in the file."},
    Row{"checkAutoFindMarker", {1380, 1020, 3900, 255}, "Auto find marker - file name", ""},
    Row{"labelMarkerStart",
        {180, 1500, 1140, 195},
        "Marker start",
        "Specifies the starting point, relative to the scalable waveform data, where a marker "
        "pulse will be placed."},
    Row{"TextMarkerStart",
        {1380, 1440, 1500, 315},
        "",
        "Enter the desired starting point, relative to the scalable waveform data, where a marker "
        "pulse will be placed."},
    Row{"labelMarkerLength",
        {3120, 1500, 600, 195},
        "Length",
        "Specifies the width, in points, of your desired marker pulse.  Specify zero to omit the "
        "marker pulse."},
    Row{"TextMarkerLength",
        {3780, 1440, 1500, 315},
        "",
        "Enter the width, in points, of your desired marker pulse.  Specify zero to omit the "
        "marker pulse."},
};

constexpr std::array Destination{
    Row{"frameDestination", {120, 4920, 8160, 1200}, "KRV Destination", ""},
    Row{"labelScaleFactor",
        {180, 360, 1140, 195},
        "Scale factor",
        "Scales input waveform to this percentage of the full output range of the KRV"},
    Row{"TextScaleFactor",
        {1380, 300, 1500, 315},
        "",
        "Enter a scaling percentage value for the waveform."},
    Row{"labelFileName", {180, 780, 1140, 195}, "File name", ""},
    Row{"TextDestinationName",
        {1380, 720, 3900, 315},
        "",
        "Enter the name of the destination file inside the instrument."},
    Row{"checkAutoName",
        {5400, 750, 2580, 255},
        "Auto name",
        "Auto names the file name in the instrument if selected."},
};

constexpr std::array Buttons{
    Row{"CommandValidate",
        {2160, 6255, 1620, 390},
        "Validate Files",
        "Reads the input files, counts the points, and validates the data.  Does not initate "
        "download."},
    Row{"cmdDownload",
        {3900, 6255, 1620, 390},
        "Start Download",
        "Initates download to the instrument"},
    Row{"cmdCancel", {5640, 6255, 1260, 390}, "Cancel", ""},
    Row{"CommandHelp", {7020, 6255, 1260, 390}, "Help", ""},
};

void SetCaption(Control& control, const char* caption) {
    switch (control.Kind()) {
        case ControlKind::Label:
            static_cast<forms::Label&>(control).Caption = caption;
            break;
        case ControlKind::Frame:
            static_cast<forms::Frame&>(control).Caption = caption;
            break;
        case ControlKind::CommandButton:
            static_cast<forms::CommandButton&>(control).Caption = caption;
            break;
        case ControlKind::CheckBox:
            static_cast<forms::CheckBox&>(control).Caption = caption;
            break;
        case ControlKind::OptionButton:
            static_cast<forms::OptionButton&>(control).Caption = caption;
            break;
        default:
            break;
    }
}

template <class Rows>
void ApplyRows(frmDataTransfer& dialog, const Rows& rows) {
    for (const Row& row : rows) {
        Control* const control = dialog.FindControl(row.name);
        if (control == nullptr) {
            throw Error(ErrorNumber::NoSuchControlElement, row.name);
        }
        control->Place = row.place;
        control->ToolTipText = row.tip;
        SetCaption(*control, row.caption);
    }
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

void ApplyLayout(frmDataTransfer& dialog) {
    dialog.Caption = frmDataTransfer::Title;
    dialog.Place = FormPlace;
    ApplyRows(dialog, FilePage);
    ApplyRows(dialog, SpreadsheetPage);
    ApplyRows(dialog, Markers);
    ApplyRows(dialog, Destination);
    ApplyRows(dialog, Buttons);
    FillLists(dialog);
    SetBrowseDialogs(dialog);
    SetDesignValues(dialog);
}

}  // namespace krv::waveform
