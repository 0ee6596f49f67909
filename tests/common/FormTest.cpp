#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "common/Error.h"
#include "common/forms/ControlArray.h"
#include "common/forms/Controls.h"
#include "common/forms/Form.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/FindControl.h"
#include "tests/support/ScriptedDesktop.h"

namespace krv::tests {
namespace {

using namespace forms;

using Lines = std::vector<std::string>;

// A form with a control of each kind, whose events are noted in the screen's list of changes, so
// that one list shows the order of both.
class SampleForm final : public Form {
 public:
    explicit SampleForm(ScriptedScreen& screen) : Form("sample", screen), m_screen(screen) {
        combo.Items = {"one", "two", "three"};
        Note(box.OnChange, "box");
        Note(button.OnClick, "button");
        Note(check.OnClick, "check");
        Note(red.OnClick, "red");
        Note(blue.OnClick, "blue");
        Note(big.OnClick, "big");
        Note(combo.OnClick, "combo");
        Note(timer.OnTimer, "timer");
    }

    Frame frame{*this, "frame"};
    TextBox box{*this, "box", &frame};
    CommandButton button{*this, "button", &frame};
    CheckBox check{*this, "check", &frame};
    OptionButton red{*this, "red", &frame};
    OptionButton blue{*this, "blue", &frame};
    OptionButton big{*this, "big"};
    ComboBox combo{*this, "combo", &frame};
    ProgressBar bar{*this, "bar"};
    ControlArray<Label> labels{*this, "labels", 2};
    Timer timer{*this, "timer"};

    std::function<void()> DoOnLoad;
    std::function<void()> DoOnActivate;
    int Unloads = 0;

 protected:
    void OnLoad() override { Raise(DoOnLoad); }
    void OnActivate() override { Raise(DoOnActivate); }
    void OnUnload() override { ++Unloads; }

 private:
    void Note(EventHandler& handler, const std::string& name) {
        handler = [this, name] { m_screen.Changes.push_back("event " + name); };
    }

    ScriptedScreen& m_screen;
};

class Forms : public ::testing::Test {
 protected:
    ScriptedScreen screen;
    SampleForm form{screen};

