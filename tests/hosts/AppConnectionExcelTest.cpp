#include "hosts/AppConnectionExcel.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "common/MemoryPropertyBag.h"
#include "hosts/ToolbarButtons.h"
#include "tests/support/FakeHostedControl.h"
#include "tests/support/FakeHosts.h"
#include "tests/support/RecordingHelp.h"
#include "tests/support/RecordingPictures.h"

namespace krv::tests {
namespace {

using namespace hosts;

// Notes which of the hooks is called.
class HookedAdapter final : public hosts::AppConnectionExcel {
 public:
    HookedAdapter(const hosts::HostServices& services, CallLog& log)
        : hosts::AppConnectionExcel(services), m_log(log) {}
    void EnableRepeatMeaureButtons() override { m_log.Note("repeat"); }
    void EnableSingleMeaureButtons() override { m_log.Note("single"); }

 private:
    CallLog& m_log;
};

class ExcelAdapter : public ::testing::Test {
 protected:
    CallLog log;
    CallLog ownLog;
    FakeSuite suite{log};
    RecordingHelp help{log};
    RecordingPictures pictures{log};
    FakeHostedControl control{log, ownLog};
    std::shared_ptr<FakeExcelHost> excel = std::make_shared<FakeExcelHost>(log);
    hosts::HostServices services{suite, help, pictures};
    std::shared_ptr<hosts::AppConnectionExcel> adapter =
        std::make_shared<HookedAdapter>(services, log);

