// The dialog and what stands around it: spreadsheet, host application, instrument.
#include "tests/waveform/DialogTest.h"

namespace krv::tests {

using namespace waveform;
namespace {

constexpr const char* RangeSyntax =
    "textINumberPoints 'Error' locked notab grey text:#0000A0 tip='Excel reports a syntax error in "
    "the Data Range specification.'";
constexpr const char* RangeAreas =
    "textINumberPoints 'Error' locked notab grey text:#0000A0 tip='The Data Range may not specify "
    "multiple selections.'";
constexpr const char* RangeBlock =
    "textQNumberPoints 'Error' locked notab grey text:#0000A0 tip='The Data Range must specify a "
    "single column or a single row.'";

TEST_F(DialogTest, CountsTheCellsOfARangeAsItIsTyped) {
    ShowInExcel();
    Run({
        {"click optSpreadsheet",
         {"textINumberPoints '' locked notab grey tip='Displays the number of I data points in a "
          "selected block of cells.'"}},
        {"type textIRange A", {RangeSyntax}},
        {"type textIRange A1:J1", {"textINumberPoints '10' locked notab grey"}},
        {"type textIRange A1:A10,C1:C10", {RangeAreas}},
        {"type textIRange  $B$7 ", {"textINumberPoints '1' locked notab grey"}},
        {"type textQRange A1:B10", {RangeBlock}},
        {"type textQRange A1:A65536", {"textQNumberPoints '65536' locked notab grey"}},
        {"type textIRange !", {RangeSyntax}},
        {"type textIRange", {"textINumberPoints '' locked notab grey"}},
    });
    // Success and an empty box leave no tool tip behind.
    EXPECT_EQ(m_dialog.textINumberPoints.ToolTipText.Get(), "");
    EXPECT_EQ(m_dialog.textQNumberPoints.ToolTipText.Get(), "");
}

TEST_F(DialogTest, CapturesTheSelection) {
    ShowInExcel();
    Run({
        {"click optSpreadsheet", {}},
        {"mark A1:A20", {}},
        {"click CommandCaptureSelectionI",
         {"textIRange '$A$1:$A$20'", "textINumberPoints '20' locked notab grey"}},
        {"mark C3", {}},
        {"click CommandCaptureSelectionQ",
         {"textQRange '$C$3'", "textQNumberPoints '1' locked notab grey"}},
        {"mark A1:A2,C1:C2", {}},
        {"click CommandCaptureSelectionI",
         {"[!] Download Waveform to KRV: This function cannot be used on multiple selections. (OK)",
          "textIRange '$A$1:$A$20'"}},
        {"mark A1:B2", {}},
        {"click CommandCaptureSelectionQ",
         {"[!] Download Waveform to KRV: This function must specify a single column or a single "
          "row. (OK)",
          "textQRange '$C$3'"}},
        // Something other than cells is selected.
        {"mark", {}},
        {"click CommandCaptureSelectionI",
         {"[stop] Download Waveform to KRV: Object doesn't support this property or method (OK)"}},
    });
}

TEST_F(DialogTest, NotesTheSheetOfASelectionThatHasTheAddressOfTheOneBefore) {
    ShowInExcel();
    Run({{"click optSpreadsheet", {}},
         {"mark A1:A20", {}},
         {"click CommandCaptureSelectionI", {}}});
    m_excel->ActiveSheet.sheet = "Sheet2";
    Run({{"click CommandCaptureSelectionI", {}}});
    EXPECT_EQ(m_dialog.IRangeSheet.sheet, "Sheet2");
}

TEST_F(DialogTest, AttachesToTheRunningExcelWhenTheAdapterHasNone) {
    m_running.Running = m_excel;
    Show();
    Run({{"click optSpreadsheet", {}},
         {"type textIRange A1:A3", {"textINumberPoints '3' locked notab grey"}}});
    EXPECT_EQ(m_running.Asked, std::vector<std::string>{"Excel.Application"});
}

TEST_F(DialogTest, WorksWithoutAnyExcel) {
    Show();
    Run({{"click optSpreadsheet", {}},
         {"type textIRange A1:A3", {RangeSyntax}},
         {"click CommandCaptureSelectionI",
          {"[stop] Download Waveform to KRV: There is no running Excel to take the selection from. "
           "(OK)"}}});
    // It is started later.
    m_running.Running = m_excel;
    Run({{"activate", {"textINumberPoints '3' locked notab grey"}}});
}

TEST_F(DialogTest, HasNoSpreadsheetSourceInWord) {
    m_dialog.optSpreadsheet.Value = true;
    m_host->Kind = hosts::WordSaved;
    m_host->App = std::make_shared<ports::HostApplication>();
    m_running.Running = m_excel;
    Show();
    Run({{"click optSpreadsheet",
          {"optSpreadsheet 'Spreadsheet' clear disabled",
           "optFileFolders 'File Folders' set disabled", "frameFileFolders 'Waveforms'"}}});
    EXPECT_EQ(m_dialog.Excel(), nullptr);
    EXPECT_TRUE(m_running.Asked.empty());
}

TEST_F(DialogTest, OpensHelpThroughTheHost) {
    m_dialog.applicationHWND = 77;
    Show();
    Run({{"click CommandHelp", {}}, {"press F1", {}}});
    EXPECT_EQ(m_host->HelpCalls, (std::vector<std::string>(2, "download.html for window 77")));
    m_dialog.AppConnection = nullptr;
    Run({{"click CommandHelp", {}}});
}

TEST_F(DialogTest, HidesWithAllEntriesWhenCancelled) {
    ShowInExcel();
    Run({{"type TextIFileName a.txt", {}},
         {"select cboWaveformType 2", {}},
         {"click cmdCancel", {}}});
    EXPECT_FALSE(m_dialog.IsVisible());
    EXPECT_TRUE(m_dialog.IsLoaded());
    Show();
    Run({{"close", {"TextIFileName 'a.txt'", "cboWaveformType '16-bit internal values'"}}});
    EXPECT_FALSE(m_dialog.IsVisible());
}

constexpr const char* Download = "cmdDownload 'Start Download'";
constexpr const char* NoDownload = "cmdDownload 'Start Download' disabled";

TEST_F(DialogTest, RefusesToDownloadOverASerialLine) {
    m_server->IsSerial = true;
    Show();
    Expect(
        {"[!] Download Waveform to KRV: Download Arb Waveform Data is not supported over a "
         "serial (RS-232) connection.  Corvane recommends you use a GPIB card for this "
         "function. (OK)",
         NoDownload});
    Run({{"activate", {NoDownload}}});
    m_server->IsSerial = false;
    Run({{"activate", {Download}}});
    m_server->IsSerial = true;
    Run({{"activate", {NoDownload}}});
}

TEST_F(DialogTest, TakesASessionThatCannotTellForNotSerial) {
    Show();
    m_server->IsSerial = true;
    for (const char* call : {"IO", "Serial"}) {
        m_server->FailingCall = call;
        m_dialog.cmdDownload.Enabled = false;
        Run({{"activate", {Download}}});
    }
    m_server->FailingCall.clear();
    m_server->Connected = false;
    Run({{"activate", {Download}}});
    m_dialog.instrServer = nullptr;
    Run({{"activate", {Download}}});
}

}  // namespace
}  // namespace krv::tests
