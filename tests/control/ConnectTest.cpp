// The connect command from the dialog to the buttons. The discovery control's part is played by the
// test, while the dialog is shown.
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "common/MemoryPropertyBag.h"
#include "control/frmConnect.h"
#include "tests/control/ControlTest.h"

namespace krv::tests {
namespace {

using namespace control;
using namespace hosts;

class ConnectCommand : public ControlTest {
 protected:
    control::frmConnect& Dialog() {
        return dynamic_cast<control::frmConnect&>(*desk.Screen.LastShown);
    }

    // The user opens the dialog, does this and closes it; returns what the doubles were asked since
    // the dialog was shown.
    std::string Connect(const std::function<void()>& userActs) {
        desk.Screen.Then([this, userActs] {
            log.Take();
            userActs();
            desk.Screen.Click(Dialog().cmdClose);
        });
        control->DoConnect();
        EXPECT_TRUE(desk.Screen.ScriptIsDone());
        return log.Take();
    }

    std::shared_ptr<FakeSession> Choose(const std::string& address, const std::string& hostName,
                                        bool isSerial = false) {
        auto session = std::make_shared<FakeSession>(log, address, isSerial);
        suite.LastSettings->Chosen = session;
        suite.LastSettings->Host = hostName;
        return session;
    }
};

TEST_F(ConnectCommand, PreparesTheDialogUnderTheBusyCursor) {
    AttachHost();
    std::string prepared;
    desk.Screen.Then([&] {
        prepared = log.Take();
        EXPECT_EQ(Dialog().server, suite.Server);
        EXPECT_EQ(Dialog().applicationHWND, 4711);
        EXPECT_EQ(Dialog().AppConnection->hostApp(), host);
        EXPECT_TRUE(Dialog().IsModal());
        desk.Screen.Click(Dialog().cmdClose);
        EXPECT_EQ(Dialog().server, nullptr);
        EXPECT_EQ(Dialog().AppConnection, nullptr);
        EXPECT_FALSE(Dialog().IsLoaded());
    });
    control->DoConnect();
    EXPECT_EQ(prepared,
              "busy; create settings; type Signal Generator; supports M7718C=M7718C; "
              "supports M9920D=M9920D; port 1; baud 19200; bits 8; handshake 3; "
              "configures RS232; give settings; create utilities; idle");
    EXPECT_EQ(log.Take(), "read settings; initial state");
    EXPECT_EQ(Shows(), "load frmConnect; modal frmConnect; hide frmConnect; unload frmConnect");
    Connect([] {});
    EXPECT_EQ(discovery->Receiver, nullptr);
}

TEST_F(ConnectCommand, ShowsTheMousePointerWhereThereIsNoHost) {
    desk.Screen.Then([&] {
        EXPECT_EQ(Dialog().applicationHWND, 0);
        const std::string prepared = log.Take();
        EXPECT_TRUE(prepared.starts_with("busy pointer; create server; create settings"))
            << prepared;
        EXPECT_TRUE(prepared.ends_with("give settings; normal pointer")) << prepared;
        Choose("GPIB0::19", "My Computer");
        desk.Screen.Close(Dialog());
    });
    control->DoConnect();
    EXPECT_EQ(log.Take(), "read settings; SetInstrumentSession GPIB0::19; Model; local GPIB0::19");
}

TEST_F(ConnectCommand, TellsANewConnectionFromTheOneItHolds) {
    AttachHost();
    const std::string checked = "; Model; enable 3; connected look LAB7; local ";
    EXPECT_EQ(Connect([&] { Choose("GPIB0::19", "LAB7"); }),
              "read settings; SetInstrumentSession GPIB0::19" + checked + "GPIB0::19");
    const auto held = suite.Server->Session;

    EXPECT_EQ(Connect([&] { Choose("gpib0::19", "LAB7"); }),
              "read settings; settings' session GPIB0::19" + checked + "GPIB0::19");
    EXPECT_EQ(suite.Server->Session, held);
    EXPECT_EQ(suite.LastSettings->Chosen, held);

    EXPECT_EQ(Connect([&] { Choose("GPIB0::20", "LAB7"); }),
              "read settings; SetInstrumentSession GPIB0::20" + checked + "GPIB0::20");
    EXPECT_EQ(
        Connect([&] { Choose("GPIB0::20", "LAB8"); }),
        "read settings; SetInstrumentSession GPIB0::20; Model; enable 3; connected look LAB8; "
        "local GPIB0::20");
    EXPECT_EQ(Connect([&] { suite.LastSettings->Chosen = nullptr; }),
              "read settings; initial state; local GPIB0::20");
}

TEST_F(ConnectCommand, DropsTheSessionWhenTheConnectionChanges) {
    AttachHost();
    Connect([&] { Choose("GPIB0::19", "My Computer"); });
    const std::string calls = Connect([&] {
        discovery->Receiver->OnConnectionChange();
        EXPECT_EQ(suite.Server->Session, nullptr);
        Choose("GPIB0::19", "My Computer");
    });
    EXPECT_EQ(calls,
              "SetInstrumentSession none; initial state; read settings; SetInstrumentSession "
              "GPIB0::19; Model; enable 3; "
              "connected look My Computer; local GPIB0::19");
}

TEST_F(ConnectCommand, IsUndoneByEveryCommandThatFindsTheConnectionGone) {
    AttachHost();
    const std::pair<std::function<void()>, const char*> commands[] = {
        {[&] { log.Note(Connect([] {})); }, "read settings; initial state"},
        {[&] { control->DoSaveScreenImage(); }, "picture; initial state"},
        {[&] { control->DoDataTransfer(EmptyValue{}, std::int16_t{0}); },
         "create utilities; initial state"},
    };
    for (const auto& [command, calls] : commands) {
        std::shared_ptr<FakeSession> session;
        Connect([&] { session = Choose("GPIB0::19", "LAB7"); });
        session->Alive = false;
        command();
        EXPECT_EQ(log.Take(), calls);
        control->DoAbout();
        EXPECT_EQ(log.Take().find("initial"), std::string::npos) << "once is enough";
    }
    // Within a download, which a click into the dialog starts.
    const forms::Form& download = *desk.Screen.LastShown;
    const auto session = Choose("GPIB0::20", "LAB7");
    Connect([] {});
    auto click = download.KeptOwner();
    session->Alive = false;
    click.reset();
    EXPECT_EQ(log.Take(), "initial state");
}

TEST_F(ConnectCommand, KeepsTheAdapterThatTheHostReplacesMeanwhile) {
    AttachHost();
    log.OnNote = [&, former = adapters.Last](const std::string& line) {
        MemoryPropertyBag bag;
        bag.Write("DataCWritten", std::int32_t{2});
        if (line == "enable 3") {
            control->ReadProperties(bag);
            EXPECT_NE(adapters.Last.lock(), former.lock());
            EXPECT_FALSE(former.expired());
        }
    };
    Connect([&] { Choose("GPIB0::19", "My Computer"); });
    EXPECT_NE(adapters.Last.lock(), nullptr);
    log.OnNote = nullptr;
}

TEST_F(ConnectCommand, WarnsAndKeepsTheConnection) {
    AttachHost();
    suite.Server->InstrumentModel = " M771XB ";
    suite.Server->Firmware = " B.03.39 ";
    EXPECT_EQ(
        Connect([&] { Choose("COM1", "My Computer", true); }),
        "read settings; SetInstrumentSession COM1; Model; enable 1; connected look My Computer; "
        "local COM1");
    ASSERT_EQ(desk.MessageBoxes.Shown.size(), 2u);
    EXPECT_TRUE(desk.MessageBoxes.Shown[0].starts_with(
        "[!] : The connected KRV contains firmware revision B.03.39.  Tallyport"));
    EXPECT_TRUE(desk.MessageBoxes.Shown[1].ends_with("limited functionality. (OK)"));
    EXPECT_NE(suite.Server->Session, nullptr);

    Boxes();
    suite.Server->Firmware = "B.03.40";
    const auto calls =
        Connect([&] { Choose("COM2", "My Computer", true)->SerialTestFails = true; });
    EXPECT_NE(calls.find("enable 3"), std::string::npos) << "a failing test counts as not serial";
    EXPECT_EQ(Boxes(), "");
}

TEST_F(ConnectCommand, ReturnsToLocalAndUnloadsWhateverHappens) {
    AttachHost();
    log.FailAt = "Model";
    EXPECT_EQ(Connect([&] { Choose("GPIB0::19", "My Computer"); }),
              "read settings; SetInstrumentSession GPIB0::19; Model; local GPIB0::19");
    suite.Server->Session = nullptr;
    log.FailAt = "SetInstrumentSession";
    EXPECT_EQ(Connect([&] { Choose("GPIB0::19", "My Computer"); }),
              "read settings; SetInstrumentSession GPIB0::19; local GPIB0::19");
    suite.Server->Session = suite.LastSettings->Chosen;
    log.FailAt = "local";
    EXPECT_EQ(Connect([&] { Choose("GPIB0::19", "My Computer"); }),
              "read settings; settings' session GPIB0::19; Model; enable 3; "
              "connected look My Computer; local GPIB0::19");
    log.FailAt = "read settings";
    EXPECT_EQ(Connect([&] { Choose("GPIB0::20", "My Computer"); }),
              "read settings; SetInstrumentSession GPIB0::20; Model; enable 3; connected look My "
              "Computer; "
              "local GPIB0::20")
        << "the settings that the dialog was given stand";
    Shows();
    log.FailAt = "create utilities";
    control->DoConnect();
    EXPECT_EQ(Shows(), "load frmConnect; unload frmConnect");
    EXPECT_TRUE(log.Take().ends_with("create utilities; idle")) << "the busy cursor goes";
    EXPECT_EQ(Boxes(), "");
}

TEST_F(ConnectCommand, TellsThatTheDiscoveryComponentIsMissing) {
    AttachHost();
    desk.Screen.MakeForeign =
        [](const std::string& progId) -> std::shared_ptr<ports::ForeignObject> {
        throw Error(ErrorNumber::CannotCreateObject, "install " + progId);
    };
    control->DoConnect();
    EXPECT_EQ(Boxes(), "[stop] : install CvnDiscovery.CvnDiscoveryCtl (OK)\n");
    EXPECT_EQ(Shows(), "load frmConnect; load frmConnect");
}

TEST_F(ConnectCommand, OpensTheHelpOfTheDialog) {
    AttachHost();
    EXPECT_EQ(Connect([&] {
                  desk.Screen.Click(Dialog().cmdHelp);
                  EXPECT_TRUE(desk.Screen.Press(Dialog(), 112));
                  EXPECT_FALSE(desk.Screen.Press(Dialog(), 113));
                  EXPECT_FALSE(desk.Screen.Press(Dialog(), 112, true));
              }),
              "help 4711 100; help 4711 100; read settings; initial state");
}

TEST(ConnectDialog, KeepsItsSettingsWhereNoForeignControlIsHosted) {
    ScriptedDesktop desk;
    CallLog log;
    control::frmConnect dialog(desk.Screen);
    const auto settings = std::make_shared<FakeIOSettings>(log);
    dialog.SetIOSettings(settings);
    EXPECT_TRUE(dialog.IsLoaded());
    EXPECT_EQ(dialog.IOSettings(), settings);
    desk.Screen.Close(dialog);
    EXPECT_EQ(dialog.IOSettings(), settings);
}

}  // namespace
}  // namespace krv::tests
