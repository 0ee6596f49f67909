// Whole runs, from a click on the dialog to the last message.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/waveform/RunJournal.h"
#include "waveform/dialog/frmDataTransfer.h"

namespace krv::tests {

using namespace waveform;
namespace {

class WholeRun : public RunJournal {
 protected:
    frmDataTransfer dialog{desktop.Services()};

    WholeRun() {
        dialog.Caption = "Download";
        dialog.instrServer = server;
        Watch(dialog.Callback1());
        PutWaveform("wave.txt", 120);
        dialog.checkAutoFindQ.Value = false;
        dialog.TextIFileName.Text = "wave.txt";
        dialog.ShowModeless();
        desktop.Screen.Activate(dialog);
        journal.clear();
    }

    void PutWaveform(const std::string& path, int points) {
        std::string text;
        for (int point = 0; point < points; ++point) {
            text += point % 2 == 0 ? "0.5\r\n" : "-0.25\r\n";
        }
        desktop.Files.Put(path, text);
    }

    bool Run(bool download) {
        journal.clear();
        desktop.MessageBoxes.Shown.clear();
        return dialog.StartRun(download);
    }

    // The journal without what the phases show of themselves.
    [[nodiscard]] Lines Steps() const {
        const Lines main{"bar1 100/", "bar1 500/", "bar1 600/", "bar1 1000/"};
        Lines steps;
        for (const std::string& line : journal) {
            const auto startsLine = [&](const std::string& start) {
                return line.rfind(start, 0) == 0;
            };
            const bool phase =
                startsLine("bar2") || startsLine("row2 \"Reading") ||
                (startsLine("bar1") && std::none_of(main.begin(), main.end(), startsLine));
            if (!phase) {
                steps.push_back(line);
            }
        }
        return steps;
    }

    // One box was shown, which has the icon and ends with the text.
    void ExpectOneBox(const std::string& icon, const std::string& end) {
        ASSERT_EQ(desktop.MessageBoxes.Shown.size(), 1U);
        const std::string& box = desktop.MessageBoxes.Shown[0];
        EXPECT_EQ(box.rfind(icon + " Download: ", 0), 0U) << box;
        EXPECT_EQ(box.substr(box.size() - std::min(box.size(), end.size())), end);
    }

