// What the host's document keeps of the control, and what becomes of a control that is loaded from
// it.
#include <gtest/gtest.h>

#include <functional>
#include <sstream>
#include <string>

#include "common/MemoryPropertyBag.h"
#include "tests/control/ControlTest.h"

namespace krv::tests {
namespace {

using namespace control;
using namespace hosts;

// The entries as "key=value", where texts stand in quotes and a Long ends in "L".
std::string Text(const MemoryPropertyBag& bag) {
    std::ostringstream text;
    for (const auto& [name, value] : bag.Entries()) {
        text << (text.tellp() > 0 ? "; " : "") << name << '=';
        if (const auto* number = std::get_if<std::int32_t>(&value)) {
            text << *number << 'L';
        } else if (const auto* flag = std::get_if<bool>(&value)) {
            text << (*flag ? "true" : "false");
        } else {
            text << '"' << std::get<std::string>(value) << '"';
        }
    }
    return text.str();
}

class ControlProperties : public ControlTest {
 protected:
    MemoryPropertyBag bag;

    // A bag as an Excel workbook keeps it, whose instrument is at the address.
    void FillBag(const std::string& address) {
        bag.Write("DataCWritten", std::int32_t{1});
        bag.Write("adapter", std::string("excel"));
        bag.Write("IOSettingWritten", true);
        bag.Write("settings.host", std::string("LAB7"));
        bag.Write("settings.address", address);
    }
    std::string Written() {
        MemoryPropertyBag written;
        control->WriteProperties(written);
        log.Take();
        return Text(written);
    }
    std::string Read() {
        control->ReadProperties(bag);
        return log.Take() + " / " + Shows() + " / " + Boxes();
    }
    // Connects as the user does by the dialog.
    void Connect(const std::string& address) {
        desk.Screen.Then([this, address] {
            suite.LastSettings->Chosen = std::make_shared<FakeSession>(log, address);
            suite.LastSettings->Host = "LAB7";
            desk.Screen.Close(*desk.Screen.LastShown);
        });
        control->DoConnect();
        Shows();
    }
};

constexpr const char* LoadsDiscovery = "load frmConnect; unload frmConnect";

TEST_F(ControlProperties, AreWrittenInTheirOrderForWhatThereIs) {
    EXPECT_EQ(Written(), "DataCWritten=0L");
    AttachHost();
    EXPECT_EQ(Written(), "DataCWritten=1L; adapter=\"excel\"");
    Connect("GPIB0::19");
    EXPECT_EQ(Written(),
              "DataCWritten=1L; adapter=\"excel\"; IOSettingWritten=true; "
              "settings.host=\"LAB7\"; settings.address=\"GPIB0::19\"");
}

TEST_F(ControlProperties, HoldTheCapturedStatesOnceTheSettingsCommandWasGiven) {
    desk.Screen.Then([&] { desk.Screen.Close(*desk.Screen.LastShown); });
    control->DoSetup();
    suite.LastStates->Snapshot = std::string("state");
    EXPECT_EQ(Written(), "DataCWritten=0L; instrSetupInfoWritten=true; States=\"state\"");

    const auto reopen = [&] {
        Reopen();
        log.Take();
    };
    reopen();
    FillBag("GPIB0::19");
    bag.Write("instrSetupInfoWritten", true);
    bag.Write("States", std::string("older"));
    Shows();
    EXPECT_TRUE(
        Read().starts_with("excel read excel; create server; excel init 77 without host; "
                           "create states; read states; create settings;"));
    EXPECT_EQ(suite.LastStates->Snapshot, Value(std::string("older")));
    reopen();
    log.FailAt = "read states";
    EXPECT_EQ(Read(),
              "excel read excel; create server; excel init 77 without host; create states; read "
              "states /  / ")
        << "nothing is connected when the states are damaged";
}

TEST_F(ControlProperties, OfAWordDocumentSayItsKind) {
    adapters.ExcelAccepts = false;
    adapters.WordAccepts = true;
    AttachHost();
    EXPECT_EQ(Written(), "DataCWritten=2L; adapter=\"word\"");
}

TEST_F(ControlProperties, ThatCannotBeWrittenFailTheSaving) {
    AttachHost();
    Connect("GPIB0::19");
    log.FailAt = "settings write";
    EXPECT_THROW(Written(), Error);
}

TEST_F(ControlProperties, ReconnectInTheOrderOfTheKeys) {
    FillBag("GPIB0::19");
    EXPECT_EQ(Read(),
              "excel read excel; create server; excel init 77 without host; "
              "create settings; settings read; SetInstrumentSession GPIB0::19; Model; enable 3; "
              "connected look LAB7; local GPIB0::19 / " +
                  std::string(LoadsDiscovery) + " / ");
    EXPECT_NE(suite.Server->Session, nullptr);
    EXPECT_EQ(discovery->Receiver, nullptr);
    EXPECT_EQ(Written(), Text(bag));
    control->SetConnectedApplication(host);
    EXPECT_EQ(log.Take(), "excel init 77") << "the adapter that was restored stays";
}

TEST_F(ControlProperties, WarnAgainOfTheRestoredInstrument) {
    FillBag("GPIB0::19");
    suite.Server->InstrumentModel = "M771XB";
    suite.Server->Firmware = "B.03.39";
    control->ReadProperties(bag);
    EXPECT_TRUE(Boxes().starts_with("[!] : The connected KRV contains firmware revision B.03.39."));
}

TEST_F(ControlProperties, OfAnyOtherHostGiveAWordAdapter) {
    for (const Value& kind : {Value(std::int32_t{2}), Value(std::int32_t{-7}), Value(3.0)}) {
        bag.Write("DataCWritten", kind);
        EXPECT_EQ(Read(),
                  "word read nothing; create server; word init 77 without host; "
                  "create settings /  / ");
        Reopen();
    }
}

// The usual settings, such as the serial ones, are for a control that was never saved.
TEST_F(ControlProperties, OfAnOldDocumentGiveEmptySettingsAndNoAdapter) {
    EXPECT_EQ(Read(), "create settings /  / ");
    control->UpdateConnectedStatus();
    EXPECT_EQ(control->ConnectedApplication(), nullptr);
    desk.Screen.Then([&] { desk.Screen.Close(*desk.Screen.LastShown); });
    control->DoConnect();
    EXPECT_EQ(log.Take().find("type Signal Generator"), std::string::npos);
}

TEST_F(ControlProperties, WithoutASessionConnectNothing) {
    FillBag("");
    EXPECT_EQ(Read(),
              "excel read excel; create server; excel init 77 without host; "
              "create settings; settings read / " +
                  std::string(LoadsDiscovery) + " / ");
    suite.InstrumentIsThere = false;
    Reopen();
    FillBag("GPIB0::19");
    EXPECT_EQ(Read().find("SetInstrumentSession"), std::string::npos);
    EXPECT_EQ(Written(), Text(bag)) << "the address stays";
}

struct Failure {
    int line;
    // Either an entry with another value, or the call that fails.
    std::string key;
    Value value;
    std::string failAt;
    // The calls up to the failure.
    std::string calls;
};

TEST_F(ControlProperties, AreReadUpToTheFirstFailure) {
    const std::string attached = "excel read excel; create server; excel init 77 without host";
    const Failure failures[] = {
        {__LINE__, "DataCWritten", std::string("excel"), "", ""},
        {__LINE__, "DataCWritten", NullValue{}, "", ""},
        {__LINE__, "DataCWritten", 1e300, "", ""},
        {__LINE__, "adapter", 5.0, "", ""},
        {__LINE__, "", {}, "excel read", "excel read excel"},
        {__LINE__, "", {}, "create server", "excel read excel; create server"},
        {__LINE__, "", {}, "excel init", attached},
        {__LINE__, "IOSettingWritten", DateValue{1}, "", attached},
        {__LINE__, "", {}, "create settings", attached + "; create settings"},
        {__LINE__, "settings.host", true, "", attached + "; create settings; settings read"},
        {__LINE__, "settings.address", 7.0, "", attached + "; create settings; settings read"},
        {__LINE__,
         "",
         {},
         "SetInstrumentSession",
         attached + "; create settings; settings read; SetInstrumentSession GPIB0::19; "
                    "local GPIB0::19"},
        {__LINE__,
         "",
         {},
         "Model",
         attached + "; create settings; settings read; SetInstrumentSession GPIB0::19; Model; "
                    "local GPIB0::19"},
    };
    for (const Failure& failure : failures) {
        SCOPED_TRACE(failure.line);
        bag = MemoryPropertyBag();
        FillBag("GPIB0::19");
        if (!failure.key.empty()) {
            bag.Write(failure.key, failure.value);
        }
        log.FailAt = failure.failAt;
        control->ReadProperties(bag);
        log.FailAt.clear();
        EXPECT_EQ(log.Take(), failure.calls);
        EXPECT_EQ(Boxes(), "");
        // The control works, and can be saved and given to a host.
        Written();
        control->SetConnectedApplication(host);
        EXPECT_EQ(control->ConnectedApplication(), host);
        log.Take();
        suite.Server->Session = nullptr;
        Reopen();
    }
}

TEST_F(ControlProperties, StopWhereTheSuiteIsNotInstalled) {
    FillBag("GPIB0::19");
    desk.Screen.MakeForeign =
        [](const std::string& progId) -> std::shared_ptr<ports::ForeignObject> {
        throw Error(ErrorNumber::CannotCreateObject, "install " + progId);
    };
    EXPECT_EQ(Read(),
              "excel read excel; create server; excel init 77 without host / load frmConnect / ");
}

TEST_F(ControlProperties, AreReportedAsChangedByTheCommandsThatChangeThem) {
    int changes = 0;
    control->OnPropertiesChanged = [&] { ++changes; };
    control->DoAbout();
    control->UpdateConnectedStatus();
    EXPECT_EQ(changes, 0);
    control->SetConnectedApplication(host);
    EXPECT_EQ(changes, 1);
    control->SetConnectedApplication(host);
    EXPECT_EQ(changes, 1) << "the same kind of host";
    Connect("GPIB0::19");
    EXPECT_EQ(changes, 2);
    const auto setUp = [&](const std::function<void(FakeStateInfo&)>& userActs) {
        desk.Screen.Then([&, userActs] {
            userActs(*suite.LastStates);
            desk.Screen.Close(*desk.Screen.LastShown);
        });
        control->DoSetup();
    };
    setUp([](FakeStateInfo& list) { list.Setup->SetSetupValue(list.Setup->SetupValue()); });
    EXPECT_EQ(changes, 2) << "a state that is restored changes the instrument alone";
    setUp([](FakeStateInfo& list) { list.Snapshot = list.Setup->SetupValue(); });
    EXPECT_EQ(changes, 3);
}

}  // namespace
}  // namespace krv::tests
