#include "common/progress/frmCallback.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "common/Error.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/FindControl.h"
#include "tests/support/ScriptedScreen.h"

namespace krv::tests {
namespace {

using Lines = std::vector<std::string>;

constexpr std::int16_t LowestRow = std::numeric_limits<std::int16_t>::min();
constexpr std::int32_t LargestLong = std::numeric_limits<std::int32_t>::max();

class Progress : public ::testing::Test, public progress::CallbackWork {
 protected:
    ScriptedScreen screen;
    progress::frmCallback dialog{screen, screen};
    std::function<void()> work;
    int runs = 0;

    void RunDownload() override {
        ++runs;
        if (work) {
            work();
        }
    }

    void Show() {
        dialog.SetCallbackID(1);
        dialog.CallbackOwner = this;
        dialog.ShowModal();
    }

    // "minimum..maximum=value" of a row's bar.
    std::string Bar(int row) {
        const std::string state = dialog.ProgressBar1[row - 1].StateText();
        return state.substr(state.find(' ') + 1);
    }
};

TEST_F(Progress, SetProgressBarBringsItsArgumentsInOrder) {
    struct Case {
        std::int32_t minimum, maximum, value;
        const char* bar;
    };
    const std::vector<Case> cases{
        {10, 10, 5, "10..11=10"}, {0, 100, 250, "0..100=100"},     {0, 100, -3, "0..100=0"},
        {5, 2, 7, "5..6=6"},      {-20, -10, -15, "-20..-10=-15"},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(test.bar);
        progress::frmCallback fresh{screen, screen};
        fresh.ProgressBar1[0].Visible = false;
        fresh.SetProgressBar(1, test.minimum, test.maximum, test.value);
        EXPECT_EQ(fresh.ProgressBar1[0].StateText(), std::string("ProgressBar1(0) ") + test.bar);
    }
}

TEST_F(Progress, SetProgressBarNeverReportsAnError) {
    for (const int row : {0, 3, 12, -5, static_cast<int>(LowestRow)}) {
        dialog.SetProgressBar(static_cast<std::int16_t>(row), 0, 10, 5);
    }
    dialog.SetProgressBar(1, LargestLong, LargestLong, 0);
    EXPECT_EQ(Bar(1), "0..100=0");
    // The bar refuses a minimum that reaches its present maximum, and nothing after it happens.
    dialog.SetProgressBar(1, 100, 200, 150);
    EXPECT_EQ(Bar(1), "0..100=0");
    // Two longs that are one single: the minimum is taken before the maximum is refused.
    dialog.SetProgressBar(2, 0, 20000000, 0);
    dialog.SetProgressBar(2, 16777216, 16777217, 16777217);
    EXPECT_EQ(Bar(2), "16777216..20000000=16777216");
}

TEST_F(Progress, ALinkedRowMovesTheRowAboveWithinItsSlice) {
    struct Case {
        std::int32_t low, high, value;
        const char* above;
    };
    const std::vector<Case> cases{
        {500, 600, 0, "0..600=500"},   {500, 600, 50, "0..600=550"}, {500, 600, 100, "0..600=600"},
        {0, 2, 25, "0..600=0"},        {0, 2, 75, "0..600=2"},       {600, 500, 25, "0..600=575"},
        {590, 700, 100, "0..600=600"},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(test.above);
        dialog.SetProgressBar(1, 0, 600, 300);
        dialog.LinkProgressBars(2, test.low, test.high);
        dialog.SetProgressBar(2, 0, 100, test.value);
        EXPECT_EQ(Bar(1), test.above);
    }
    dialog.UnlinkProgressBars(2);
    dialog.SetProgressBar(2, 0, 100, 10);
    EXPECT_EQ(Bar(1), "0..600=600");
}

TEST_F(Progress, ALinkOnTheFirstRowMovesNothing) {
    dialog.LinkProgressBars(1, 0, 10);
    dialog.SetProgressBar(1, 0, 100, 40);
    EXPECT_EQ(Bar(1), "0..100=40");
    // The cascade ends there as quietly.
    dialog.LinkProgressBars(2, 50, 60);
    dialog.SetProgressBar(2, 0, 100, 100);
    EXPECT_EQ(Bar(1), "0..100=60");
}

TEST_F(Progress, EachOperationRefusesTheRowsItHasNothingFor) {
    const auto link = [&](std::int16_t row) { dialog.LinkProgressBars(row, 0, 1); };
    const auto unlink = [&](std::int16_t row) { dialog.UnlinkProgressBars(row); };
    const auto message = [&](std::int16_t row) { dialog.SetWaitMessage(row, "m"); };
    const auto clear = [&](std::int16_t row) { dialog.ClearWaitMessage(row); };
    const auto hide = [&](std::int16_t row) { dialog.HideProgressBar(row, "t"); };
    struct Case {
        const char* name;
        std::function<void(std::int16_t)> run;
        int lastRow;
        int error;
    };
    const std::vector<Case> cases{{"link", link, 11, 9},
                                  {"unlink", unlink, 11, 9},
                                  {"message", message, 2, 340},
                                  {"clear", clear, 2, 340},
                                  {"hide", hide, 2, 340}};
    for (const Case& test : cases) {
        SCOPED_TRACE(test.name);
        const auto errorAt = [&](int row) {
            return ErrorNumberOf([&] { test.run(static_cast<std::int16_t>(row)); });
        };
        EXPECT_EQ(errorAt(1), 0);
        EXPECT_EQ(errorAt(test.lastRow), 0);
        EXPECT_EQ(errorAt(0), test.error);
        EXPECT_EQ(errorAt(test.lastRow + 1), test.error);
        EXPECT_EQ(errorAt(LowestRow), 6);
    }
}

TEST_F(Progress, ARowShowsABarOrALine) {
    const auto row2 = [&] {
        return Lines{dialog.Label1[1].StateText(), dialog.ProgressBar1[1].StateText(),
                     dialog.TextProgress[1].StateText(), dialog.CommandCancel.StateText()};
    };
    dialog.SetWaitMessage(2, "Downloading");
    dialog.HideProgressBar(2, "started\r\nended");
    EXPECT_EQ(row2(), (Lines{"Label1(1) \"Downloading\"", "ProgressBar1(1) 0..100=0 hidden",
                             "TextProgress(1) \"started | ended\" locked notab grey",
                             "CommandCancel \"Cancel\" disabled"}));
    dialog.SetProgressBar(2, 0, 100, 7);
    EXPECT_TRUE(dialog.ProgressBar1[1].Visible);
    EXPECT_TRUE(dialog.TextProgress[1].Visible) << "only clearing the row hides the line";
    screen.Repaints.clear();
    dialog.ClearWaitMessage(2);
    EXPECT_EQ(row2(), (Lines{"Label1(1) \"\"", "ProgressBar1(1) 0..100=7 hidden",
                             "TextProgress(1) \"started | ended\" locked hidden notab grey",
                             "CommandCancel \"Cancel\""}));
    EXPECT_EQ(screen.Repaints, (Lines{"Label1(1)", "ProgressBar1(1)"}));
}

TEST_F(Progress, AMessageShowsAHiddenDialogWithoutBlocking) {
    dialog.SetWaitMessage(1, "Reading");
    EXPECT_TRUE(dialog.IsVisible());
    EXPECT_FALSE(dialog.IsModal());
    dialog.SetWaitMessage(1, "Reading on");
    EXPECT_EQ(screen.Shows, (Lines{"load frmCallback", "show frmCallback"}));
    EXPECT_EQ(screen.Repaints, (Lines{"frmCallback", "frmCallback"}));
    screen.Close(dialog);
    EXPECT_FALSE(dialog.IsVisible());
}

TEST_F(Progress, ActivationRunsTheWorkOnceAndEndsTheShow) {
    work = [&] {
        EXPECT_TRUE(dialog.IsModal());
        EXPECT_EQ(dialog.CallbackOwner, this);
        screen.Activate(dialog);
        dialog.SetWaitMessage(1, "at work");
    };
    Show();
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(dialog.CallbackOwner, nullptr);
    EXPECT_EQ(screen.Shows, (Lines{"load frmCallback", "modal frmCallback", "hide frmCallback"}));
    EXPECT_EQ(dialog.Label1[0].Caption.Get(), "at work");
    // The number is used up with the run.
    dialog.CallbackOwner = this;
    dialog.ShowModal();
    EXPECT_EQ(runs, 1);
    Show();
    EXPECT_EQ(runs, 2);
}

TEST_F(Progress, ActivationIsUndoneWhenTheWorkFails) {
    work = [] { throw Error(57); };
    EXPECT_EQ(ErrorNumberOf([&] { Show(); }), 57);
    EXPECT_FALSE(dialog.IsVisible());
    EXPECT_EQ(dialog.CallbackOwner, nullptr);
    dialog.ShowModal();
    EXPECT_EQ(runs, 1) << "the number is cleared";
    work = nullptr;
    Show();
    EXPECT_EQ(runs, 2) << "the guard is cleared";

    dialog.SetCallbackID(1);
    EXPECT_EQ(ErrorNumberOf([&] { dialog.ShowModal(); }), 91) << "nobody to call";
}

TEST_F(Progress, CancelRaisesAFlagThatTheWorkPolls) {
    for (const bool byCloseBox : {false, true}) {
        SCOPED_TRACE(byCloseBox);
        work = [&] {
            EXPECT_FALSE(dialog.TestCancelFlag()) << "each activation clears the flag";
            EXPECT_TRUE(dialog.CommandCancel.Enabled);
            screen.Repaints.clear();
            screen.Then([&] {
                byCloseBox ? screen.Close(dialog) : void(screen.Click(dialog.CommandCancel));
            });
            EXPECT_TRUE(dialog.TestCancelFlag());
            EXPECT_EQ(screen.Repaints, Lines{"CommandCancel"});
            EXPECT_FALSE(screen.Click(dialog.CommandCancel));
            EXPECT_TRUE(dialog.IsVisible());
        };
        Show();
        EXPECT_TRUE(dialog.TestCancelFlag()) << "the flag outlives the run";
    }
    EXPECT_EQ(runs, 2);
}

TEST_F(Progress, TheCloseBoxDoesNothingWhereCancelIsDisabled) {
    work = [&] {
        dialog.HideProgressBar(2, "wait");
        screen.Then([&] { screen.Close(dialog); });
        EXPECT_FALSE(dialog.TestCancelFlag());
        EXPECT_TRUE(dialog.IsVisible());
    };
    Show();
    EXPECT_EQ(runs, 1);
}

}  // namespace
}  // namespace krv::tests
