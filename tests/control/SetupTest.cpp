#include "settings/FrmSetup.h"

#include "common/MemoryPropertyBag.h"
#include "tests/control/ControlTest.h"

namespace krv::tests {

using namespace control;
using namespace hosts;
namespace {

class SetupTest : public ControlTest {
 protected:
    SetupTest() { suite.Server->Session = std::make_shared<FakeSession>(log, "GPIB0::19"); }

    // Gives the command and plays the user of the dialog, who closes it at last.
    void SetUpWith(std::function<void()> user) {
        desk.Screen.Then([this, user = std::move(user)] {
            user();
            auto* const dialog = dynamic_cast<settings::FrmSetup*>(desk.Screen.LastShown);
            ASSERT_NE(dialog, nullptr);
            desk.Screen.Click(dialog->cmdClose);
        });
        control->DoSetup();
    }
    ports::SetupInterface& AskedOne() { return *suite.LastStates->Setup; }
};

TEST_F(SetupTest, LendsItselfToTheStatesWhileTheDialogIsOpen) {
    AttachHost();
    control->UpdateConnectedStatus();
    log.Take();
    SetUpWith([&] {
        EXPECT_EQ(log.Take(),
                  "create states; give setup; show states; write states; create utilities");
        EXPECT_EQ(states->Info, suite.LastStates);
        EXPECT_EQ(AskedOne().Model() + ' ' + AskedOne().Version(), "M7718C C.01.00");
        EXPECT_EQ(AskedOne().GetLegacyVantorFileInfo("a", "b"), nullptr);
        EXPECT_EQ(&AskedOne().Surface(), &surface);
        log.Take();
    });
    EXPECT_EQ(log.Take(),
              "write states; Model; enable 3; connected look My Computer; local GPIB0::19; "
              "take setup back");
    EXPECT_EQ(Shows(), "load FrmSetup; modal FrmSetup; hide FrmSetup; unload FrmSetup");
    const auto first = suite.LastStates;
    SetUpWith([] {});
    EXPECT_EQ(suite.LastStates, first) << "one list lasts as long as the control";
}

TEST_F(SetupTest, CapturesAndRestoresWhateverTheServerCallsAState) {
    SetUpWith([&] {
        AskedOne().Model();
        log.Take();
        const Value snapshot = AskedOne().SetupValue();
        EXPECT_EQ(log.Take(), "CaptureState; local GPIB0::19");
        suite.Server->State = std::string("changed");
        AskedOne().SetSetupValue(snapshot);
        EXPECT_EQ(log.Take(), "RestoreState; local GPIB0::19");
        EXPECT_EQ(suite.Server->State, Value(std::string("as switched on")));
        log.FailAt = "CaptureState";
        EXPECT_THROW(AskedOne().SetupValue(), Error) << "the state control reports it";
    });
    EXPECT_EQ(Boxes(), "");
}

TEST_F(SetupTest, TakesItselfBackWhateverFails) {
    for (const std::string failing : {"show states", "create utilities", "Model"}) {
        AttachHost();
        log.FailAt = failing;
        if (failing == "Model") {
            SetUpWith([] {});
        } else {
            control->DoSetup();
        }
        EXPECT_EQ(suite.LastStates->Setup, nullptr) << failing;
        EXPECT_TRUE(Shows().ends_with("unload FrmSetup")) << failing;
        log.FailAt.clear();
    }
    EXPECT_EQ(Boxes(), "");
    states = nullptr;
    control->DoSetup();
    EXPECT_EQ(suite.LastStates->Setup, nullptr) << "a component that isn't the state control";
}

TEST_F(SetupTest, KeepsTheControlWhileItTellsWhyAStateIsNotRestored) {
    int told = 0;
    desk.MessageBoxes.OnShow = [&](const std::string&) {
        ++told;
        EXPECT_TRUE(surface.IsKept());
    };
    control->SetSetupValue(EmptyValue{});
    EXPECT_EQ(told, 1);
    EXPECT_FALSE(surface.IsKept());
}

TEST_F(SetupTest, TakesItselfBackFromTheListThatItWasLentTo) {
    std::shared_ptr<FakeStateInfo> lent;
    SetUpWith([&] {
        lent = suite.LastStates;
        MemoryPropertyBag bag;
        bag.Write("instrSetupInfoWritten", true);
        control->ReadProperties(bag);
    });
    EXPECT_EQ(lent->Setup, nullptr);
}

TEST_F(SetupTest, TakesItselfBackWhenItEndsWithTheDialogOpen) {
    SetUpWith([&] {
        control->Terminate();
        EXPECT_EQ(suite.LastStates->Setup, nullptr);
    });
}

}  // namespace
}  // namespace krv::tests
