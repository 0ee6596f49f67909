#include "waveform/run/DownloadRun.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/waveform/RunFixture.h"

namespace krv::tests {

using namespace waveform;
namespace {

using ports::MessageAnswer;

class EstimateStep : public RunFixture {
 protected:
    EstimateStep() {
        dialog.Codes.IDacData.Reset(1000000);
        dialog.Codes.QDacData.Reset(1000000);
        dialog.Callback1().ShowModeless();
    }

    bool Estimate(bool download, std::size_t iPoints, std::size_t qPoints = 0) {
        dialog.Codes.IDacData.Resize(iPoints);
        dialog.Codes.QDacData.Resize(qPoints);
        journal.clear();
        return waveform::DownloadRun(dialog).EstimateDownloadTime(download);
    }
};

TEST_F(EstimateStep, ADownloadAsksOnlyWhereItTakesElevenSeconds) {
    EXPECT_TRUE(Estimate(true, 349999));
    EXPECT_EQ(dialog.EstimatedSeconds, 10);
    EXPECT_EQ(Of("["), Lines{});
    const Lines question{
        "[!] Download: Estimated download time, assuming | GPIB connection at 87500 bytes per "
        "second: | 11 seconds. |  | Do you want to continue? (Yes/No)"};
    desktop.MessageBoxes.Answers = {MessageAnswer::No};
    EXPECT_FALSE(Estimate(true, 350000));
    EXPECT_EQ(Of("["), question);
    EXPECT_TRUE(Estimate(true, 350000));
    EXPECT_EQ(Of("["), question);
    EXPECT_EQ(dialog.LastRun.estimatedSeconds, 11);
}

TEST_F(EstimateStep, AValidationAlwaysShowsTheEstimate) {
    EXPECT_TRUE(Estimate(false, 10));
    EXPECT_EQ(journal, (Lines{"row2 \"Estimating download time...\"", "bar2 50/100",
                              "Download: Estimated download time, assuming | GPIB connection at "
                              "87500 bytes per second: | 3 seconds. (OK)"}));
}

TEST_F(EstimateStep, SeparateQCodesCountOnlyWhereTheyTakePart) {
    EXPECT_TRUE(Estimate(true, 43750, 43750));
    EXPECT_EQ(dialog.EstimatedSeconds, 4);
    dialog.Data.UseQData = true;
    EXPECT_TRUE(Estimate(true, 43750, 43750));
    EXPECT_EQ(dialog.EstimatedSeconds, 5);
}

TEST_F(EstimateStep, AnUnknownRateIsAskedAboutAndLeavesTheLastEstimate) {
    server->IsSerial = true;
    server->Baud = 0;
    dialog.EstimatedSeconds = 7;
    EXPECT_TRUE(Estimate(true, 10));
    EXPECT_EQ(Of("["), Lines{"[!] Download: Estimated download time, assuming | GPIB connection is "
                             "unknown. |  | Do you want to continue? (Yes/No)"});
    EXPECT_EQ(dialog.EstimatedSeconds, 7);
    EXPECT_EQ(dialog.LastRun.estimatedSeconds, -1);
}

TEST_F(EstimateStep, ACancelBeforeOrAfterTheQuestionToTheSessionEndsItSilently) {
    for (const int poll : {1, 2}) {
        SCOPED_TRACE(poll);
        dialog.Callback1().CommandCancel.Enabled = true;
        CancelAtPoll(poll);
        EXPECT_FALSE(Estimate(false, 1000000));
        EXPECT_EQ(desktop.MessageBoxes.Shown, Lines{});
        EXPECT_TRUE(desktop.Screen.ScriptIsDone());
        // The flag is cleared by an activation only.
        desktop.Screen.Activate(dialog.Callback1());
        dialog.Callback1().ShowModeless();
    }
}

}  // namespace
}  // namespace krv::tests
