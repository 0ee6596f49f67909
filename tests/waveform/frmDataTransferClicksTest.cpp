// What the Validate and Download buttons start, and the validation that every run begins with.
#include <algorithm>
#include <optional>

#include "tests/waveform/DialogTest.h"

namespace krv::tests {

using namespace waveform;
namespace {

using ValidationTest = DialogTest;

TEST_F(ValidationTest, FillsThePlanFromTheChosenSource) {
    m_desktop.Files.Put("i.bin", "1");
    ShowInExcel();
    m_server->InstrumentModel = " M9920D ";
    m_dialog.cboWaveformType.ListIndex = WaveformTypeIndex::Internal14;
    m_dialog.cboFileTypeWF.ListIndex = FileTypeIndex::BigEndian;
    m_dialog.TextIFileName.Text = " \"i.bin\" ";
    m_dialog.TextQFileName.Text = "\"\"";
    m_dialog.TextScaleFactor.Text = "x";
    m_dialog.TextDestinationName.Text = " W ";
    auto plan = m_dialog.ValidateDownloadInputs(RunMode::Download);
    ASSERT_TRUE(plan.has_value());
    EXPECT_FALSE(m_dialog.IQInterleaved || m_dialog.UseQData || plan->useQ);
    EXPECT_EQ(plan->instrument.model, "M9920D");
    EXPECT_EQ(plan->mode, RunMode::Download);
    EXPECT_EQ(plan->source, SourceKind::Files);
    EXPECT_EQ(plan->iSource, "i.bin");
    EXPECT_EQ(plan->fileType, FileType::BigEndian);
    EXPECT_EQ(plan->type, WaveformType::Internal14);
    EXPECT_EQ(plan->scalePercent, std::nullopt);
    EXPECT_EQ(plan->destination, "W");

    m_dialog.optSpreadsheet.Value = true;
    m_dialog.cboWaveformTypeSS.ListIndex.Preset(WaveformTypeIndex::Scalable);
    m_dialog.textIRange.Text = " A1:A4 ";
    m_dialog.textQRange.Text = "B1:B4";
    m_dialog.TextScaleFactor.Text = " 50 ";
    plan = m_dialog.ValidateDownloadInputs();
    ASSERT_TRUE(plan.has_value());
    EXPECT_EQ(plan->source, SourceKind::Cells);
    EXPECT_EQ(plan->iSource, "A1:A4");
    EXPECT_EQ(plan->type, WaveformType::Scalable);
    EXPECT_TRUE(plan->speaksOfIntegers) << "the file page's type counts here, too";
    EXPECT_EQ(plan->scalePercent, 50.0);
    EXPECT_EQ(plan->iSheet, (ports::SheetName{"Book1", "Sheet1"}));
    EXPECT_EQ(plan->qSheet, plan->iSheet);
    m_dialog.textQRange.Text = "!";
    EXPECT_EQ(m_dialog.QRangeSheet, ports::SheetName()) << "no cells, no sheet";
    m_dialog.textQRange.Text = "";
    m_dialog.TextScaleFactor.Text = "1e400";
    m_dialog.cboWaveformType.ListIndex.Preset(WaveformTypeIndex::Scalable);
    plan = m_dialog.ValidateDownloadInputs();
    ASSERT_TRUE(plan.has_value()) << "the type of the file page decides what is looked at";
    EXPECT_EQ(plan->scalePercent, std::numeric_limits<double>::infinity());
}

class ClickTest : public DialogTest {
 protected:
    [[nodiscard]] auto RunsShown() const {
        const auto& shows = m_desktop.Screen.Shows;
        return std::count(shows.begin(), shows.end(), "modal frmCallback");
    }
};

// A name typed a moment ago is seen by the run, before the timer is due.
TEST_F(ClickTest, WatchesTheFilesBeforeARun) {
    ShowInExcel();
    const std::vector<std::string> lines{
        "[!] Download Waveform to KRV: Invalid File Name specified for I and Q Data. (OK)",
        "textISize 'Error' locked notab grey text:#0000A0", "Timer1 stopped"};
    Run({{"type TextIFileName a.txt", {}},
         {"click CommandValidate", lines},
         {"type TextIFileName b.txt", {}},
         {"click cmdDownload", lines}});
    EXPECT_EQ(RunsShown(), 2);
}

// An error that ends the run itself is shown, too, and the next click works again.
TEST_F(ClickTest, ShowsWhatARunThrows) {
    ShowInExcel();
    m_desktop.MessageBoxes.OnShow = [](const std::string& box) {
        if (box.find("[!]") == 0) {
            throw Error(ErrorNumber::Unspecified, "the screen is gone");
        }
    };
    for (const char* click : {"click CommandValidate", "click cmdDownload"}) {
        Run({{click,
              {"[!] Download Waveform to KRV: No File Name specified for the I and Q Data. (OK)",
               "[stop] Download Waveform to KRV: the screen is gone (OK)"}}});
        EXPECT_FALSE(m_dialog.Busy);
    }
    EXPECT_EQ(RunsShown(), 2);
}

}  // namespace
}  // namespace krv::tests