    bool Init(const std::shared_ptr<ports::HostApplication>& app) {
        return adapter->Init(app, suite.Server, control, 77);
    }
    // An adapter in Book1 with a connected instrument and a log that starts empty.
    void Connect(const std::string& hostName) {
        ASSERT_TRUE(Init(excel));
        suite.Server->Session = std::make_shared<FakeSession>(log, "GPIB0::19");
        adapter->EnableToolbarButtons(3);
        adapter->UpdateConnectedIconAndTooltip(hostName);
        log.Take();
    }
};

TEST_F(ExcelAdapter, AttachesOnlyToExcelAndKeepsItsFirstApplication) {
    EXPECT_FALSE(Init(std::make_shared<ForeignHost>()));
    EXPECT_EQ(adapter->hostApp(), nullptr);
    EXPECT_TRUE(Init(excel));
    EXPECT_EQ(adapter->hostApp(), excel);
    EXPECT_TRUE(Init(std::make_shared<FakeExcelHost>(log)));
    EXPECT_TRUE(Init(std::make_shared<ForeignHost>()));
    EXPECT_EQ(adapter->hostApp(), excel);
    EXPECT_TRUE(log.Take().starts_with("active workbook; events on; bar "));
    EXPECT_EQ(excel->Bar->State() + control.Bar->State(),
              std::string(UnconnectedLook) + UnconnectedLook);
}

TEST_F(ExcelAdapter, FindsItsHostThroughTheControl) {
    EXPECT_FALSE(Init(nullptr)) << "the control lies in no workbook";
    suite.Document = std::make_shared<FakeWorkbook>("Book2", excel);
    EXPECT_TRUE(Init(nullptr));
    EXPECT_EQ(adapter->hostApp(), excel);
    log.Take();
    suite.Server->Session = std::make_shared<FakeSession>(log, "GPIB0::19");
    excel->SwitchTo("Book2");
    EXPECT_TRUE(log.Take().starts_with("single; ")) << "Book2 is its workbook";
}

TEST_F(ExcelAdapter, ThatCannotReceiveEventsIsNotAttached) {
    log.FailAt = "events on";
    EXPECT_FALSE(Init(excel));
    EXPECT_EQ(adapter->hostApp(), nullptr);
    log.FailAt.clear();
    EXPECT_TRUE(Init(excel));
}

TEST_F(ExcelAdapter, ShowsTheConnectedLookOnBothToolbars) {
    Connect("LAB7");
    const std::string look =
        "Corvane TQL/KRV on shown [About Corvane Tallyport for TQL/KRV]\n"
        "Connect on hidden [Connect to TQL/KRV Signal Generator]\n"
        "Connected on shown [Connected to M7718C Signal Generator at GPIB0::19 on LAB7]\n"
        "Settings on shown [Capture/Restore Settings]\n"
        "PutData on shown [Download Arb Waveform Data]\n"
        "GetImage on shown [Get Screen Image]\nHelp on shown [Help]\n";
    EXPECT_EQ(excel->Bar->State(), look);
    EXPECT_EQ(control.Bar->State(), look);

    suite.Server->Session = nullptr;
    adapter->UpdateConnectedIconAndTooltip("LAB7");
    EXPECT_EQ(excel->Bar->State(), UnconnectedLook);
    EXPECT_EQ(control.Bar->State(), UnconnectedLook);
}

TEST_F(ExcelAdapter, FollowsTheActivationOfItsWorkbook) {
    Connect("My Computer");
    const std::string look = excel->Bar->State();
    excel->SwitchTo("Other");
    EXPECT_EQ(excel->Bar->State(), UnconnectedLook);
    log.Take();
    excel->SwitchTo("Third");
    EXPECT_EQ(log.Take(), "") << "neither is the adapter's workbook";
    log.FailAt = "ArbInstalled";
    excel->SwitchTo("Book1");
    log.FailAt.clear();
    EXPECT_TRUE(log.Take().starts_with("single; "));
    EXPECT_EQ(excel->Bar->State(), look);
    EXPECT_EQ(control.Bar->State(), look);
    adapter->SetInRepeatDataTransfer(true);
    excel->SwitchTo("Other");
    log.Take();
    excel->SwitchTo("Book1");
    EXPECT_TRUE(log.Take().starts_with("repeat; "));

    // The name of the computer counts also where the host has no bar to show it on.
    log.FailAt = "bar";
    adapter->UpdateConnectedIconAndTooltip("LAB8");
    log.FailAt.clear();
    EXPECT_EQ(excel->Bar->State().find(" on LAB8]"), std::string::npos);
    excel->SwitchTo("Other");
    excel->SwitchTo("Book1");
    EXPECT_NE(excel->Bar->State().find(" on LAB8]"), std::string::npos);

    suite.Server->Session = nullptr;
    excel->SwitchTo("Other");
    log.Take();
    excel->SwitchTo("Book1");
    EXPECT_EQ(log.Take(), "") << "without a session nothing is redrawn";
}

TEST_F(ExcelAdapter, BelongsToTheFirstWorkbookWhenNoneWasOpen) {
    excel->Active.clear();
    Connect("My Computer");
    const std::string look = excel->Bar->State();
    excel->SwitchTo("Book1");
    excel->SwitchTo("Other");
    EXPECT_EQ(excel->Bar->State(), UnconnectedLook);
    excel->SwitchTo("Book1");
    EXPECT_EQ(excel->Bar->State(), look);
}

TEST_F(ExcelAdapter, LeavesTheBarToTheAdapterThatShowsItsConnectionThere) {
    Connect("LAB7");
    const std::string first = excel->Bar->State();
    suite.Document = std::make_shared<FakeWorkbook>("Book2", excel);
    FakeHostedControl openedControl(log, ownLog);
    const auto opened = std::make_shared<hosts::AppConnectionExcel>(services);
    const auto unconnected = FakeServer::Make();
    unconnected->Connected = false;
    ASSERT_TRUE(opened->Init(nullptr, unconnected, openedControl, 77));
    EXPECT_EQ(excel->Bar->State(), first);

    // As its document makes it connect again, while the other workbook is still active.
    unconnected->Connected = true;
    opened->EnableToolbarButtons(3);
    opened->UpdateConnectedIconAndTooltip("LAB8");
    const std::string look = excel->Bar->State();
    log.Take();
    excel->SwitchTo("Book2");
    // The download dialog of the workbook in the background finds its connection gone.
    suite.Server->Session = nullptr;
    adapter->SetInitialToolbarState();
    adapter->UpdateConnectedIconAndTooltip("LAB7");
    adapter.reset();
    EXPECT_EQ(log.Take().find("Connect show"), std::string::npos) << "not even for a moment";
    EXPECT_EQ(excel->Bar->State(), look);
    EXPECT_EQ(control.Bar->State(), UnconnectedLook);
    opened->SetInitialToolbarState();
    EXPECT_EQ(excel->Bar->State(), UnconnectedLook);
    opened->UpdateConnectedIconAndTooltip("LAB8");
    excel->SwitchTo("Other");
    EXPECT_EQ(excel->Bar->State(), UnconnectedLook);
}

TEST_F(ExcelAdapter, LeavesTheToolbarUnconnectedInAnotherWorkbook) {
    Connect("My Computer");
    excel->Receivers.clear();  // the switch goes unheard
    excel->SwitchTo("Other");
    adapter.reset();
    EXPECT_EQ(excel->Bar->State(), UnconnectedLook);
}

TEST_F(ExcelAdapter, EndsQuietlyInItsOwnWorkbookAndInAHostThatIsGoing) {
    Connect("My Computer");
    const std::string look = excel->Bar->State();
    adapter.reset();
    EXPECT_TRUE(excel->Receivers.empty());
    EXPECT_EQ(log.Take(), "active workbook");
    EXPECT_EQ(excel->Bar->State(), look);

    adapter = std::make_shared<HookedAdapter>(services, log);
    ASSERT_TRUE(Init(excel));
    excel->Active.clear();
    log.FailAt = "active workbook";
    adapter.reset();
    EXPECT_EQ(excel->Bar->State(), look);
}

TEST_F(ExcelAdapter, LeavesTheRemainingButtonsWhenTheHostRefusesOne) {
    Connect("My Computer");
    log.FailAt = "GetImage disable";
    adapter->EnableToolbarButtons(2);
    EXPECT_EQ(log.Take(),
              "bar TQL/KRV Signal Generator; PutData disable; "
              "PutData tip Download Arb Waveform to TQL not supported over RS-232; "
              "GetImage disable");
    log.FailAt = "bar";
    adapter->SetInitialToolbarState();
    adapter->UpdateConnectedIconAndTooltip("LAB7");
    EXPECT_NE(control.Bar->State().find(" on LAB7]"), std::string::npos) << "its own are whole";
    log.FailAt = "ArbInstalled";
    const std::string before = control.Bar->State();
    adapter->EnableToolbarButtons(3);
    EXPECT_EQ(control.Bar->State(), before);
}

TEST_F(ExcelAdapter, ShowsStatusAndBusyCursor) {
    adapter->UpdateStatus("before it is attached");
    adapter->SetBusyCursor(true);
    EXPECT_EQ(log.Take(), "");
    ASSERT_TRUE(Init(excel));
    log.Take();
    adapter->UpdateStatus("Working");
    adapter->SetBusyCursor(true);
    adapter->SetBusyCursor(false);
    EXPECT_EQ(log.Take(), "status Working; busy cursor; normal cursor");
    excel->StatusBarDisplayed = false;
    adapter->UpdateStatus("hidden");
    log.FailAt = "busy cursor";
    adapter->SetBusyCursor(true);
    EXPECT_EQ(log.Take(), "busy cursor");
}

TEST_F(ExcelAdapter, OpensTheHelpBesideItsAddIn) {
    ASSERT_TRUE(Init(excel));
    log.Take();
    excel->InstalledAddIns = {std::make_shared<FakeAddIn>("ANALYS32.XLL", "C:\\A"),
                              std::make_shared<FakeAddIn>("xKRV.XLA", "C:\\B")};
    adapter->DoHelp(5, 100);
    EXPECT_EQ(log.Take(), "") << "without the add-in there is no help";
    excel->InstalledAddIns.push_back(std::make_shared<FakeAddIn>("krv.xla", "C:\\Add ins"));
    excel->InstalledAddIns.push_back(std::make_shared<FakeAddIn>("KRV.XLA", "D:"));
    adapter->DoHelp(5, 100);
    EXPECT_EQ(log.Take(),
              "help 5 C:\\Add ins\\krvxltool.chm at connect.html; "
              "help 5 D:\\krvxltool.chm at connect.html");
    log.FailAt = "help";
    adapter->DoHelp(5, -1);
    EXPECT_EQ(log.Take(), "help 5 C:\\Add ins\\krvxltool.chm 1");
}

TEST_F(ExcelAdapter, RemembersInTheBagThatItHasTransferSettings) {
    MemoryPropertyBag unattached;
    adapter->WriteProperties(unattached);
    EXPECT_TRUE(unattached.Entries().empty());
    adapter->ReadProperties(unattached);
    adapter->WriteProperties(unattached);
    EXPECT_TRUE(unattached.Entries().empty()) << "a bag without the entry makes no settings";

    ASSERT_TRUE(Init(excel));
    MemoryPropertyBag bag;
    adapter->WriteProperties(bag);
    ASSERT_EQ(bag.Entries().size(), 1u);
    EXPECT_EQ(bag.Read("dataTransferSaved", false), Value(true));

    hosts::AppConnectionExcel restored(services);
    restored.ReadProperties(bag);
    MemoryPropertyBag again;
    restored.WriteProperties(again);
    EXPECT_EQ(again.Entries(), bag.Entries());
    bag.Write("dataTransferSaved", std::string("?"));
    hosts::AppConnectionExcel(services).ReadProperties(bag);
}

TEST_F(ExcelAdapter, OffersNoTimedTransfer) {
    adapter->TransferDataToApp();
    ASSERT_TRUE(Init(excel));
    log.Take();
    adapter->TransferDataToApp();
    EXPECT_EQ(adapter->hostApp(), excel);
    EXPECT_FALSE(adapter->DoDataTransfer(true, {}, 10, 1.0));
    EXPECT_EQ(log.Take(), "");
    EXPECT_EQ(adapter->SavedDataCValue(), hosts::ExcelSaved);
}

TEST_F(ExcelAdapter, HandsPicturesToWhatTransfersThem) {
    EXPECT_THROW(adapter->DoPictureTransfer(), Error) << "not attached";
    ASSERT_TRUE(Init(excel));
    log.Take();
    adapter->DoPictureTransfer();
    EXPECT_EQ(log.Take(), "picture to Excel 77");
}

}  // namespace
}  // namespace krv::tests