    // What the screen and the handlers heard of while the action ran.
    Lines Heard(const std::function<void()>& action) {
        screen.Changes.clear();
        action();
        return screen.Changes;
    }
};

TEST_F(Forms, AChangeFromCodeRaisesTheEventOnceAfterTheScreenHasHeard) {
    form.Load();
    struct Case {
        std::function<void()> write;
        Lines first;
    };
    const std::vector<Case> cases{
        {[&] { form.box.Text = "5"; }, {"box Text", "event box"}},
        {[&] { form.check.Value = true; }, {"check Value", "event check"}},
        {[&] { form.red.Value = true; }, {"red Value", "event red"}},
        {[&] { form.blue.Value = true; }, {"blue Value", "red Value", "event blue"}},
        {[&] { form.blue.Value = false; }, {"blue Value"}},
        {[&] { form.combo.ListIndex = 1; }, {"combo ListIndex", "event combo"}},
        {[&] { form.box.Enabled = false; }, {"box Enabled"}},
        {[&] { form.bar.Value = 7.0F; }, {"bar Value"}},
        {[&] { form.Caption = "Title"; }, {"sample Caption"}},
    };
    for (std::size_t index = 0; index < cases.size(); ++index) {
        SCOPED_TRACE(index);
        EXPECT_EQ(Heard(cases[index].write), cases[index].first);
        EXPECT_EQ(Heard(cases[index].write), Lines{});
    }
}

TEST_F(Forms, AHandlerThatWritesItsOwnControlSeesEachValueOnce) {
    form.box.OnChange = [&] {
        screen.Changes.push_back("now " + form.box.Text.Get());
        form.box.Text = "end";
    };
    EXPECT_EQ(Heard([&] { form.box.Text = "start"; }), (Lines{"now start", "now end"}));
}

TEST_F(Forms, TheScreenHearsOfChangesOnlyWhileTheFormIsLoaded) {
    EXPECT_EQ(Heard([&] { form.box.Text = "before"; }), Lines{"event box"});
    form.Load();
    EXPECT_EQ(Heard([&] { form.box.Text = "loaded"; }), (Lines{"box Text", "event box"}));
    form.box.Refresh();
    form.Unload();
    EXPECT_EQ(Heard([&] { form.box.Text = "after"; }), Lines{"event box"});
    form.box.Refresh();
    EXPECT_EQ(screen.Repaints, Lines{"box"});
}

TEST_F(Forms, AControlTheUserCannotReachTakesNoInput) {
    struct Case {
        const char* what;
        std::function<void(bool)> set;
    };
    const std::vector<Case> obstacles{
        {"disabled frame", [&](bool on) { form.frame.Enabled = !on; }},
        {"hidden frame", [&](bool on) { form.frame.Visible = !on; }},
        {"disabled controls",
         [&](bool on) {
             for (Control* control : form.Controls()) {
                 control->Enabled = control == &form.frame || !on;
             }
         }},
        {"hidden controls",
         [&](bool on) {
             for (Control* control : form.Controls()) {
                 control->Visible = control == &form.frame || !on;
             }
         }},
    };
    const auto useAll = [&] {
        return Lines{screen.Click(form.button) ? "button" : "", screen.Click(form.check) ? "c" : "",
                     screen.Click(form.red) ? "red" : "", screen.Type(form.box, "x") ? "box" : "",
                     screen.Select(form.combo, 2) ? "combo" : ""};
    };
    for (const Case& obstacle : obstacles) {
        SCOPED_TRACE(obstacle.what);
        obstacle.set(true);
        EXPECT_EQ(useAll(), (Lines{"", "", "", "", ""}));
        obstacle.set(false);
    }
    EXPECT_EQ(screen.Changes, Lines{});
    EXPECT_EQ(useAll(), (Lines{"button", "c", "red", "box", "combo"}));
    EXPECT_EQ(screen.Changes,
              (Lines{"event button", "event check", "event red", "event box", "event combo"}));
}

TEST_F(Forms, OptionButtonsExcludeOneAnotherWithinTheirContainerOnly) {
    form.big.Value = true;
    screen.Click(form.red);
    EXPECT_EQ(Heard([&] { screen.Click(form.blue); }), Lines{"event blue"});
    EXPECT_EQ(Heard([&] { screen.Click(form.blue); }), Lines{});
    EXPECT_FALSE(form.red.Value);
    EXPECT_TRUE(form.blue.Value);
    EXPECT_TRUE(form.big.Value);
}

TEST_F(Forms, AComboBoxRefusesAnIndexWithoutAnItem) {
    form.Load();
    form.combo.ListIndex = 2;
    for (const int index : {3, -2}) {
        EXPECT_EQ(ErrorNumberOf([&] { form.combo.ListIndex = index; }), 380) << index;
        EXPECT_FALSE(screen.Select(form.combo, index)) << index;
    }
    EXPECT_EQ(form.combo.Text(), "three");
    EXPECT_EQ(Heard([&] {
                  form.combo.Items = {"un", "deux"};
              }),
              (Lines{"combo Items", "combo ListIndex"}));
    EXPECT_EQ(form.combo.ListIndex, -1);
    EXPECT_EQ(form.combo.Text(), "");
}

TEST_F(Forms, AProgressBarRefusesWhatLiesOutsideItsRange) {
    form.bar.Value = 90.0F;
    EXPECT_EQ(ErrorNumberOf([&] { form.bar.Min = 100.0F; }), 380);
    EXPECT_EQ(ErrorNumberOf([&] { form.bar.Max = 0.0F; }), 380);
    EXPECT_EQ(ErrorNumberOf([&] { form.bar.Value = 100.5F; }), 380);
    EXPECT_EQ(form.bar.StateText(), "bar 0..100=90");
    form.bar.Max = 50.0F;
    EXPECT_EQ(form.bar.StateText(), "bar 0..50=50");
    form.bar.Max = 100.0F;
    form.bar.Min = 60.0F;
    EXPECT_EQ(form.bar.StateText(), "bar 60..100=60");
}

TEST_F(Forms, ATimerWaitsAnewAfterEachWrite) {
    form.timer.SetInterval(250);
    EXPECT_EQ(Heard([&] { screen.Advance(1000); }), Lines{}) << "the form isn't loaded";
    form.Load();
    screen.Advance(200);
    form.timer.SetInterval(250);
    EXPECT_EQ(Heard([&] { screen.Advance(200); }), Lines{}) << "the same interval, written again";
    form.timer.SetTimerEnabled(true);
    EXPECT_EQ(Heard([&] { screen.Advance(200); }), Lines{}) << "enabled, written again";
    EXPECT_EQ(Heard([&] { screen.Advance(50); }), Lines{"event timer"});
    EXPECT_EQ(Heard([&] { screen.Advance(250); }), Lines{"event timer"});
    form.timer.SetTimerEnabled(false);
    EXPECT_EQ(Heard([&] { screen.Advance(1000); }), Lines{}) << "disabled";
    form.timer.SetTimerEnabled(true);
    form.timer.SetInterval(0);
    EXPECT_EQ(Heard([&] { screen.Advance(1000); }), Lines{}) << "no interval";
    EXPECT_EQ(ErrorNumberOf([&] { form.timer.SetInterval(-1); }), 380);
}

TEST_F(Forms, AModalShowLastsUntilTheFormIsHidden) {
    form.DoOnActivate = [&] { screen.Changes.push_back("active"); };
    screen.Then([&] {
        EXPECT_TRUE(form.IsModal());
        EXPECT_EQ(ErrorNumberOf([&] { form.ShowModal(); }), 400);
        form.ShowModeless();
    });
    screen.Then([&] { form.Hide(); });
    screen.Then([] { FAIL() << "the show has ended"; });
    form.ShowModal();
    EXPECT_FALSE(form.IsModal());
    EXPECT_FALSE(form.IsVisible());
    EXPECT_EQ(screen.Shows, (Lines{"load sample", "modal sample", "hide sample"}));
    EXPECT_EQ(screen.Changes, Lines{"active"});

    form.ShowModeless();
    EXPECT_EQ(ErrorNumberOf([&] { form.ShowModal(); }), 400);
    screen.Close(form);
    EXPECT_FALSE(form.IsVisible());
}

TEST_F(Forms, AnErrorInsideAModalShowHidesTheFormAndGoesOn) {
    form.DoOnActivate = [] { throw Error(57); };
    EXPECT_EQ(ErrorNumberOf([&] { form.ShowModal(); }), 57);
    EXPECT_FALSE(form.IsVisible());
    EXPECT_FALSE(form.IsModal());
    EXPECT_EQ(screen.Shows.back(), "hide sample");
}

TEST_F(Forms, AFormLoadsOnceUntilItIsUnloaded) {
    int loads = 0;
    form.DoOnLoad = [&] {
        ++loads;
        form.Load();
        form.box.Text = "filled";
    };
    form.Load();
    form.ShowModeless();
    form.Hide();
    form.ShowModeless();
    EXPECT_EQ(loads, 1);
    EXPECT_EQ(screen.Changes, (Lines{"box Text", "event box"}));
    form.Unload();
    form.Unload();
    EXPECT_EQ(form.Unloads, 1);
    form.ShowModeless();
    EXPECT_EQ(loads, 2);
    EXPECT_EQ(screen.Shows, (Lines{"load sample", "show sample", "hide sample", "show sample",
                                   "hide sample", "unload sample", "load sample", "show sample"}));
}

TEST_F(Forms, AFormWhoseLoadFailsIsNotLoaded) {
    form.DoOnLoad = [] { throw Error(91); };
    EXPECT_EQ(ErrorNumberOf([&] { form.ShowModeless(); }), 91);
    EXPECT_FALSE(form.IsLoaded());
    EXPECT_FALSE(form.IsVisible());
    EXPECT_EQ(screen.Shows, (Lines{"load sample", "unload sample"}));
}

TEST_F(Forms, ADestroyedFormLeavesTheScreenWithoutControls) {
    auto other = std::make_unique<SampleForm>(screen);
    other->timer.SetInterval(10);
    other->Load();
    other.reset();
    EXPECT_EQ(screen.Shows.back(), "unload sample");
    EXPECT_EQ(Heard([&] { screen.Advance(100); }), Lines{});
}

TEST_F(Forms, AControlArrayHasNoElementOutsideItsIndexes) {
    form.labels[1].Caption = "second";
    EXPECT_EQ(FindControl(form, "labels", 1), &form.labels[1]);
    EXPECT_EQ(FindControl(form, "labels"), nullptr);
    EXPECT_EQ(ErrorNumberOf([&] { form.labels[2].Caption = ""; }), 340);
    EXPECT_EQ(ErrorNumberOf([&] { form.labels[-1].Caption = ""; }), 340);
}

}  // namespace
}  // namespace krv::tests
