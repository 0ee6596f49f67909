#include "control/KRVControl.h"

#include <gtest/gtest.h>

#include <string>

#include "hosts/HostAdapters.h"
#include "hosts/ToolbarButtons.h"
#include "tests/control/ControlTest.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/RecordingHelp.h"
#include "tests/support/RecordingPictures.h"

namespace krv::tests {
namespace {

using namespace control;
using namespace hosts;

TEST_F(ControlTest, RunsTheCommandOfTheClickedButton) {
    AttachHost();
    const auto clicked = [&](const std::string& key) {
        control->ToolbarClicked(key);
        return log.Take() + " / " + Shows() + " / " + Boxes();
    };
    EXPECT_EQ(clicked("Corvane TQL/KRV"), "about 6 CvnKRVServer.CvnKRVServer /  / ");
    EXPECT_EQ(clicked("GetImage"), "picture /  / ");
    EXPECT_EQ(clicked("Help"), "create utilities; help 4711 -1 /  / ");
    EXPECT_EQ(clicked("PutData"),
              "create utilities / load frmDataTransfer; show frmDataTransfer / ");
    log.FailAt = "create states";
    EXPECT_EQ(clicked("Settings"), "create states /  / ");
    for (const std::string key : {"Connect", "Connected"}) {
        log.FailAt = "busy";
        EXPECT_EQ(clicked(key), "busy /  / ");
        log.FailAt.clear();
    }
    EXPECT_EQ(clicked("help"), " /  / : Unknown button pressed! (OK)\n");
    EXPECT_EQ(clicked(""), " /  / : Unknown button pressed! (OK)\n");
}

TEST_F(ControlTest, TakesClicksOnlyOnButtonsThatAreThere) {
    Toolbar& toolbar = control->Toolbar1();
    std::vector<std::size_t> changes;
    toolbar.OnChange = [&](std::size_t index) { changes.push_back(index); };
    EXPECT_TRUE(toolbar.Click(0));
    EXPECT_EQ(log.Take(), "about 6 CvnKRVServer.CvnKRVServer");
    toolbar.ControlByCaption("Corvane TQL/KRV")->SetEnabled(false);
    EXPECT_FALSE(toolbar.Click(0));
    toolbar.ControlAt(1)->SetEnabled(true);
    toolbar.ControlAt(1)->SetVisible(false);
    EXPECT_FALSE(toolbar.Click(0));
    EXPECT_FALSE(toolbar.Click(7));
    EXPECT_EQ(log.Take(), "");
    toolbar.ControlAt(7)->SetTooltipText("Help");
    EXPECT_EQ(changes, (std::vector<std::size_t>{0, 0, 0})) << "the tool tip was so before";
    EXPECT_THROW(static_cast<void>(toolbar.ControlAt(8)), Error);
    EXPECT_THROW(static_cast<void>(toolbar.ControlByCaption("connect")), Error);
}

struct Flag {
    int line;
    Value value;
    bool isOne;
};

TEST_F(ControlTest, AsksForRangeDataWhenTheFlagIsOne) {
    AttachHost();
    const Flag flags[] = {
        {__LINE__, std::int16_t{1}, true},
        {__LINE__, std::int16_t{0}, false},
        {__LINE__, std::int32_t{1}, true},
        {__LINE__, std::int32_t{257}, false},
        {__LINE__, 1.0, true},
        {__LINE__, 1.5, false},
        {__LINE__, 1.0F, true},
        {__LINE__, true, false},
        {__LINE__, CurrencyValue{10000}, true},
        {__LINE__, CurrencyValue{1}, false},
        {__LINE__, DateValue{1}, true},
        {__LINE__, std::string(" 1.0"), true},
        {__LINE__, std::string("2"), false},
        {__LINE__, EmptyValue{}, false},
        {__LINE__, NullValue{}, false},
    };
    for (const Flag& flag : flags) {
        control->DoDataTransfer(EmptyValue{}, flag.value);
        const auto& form = dynamic_cast<waveform::frmDataTransfer&>(*desk.Screen.LastShown);
        EXPECT_EQ(form.DownloadRangeData, flag.isOne) << "line " << flag.line;
        EXPECT_EQ(form.applicationHWND, 4711);
        EXPECT_EQ(form.instrServer, suite.Server);
        EXPECT_EQ(form.AppConnection->hostApp(), host);
    }
    Shows();
    for (const Value& incomparable : {Value(std::string("one")), Value(ErrorCodeValue{2042})}) {
        control->DoDataTransfer(EmptyValue{}, incomparable);
        EXPECT_EQ(Shows() + Boxes(), "") << "the command ends quietly";
    }
}

struct Choice {
    int line;
    bool excelAccepts;
    bool wordAccepts;
    const char* failAt;
    const char* calls;
    bool attached;
};

TEST_F(ControlTest, ChoosesTheAdapterThatTakesTheApplication) {
    const Choice choices[] = {
        {__LINE__, true, true, "", "create server; excel init 77", true},
        {__LINE__, false, true, "", "create server; excel init 77; word init 77", true},
        {__LINE__, true, true, "excel", "create server; excel init 77; word init 77", true},
        {__LINE__, false, false, "", "create server; excel init 77; word init 77", false},
        {__LINE__, false, true, "word", "create server; excel init 77; word init 77", false},
        {__LINE__, true, true, "create server", "create server; create server", false},
    };
    for (const Choice& choice : choices) {
        adapters.ExcelAccepts = choice.excelAccepts;
        adapters.WordAccepts = choice.wordAccepts;
        log.FailAt = choice.failAt;
        Reopen();
        control->SetConnectedApplication(host);
        EXPECT_EQ(log.Take(), choice.calls) << "line " << choice.line;
        EXPECT_EQ(control->ConnectedApplication(), choice.attached ? host : nullptr)
            << "line " << choice.line;
    }
}

TEST_F(ControlTest, AttachesAnAdapterThatThereIsAgainWithoutTryingTheOther) {
    AttachHost();
    const auto other = std::make_shared<ForeignHost>();
    control->SetConnectedApplication(other);
    EXPECT_EQ(log.Take(), "excel init 77");
    EXPECT_EQ(control->ConnectedApplication(), other);
    log.FailAt = "excel init";
    control->SetConnectedApplication(host);
    EXPECT_EQ(log.Take(), "excel init 77");
    EXPECT_EQ(control->ConnectedApplication(), other) << "the adapter stays";
}

TEST_F(ControlTest, TakesTheRealAdapterThatItsHostIsFor) {
    RecordingHelp help(log);
    RecordingPictures pictures(log);
    hosts::HostAdapters realAdapters(hosts::HostServices{suite, help, pictures});
    const control::ControlServices services{desk.Services(), surface, suite, realAdapters, dialogs};
    control.emplace(services);
    control->SetConnectedApplication(host);
    EXPECT_EQ(control->ConnectedApplication(), nullptr) << "neither Excel nor Word";
    const auto excel = std::make_shared<FakeExcelHost>(log);
    control->SetConnectedApplication(excel);
    EXPECT_EQ(control->ConnectedApplication(), excel);
    EXPECT_FALSE(control->Toolbar1().Button(2).Visible);
    EXPECT_EQ(control->Toolbar1().Button(0).ToolTipText, "About Corvane Tallyport for TQL/KRV");
    control.reset();
    EXPECT_TRUE(excel->Receivers.empty());
    const auto word = std::make_shared<FakeWordHost>(log);
    control.emplace(services);
    control->SetConnectedApplication(word);
    EXPECT_EQ(control->ConnectedApplication(), word);
    word->InstalledAddIns.push_back(std::make_shared<FakeAddIn>("KRV.DOT", "W:"));
    control->DoHelp();
    EXPECT_TRUE(log.Take().ends_with("help 4711 W:\\krvwtool.chm 1"));
}

TEST_F(ControlTest, DegradesWithoutAHost) {
    control->DoHelp();
    control->UpdateConnectedStatus();
    EXPECT_EQ(control->ConnectedApplication(), nullptr);
    control->DoAbout();
    control->DoDataTransfer(EmptyValue{}, std::int16_t{0});
    EXPECT_EQ(log.Take(), "about 6 CvnKRVServer.CvnKRVServer; create server");
    EXPECT_EQ(Shows(), "load frmDataTransfer; show frmDataTransfer");
}

TEST_F(ControlTest, ShowsAndRaisesThatThereIsNoHostForAnImage) {
    const std::string box =
        "[stop] : Failed to transfer image to application. | Error Description:  | "
        "DataConnection Object Not Set (OK)\n";
    suite.Server->Session = std::make_shared<FakeSession>(log, "GPIB0::19");
    EXPECT_EQ(ErrorOf([&] { control->DoSaveScreenImage(); }),
              "-2147221499 DataConnection Object Not Set (KRVControl::IToolbarSupport_"
              "DoSaveScreenImage)");
    EXPECT_EQ(Boxes(), box);
    EXPECT_EQ(log.Take(), "create server; local GPIB0::19");
    control->ToolbarClicked("GetImage");
    EXPECT_EQ(Boxes(), box) << "a click raises nothing";
}

TEST_F(ControlTest, ShowsOtherFailuresOfAnImageAndReturnsNormally) {
    AttachHost();
    suite.Server->Session = std::make_shared<FakeSession>(log, "GPIB0::19");
    control->DoSaveScreenImage();
    EXPECT_EQ(log.Take() + Boxes(), "picture; local GPIB0::19");
    log.FailAt = "picture";
    control->DoSaveScreenImage();
    EXPECT_EQ(log.Take(), "picture; local GPIB0::19");
    EXPECT_EQ(Boxes(),
              "[stop] : Failed to transfer image to application. | Error Description:  | "
              "refused: picture (OK)\n");
}

TEST_F(ControlTest, HandsTheDownloadDialogWhatItNeedsAndReusesIt) {
    AttachHost();
    std::vector<std::string> shows;
    for (int times = 0; times < 2; ++times) {
        control->DoDataTransfer(EmptyValue{}, std::int16_t{0});
        shows.push_back(Shows());
    }
    EXPECT_EQ(shows[0], "load frmDataTransfer; show frmDataTransfer");
    EXPECT_EQ(shows[1], "show frmDataTransfer");
    log.Take();
    control->StartTransfer(EmptyValue{}, EmptyValue{});
    control->StopTransfer(EmptyValue{}, EmptyValue{});
    EXPECT_EQ(log.Take() + Shows(), "");
    control->Terminate();
    EXPECT_EQ(Shows(), "hide frmDataTransfer; unload frmDataTransfer");
}

TEST_F(ControlTest, TheDownloadDialogGoesAfterTheInputThatItIsHandling) {
    AttachHost();
    control->DoDataTransfer(EmptyValue{}, std::int16_t{0});
    auto& form = dynamic_cast<waveform::frmDataTransfer&>(*desk.Screen.LastShown);
    Shows();
    EXPECT_FALSE(surface.IsKept());
    auto click = form.KeptOwner();
    auto keyWithin = form.KeptOwner();
    control->Terminate();
    EXPECT_EQ(Shows(), "");
    EXPECT_FALSE(form.Callback1().CommandCancel.Enabled) << "a download would be cancelled";
    keyWithin.reset();
    EXPECT_EQ(Shows(), "");
    EXPECT_NE(form.AppConnection, nullptr) << "what is under way still needs it";
    EXPECT_TRUE(surface.IsKept());
    click.reset();
    EXPECT_EQ(Shows(), "hide frmDataTransfer; unload frmDataTransfer");
    EXPECT_FALSE(surface.IsKept());

    // A later input is none that the control was to end after.
    control->DoDataTransfer(EmptyValue{}, std::int16_t{0});
    Shows();
    form.KeptOwner().reset();
    EXPECT_EQ(Shows(), "");
}

TEST_F(ControlTest, EndsQuietlyAndTellsWhichComponentIsMissing) {
    log.FailAt = "about";
    control->DoAbout();
    EXPECT_EQ(Boxes(), "");
    suite.Missing = "CvnKRVServer.CvnKRVServer";
    control->DoDataTransfer(EmptyValue{}, std::int16_t{0});
    EXPECT_EQ(Boxes(), "[stop] : install CvnKRVServer.CvnKRVServer (OK)\n");
    control->SetConnectedApplication(host);
    EXPECT_EQ(Boxes(), "") << "starting a host asks for nothing";
    suite.Missing.clear();
    control->SetConnectedApplication(host);
    EXPECT_EQ(control->ConnectedApplication(), host);
}

}  // namespace
}  // namespace krv::tests