    // Nothing of a run is left behind, and the next one can begin.
    void ExpectUsable() {
        progress::frmCallback& progress = dialog.Callback1();
        EXPECT_FALSE(progress.IsVisible());
        EXPECT_EQ(progress.CallbackOwner, nullptr);
        EXPECT_FALSE(dialog.Busy);
        EXPECT_FALSE(progress.TextProgress[1].Visible);
        progress.SetProgressBar(1, 0, 100, 0);
        progress.SetProgressBar(2, 0, 100, 100);
        EXPECT_EQ(progress.ProgressBar1[0].Value, 0.0F) << "a link was left";
        EXPECT_TRUE(Run(true));
        EXPECT_EQ(desktop.MessageBoxes.Shown, Lines{"Download: Download complete. (OK)"});
    }
};

TEST_F(WholeRun, ADownloadGoesStepByStep) {
    desktop.Screen.Click(dialog.cmdDownload);
    EXPECT_TRUE(dialog.RunSucceeded);
    EXPECT_EQ(Steps(), (Lines{
                           "row1 \"Overall progress...\"",
                           "row2 \"Preliminary validation...\"",
                           "bar1 100/1000",
                           "bar1 500/1000",
                           "row2 \"Scaling waveform data...\"",
                           "bar1 600/1000",
                           "> HasDualArbOption",
                           "row2 \"Estimating download time...\"",
                           "> ReadError",
                           "line2 \"Download started at 12:00:00 | Estimated completion at "
                           "12:00:03\"",
                           "row2 \"Downloading waveform to the instrument...\"",
                           "> DownloadInterleaved",
                           "> DownloadMarkers",
                           "row2 \"\"",
                           "> ReadError",
                           "bar1 1000/1000",
                           "row2 \"Downloading waveform to the instrument...\"",
                           "Download: Download complete. (OK)",
                           "row1 \"\"",
                           "> ReturnToLocal",
                       }));
    EXPECT_EQ(server->Calls[2], "DownloadInterleaved wave");
    EXPECT_EQ(server->Interleaved.size(), 120U);
    EXPECT_EQ(server->Interleaved[0], 32767);
    EXPECT_EQ(server->Markers.size(), 120U);
    EXPECT_EQ(dialog.LastRun.estimatedSeconds, 3);
    ExpectUsable();
}

TEST_F(WholeRun, AValidationEndsWithTheEstimateAndSendsNothing) {
    server->DualArb = false;
    dialog.TextDestinationName.Text = "";
    desktop.Screen.Click(dialog.CommandValidate);
    EXPECT_TRUE(dialog.RunSucceeded);
    EXPECT_EQ(Steps(), (Lines{
                           "row1 \"Overall progress...\"",
                           "row2 \"Preliminary validation...\"",
                           "bar1 100/600",
                           "bar1 500/600",
                           "row2 \"Scaling waveform data...\"",
                           "bar1 600/600",
                           "row2 \"Estimating download time...\"",
                           "Download: Estimated download time, assuming | GPIB connection at "
                           "87500 bytes per second: | 3 seconds. (OK)",
                           "row1 \"\"",
                           "> ReturnToLocal",
                       }));
    EXPECT_EQ(server->Calls, Lines{"ReturnToLocal"});
}

TEST_F(WholeRun, AConversionAsksTheInstrumentNothingButItsModel) {
    server->OnCall = [](const std::string& call) {
        EXPECT_TRUE(call == "Model" || call == "IO") << call;
    };
    server->Connected = false;
    EXPECT_TRUE(dialog.StartConversion());
    EXPECT_EQ(dialog.Codes.i.Size(), 120U);
    EXPECT_EQ(dialog.Codes.largest, 32767);
    EXPECT_EQ(desktop.MessageBoxes.Shown, Lines{});
    const int polls = desktop.Screen.PumpCount;
    ++desktop.Files.Entries["wave.txt"].date;
    CancelAtPoll(polls, dialog.Callback1());
    EXPECT_FALSE(dialog.StartConversion()) << "cancelled when all was done";
    EXPECT_EQ(desktop.MessageBoxes.Shown, Lines{});
}

TEST_F(WholeRun, ACancelAtAnyPollEndsTheRunSilently) {
    PutWaveform("wave.txt", 9000);
    const int before = desktop.Screen.PumpCount;
    EXPECT_TRUE(Run(true));
    const int polls = desktop.Screen.PumpCount - before;
    EXPECT_GE(polls, 6) << "while reading, while converting, and twice for the estimate";
    for (int poll = 1; poll <= polls; ++poll) {
        SCOPED_TRACE(poll);
        ++desktop.Files.Entries["wave.txt"].date;
        CancelAtPoll(poll, dialog.Callback1());
        EXPECT_FALSE(Run(true));
        EXPECT_TRUE(desktop.Screen.ScriptIsDone());
        EXPECT_EQ(desktop.MessageBoxes.Shown, Lines{});
        EXPECT_EQ(Of("> Down"), Lines{});
        ExpectUsable();
        EXPECT_EQ(server->Interleaved.size(), 9000U) << "what was read in part is read again";
    }
}

TEST_F(WholeRun, EveryFailureIsShownAndLeavesTheDialogUsable) {
    server->FailureText = "Connection lost";
    for (const char* call : {"Model", "IO", "HasDualArbOption", "ArbFileSelected", "ReadError",
                             "DownloadInterleaved", "DownloadMarkers"}) {
        SCOPED_TRACE(call);
        server->FailingCall = call;
        EXPECT_FALSE(Run(true));
        ExpectOneBox(std::string(call) == "HasDualArbOption" ? "[stop]" : "[!]",
                     "Connection lost (OK)");
        EXPECT_EQ(Of("> ReturnToLocal").size(), std::string(call) == "IO" ? 0U : 1U);
        server->FailingCall.clear();
        ExpectUsable();
    }
}

TEST_F(WholeRun, WithoutTheOptionOrAnInstrumentNothingIsSent) {
    server->DualArb = false;
    EXPECT_FALSE(Run(true));
    EXPECT_EQ(desktop.MessageBoxes.Shown,
              Lines{"Download: Option R2X (Dual Arbitrary Waveform Generator) is not installed. "
                    "(OK)"});
    server->OnCall = [&](const std::string& call) {
        server->InstrumentNumber += call == "SerialNumber" ? "2" : "";
    };
    EXPECT_FALSE(Run(true));
    ExpectOneBox("[stop]", "Nothing has been sent. (OK)");
    server->OnCall = {};
    server->Connected = false;
    for (const bool download : {true, false}) {
        EXPECT_FALSE(Run(download));
        ExpectOneBox("[stop]", "No instrument is connected. (OK)");
    }
    dialog.instrServer = nullptr;
    EXPECT_FALSE(Run(true));
    ExpectOneBox("[!]",
                 "The instrument's model could not be read. | No instrument is connected. (OK)");
    EXPECT_EQ(Of("> Down"), Lines{});
}

TEST_F(WholeRun, ASecondRunDuringARunHasNoEffect) {
    desktop.MessageBoxes.OnShow = [&](const std::string&) {
        EXPECT_FALSE(dialog.StartRun(true));
        EXPECT_FALSE(dialog.StartConversion());
        EXPECT_FALSE(dialog.DownloadMode);
    };
    EXPECT_TRUE(Run(false));
}

}  // namespace
}  // namespace krv::tests
