#include "tests/waveform/DialogTest.h"

namespace krv::tests {

using namespace waveform;
namespace {

TEST_F(DialogTest, FollowsTheWaveformType) {
    m_desktop.Files.Put("aI.txt", "1");
    m_desktop.Files.Put("aQ.txt", "1");
    ShowInExcel();
    Run({
        {"type TextIFileName aI.txt", {}},
        {"wait 250", {"TextQFileName 'aQ.txt' locked notab grey"}},
        // Code files may be binary; their Q box is grey.
        {"select cboWaveformType 1",
         {"cboFileTypeWF 'ASCII'", "TextQFileName 'aQ.txt' locked notab grey",
          "checkAutoFindQ 'Auto find Q - file name' checked"}},
        {"select cboFileTypeWF 2", {"cboFileTypeWFSS 'Binary-Big Endian' disabled"}},
        // Interleaved codes: no separate Q file, whatever was there.
        {"select cboWaveformType 2",
         {"cboFileTypeWF 'Binary (Big Endian)'", "cboWaveformTypeSS '16-bit  internal values'",
          "TextQFileName '' disabled grey",
          "checkAutoFindQ 'Auto find Q - file name' unchecked disabled",
          "Check1 'Auto find Q - file name' unchecked disabled", "cmdQBrowse 'Browse...' disabled",
          "textQRange '' disabled grey",
          "CommandCaptureSelectionQ picture=CaptureSelection disabled"}},
        // Scalable data is text, and Q is found again.
        {"select cboWaveformType 0",
         {"cboFileTypeWF 'ASCII' disabled", "TextQFileName 'aQ.txt' locked notab",
          "checkAutoFindQ 'Auto find Q - file name' checked",
          "cmdQBrowse 'Browse...' disabled notab", "textQRange ''",
          "CommandCaptureSelectionQ picture=CaptureSelection"}},
        // A cleared check box is set again by a change of the type.
        {"click checkAutoFindQ", {"TextQFileName 'aQ.txt'", "cmdQBrowse 'Browse...'"}},
        {"select cboWaveformType 1",
         {"checkAutoFindQ 'Auto find Q - file name' checked",
          "TextQFileName 'aQ.txt' locked notab grey", "cmdQBrowse 'Browse...' disabled notab"}},
    });
}

TEST_F(DialogTest, KeepsBothPagesInStep) {
    ShowInExcel();
    Run({
        {"select cboWaveformType 1", {"cboWaveformTypeSS '14-bit internal values'"}},
        {"click optSpreadsheet",
         {"frameFileFolders 'Waveforms' hidden", "frameSpreadSheet 'Waveform'",
          "optSpreadSheetSS 'Spreadsheet' set", "optFileFolders 'File Folders' clear",
          "optFileFoldersSS 'File Folders' clear", "TextDestinationName 'RANGE' locked notab grey",
          "CommandValidate 'Validate Data' tip='Validate Data  Does not initiate download.'"}},
        {"select cboWaveformTypeSS 2",
         {"cboWaveformType '16-bit internal values'", "TextQFileName '' disabled grey",
          "textQRange '' disabled grey"}},
        {"select cboWaveformTypeSS 0",
         {"cboWaveformType 'Waveform'", "cboFileTypeWF 'ASCII' disabled", "textQRange ''"}},
        {"click optFileFoldersSS",
         {"frameFileFolders 'Waveforms'", "frameSpreadSheet 'Waveform' hidden",
          "optSpreadsheet 'Spreadsheet' clear", "optSpreadSheetSS 'Spreadsheet' clear",
          "optFileFolders 'File Folders' set", "TextDestinationName 'WAVEFORM' locked notab grey",
          "CommandValidate 'Validate Files' tip='Validate Files  Does not initiate download.'"}},
    });
}

TEST_F(DialogTest, HandsTheQBoxBackWhenAutoFindIsCleared) {
    m_desktop.Files.Put("dataI.txt", "1");
    ShowInExcel();
    Run({
        {"type TextIFileName dataI.txt", {}},
        {"click checkAutoFindQ",
         {"TextQFileName ''", "cmdQBrowse 'Browse...'",
          "TextDestinationName 'dataI' locked notab grey"}},
        {"type TextQFileName other.txt", {"TextQFileName 'other.txt'"}},
        {"put dataQ.txt", {}},
        {"wait 250",
         {"TextQFileName 'other.txt'", "textQSize 'Error' locked notab grey text:#0000A0"}},
        {"click checkAutoFindQ",
         {"TextQFileName 'dataQ.txt' locked notab grey", "cmdQBrowse 'Browse...' disabled notab",
          "textQSize '' locked notab grey tip='Displays the number of Q data points.'",
          "Timer1 stopped"}},
        {"type TextQFileName mine.txt", {"TextQFileName 'dataQ.txt' locked notab grey"}},
    });
}

TEST_F(DialogTest, SwitchesBetweenMarkerFileAndMarkerPulse) {
    m_desktop.Files.Put("dataI.txt", "1");
    m_desktop.Files.Put("dataMarker.txt", "1");
    ShowInExcel();
    Run({
        {"type TextIFileName dataI.txt", {}},
        {"click chkMarkerSource",
         {"TextMarker ''", "cmdMarkerBrowse 'Browse...'",
          "checkAutoFindMarker 'Auto find marker - file name' unchecked",
          "TextMarkerStart '0' disabled grey", "TextMarkerLength '0' disabled grey"}},
        {"click checkAutoFindMarker",
         {"TextMarker 'dataMarker.txt' locked notab grey",
          "cmdMarkerBrowse 'Browse...' disabled notab", "Timer1 stopped"}},
        {"click chkMarkerSource",
         {"TextMarker 'dataMarker.txt' locked disabled notab grey",
          "checkAutoFindMarker 'Auto find marker - file name' checked disabled",
          "TextMarkerStart '0'", "TextMarkerLength '0'"}},
        // What auto find fills stays grey and out of reach.
        {"click chkMarkerSource",
         {"TextMarker 'dataMarker.txt' locked notab grey",
          "cmdMarkerBrowse 'Browse...' disabled notab"}},
        {"put otherMarker.txt", {}},
        {"type TextIFileName otherI.txt", {}},
        {"wait 250", {"TextMarker 'otherMarker.txt' locked notab grey"}},
        {"click checkAutoFindMarker",
         {"TextMarker 'otherMarker.txt'", "cmdMarkerBrowse 'Browse...'"}},
    });
}

TEST_F(DialogTest, NamesTheDestinationAfterTheIFile) {
    ShowInExcel();
    Run({
        {"put C:\\wave\\my sine.txt", {}},
        {"type TextIFileName C:\\wave\\my sine.txt",
         {"TextDestinationName 'WAVEFORM' locked notab grey"}},
        {"wait 250", {"TextDestinationName 'my_sine' locked notab grey"}},
        {"click checkAutoName", {"TextDestinationName 'my_sine'"}},
        {"type TextDestinationName MINE", {}},
        {"type TextIFileName other.txt", {}},
        {"wait 250", {"TextDestinationName 'MINE'"}},
        {"click checkAutoFindQ", {"TextDestinationName 'MINE'"}},
        {"click checkAutoName", {"TextDestinationName 'other' locked notab grey"}},
    });
}

// The Q file that goes with an I file may come later; one that was found is not dropped in silence.
TEST_F(DialogTest, LooksAgainWhileNoDerivedFileIsFound) {
    m_desktop.Files.Put("dataI.txt", "1");
    ShowInExcel();
    Run({
        {"type TextIFileName dataI.txt", {}},
        {"wait 250", {"TextQFileName '' locked notab grey"}},
        {"put dataQ.txt", {}},
        {"choose", {}},
        {"click cmdIBrowse", {"TextQFileName 'dataQ.txt' locked notab grey"}},
        {"delete dataQ.txt", {}},
        {"click cmdIBrowse",
         {"TextQFileName 'dataQ.txt' locked notab grey",
          "textQSize 'Error' locked notab grey text:#0000A0 tip='File does not exist.'"}},
        {"type TextIFileName nothing.txt", {}},
        {"wait 250", {"TextQFileName '' locked notab grey", "textQSize '' locked notab grey"}},
    });
}

}  // namespace
}  // namespace krv::tests
