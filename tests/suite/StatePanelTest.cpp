#include "suite/states/StatePanel.h"

#include <gtest/gtest.h>

#include "common/Error.h"

namespace krv::tests {
namespace {

using namespace suite;

class FakeSource final : public SetupSource {
 public:
    std::string Failure;
    std::string InstrumentState = "1 GHz";
    std::function<void()> WhileAsked;

    std::string Model() override { return "M7718C"; }
    std::string Version() override { return "B.03.40"; }
    Value Capture() override {
        Ask();
        return InstrumentState;
    }
    void Restore(const Value& snapshot) override {
        Ask();
        InstrumentState = std::get<std::string>(snapshot);
    }

 private:
    void Ask() const {
        if (WhileAsked) {
            WhileAsked();
        }
        if (!Failure.empty()) {
            throw Error(ErrorNumber::Unspecified, Failure);
        }
    }
};

// The window, and what the user saw and answers.
class FakeFace final : public StatePanelFace {
 public:
    std::string Told;
    bool Agrees = true;
    bool IsBusy = false;

    void PanelChanged() override {}
    void Report(const std::string& text) override { Told += text + ';'; }
    bool Confirm(const std::string& question) override {
        Told += question + ';';
        return Agrees;
    }
    void SetBusy(bool busy) override { IsBusy = busy; }
};

class StatePanelTest : public ::testing::Test {
 protected:
    double today = 45000;
    std::shared_ptr<StateBook> book =
        std::make_shared<StateBook>([this] { return DateValue{today++}; });
    std::shared_ptr<FakeSource> source = std::make_shared<FakeSource>();
    FakeFace face;
    StatePanel panel{face};

    StatePanelTest() {
        book->SetSource(source);
        panel.Show(book);
    }
    void CaptureAs(const std::string& name) {
        panel.EnterName(name);
        panel.Capture();
    }
    // The states with the selected one in brackets, what is enabled, what was reported.
    std::string Seen() {
        std::string text;
        for (std::size_t index = 0; index < panel.States().size(); ++index) {
            const std::string& name = panel.States()[index].name;
            text += (panel.Selected() == index ? '[' + name + ']' : name) + ' ';
        }
        text += panel.CanCapture() ? "C" : "-";
        text += panel.CanRestore() ? "R" : "-";
        text += panel.CanRenameAndDelete() ? "ND" : "--";
        const std::string told = std::exchange(face.Told, {});
        return told.empty() ? text : text + " / " + told;
    }
};

TEST_F(StatePanelTest, CapturesUnderTheProposedOrTheEnteredName) {
    EXPECT_EQ(Seen(), "C---");
    panel.Capture();
    EXPECT_EQ(Seen(), "[State 1] CRND");
    EXPECT_EQ(panel.NewName(), "State 2");
    source->InstrumentState = "2 GHz";
    CaptureAs("two");
    EXPECT_EQ(Seen(), "State 1 [two] CRND");
    EXPECT_EQ(panel.Status(), "Captured \"two\".");
    const NamedState& state = panel.States()[1];
    EXPECT_EQ(state.model + ' ' + state.version, "M7718C B.03.40");
    EXPECT_EQ(state.captured, DateValue{45001});
    panel.EnterName("  ");
    EXPECT_EQ(Seen(), "State 1 [two] -RND");
}

TEST_F(StatePanelTest, RestoresRenamesAndDeletesTheSelectedState) {
    panel.Capture();
    source->InstrumentState = "2 GHz";
    panel.Capture();
    panel.Select(0);
    panel.Restore();
    EXPECT_EQ(source->InstrumentState, "1 GHz");
    EXPECT_TRUE(panel.Rename("first"));
    EXPECT_EQ(Seen(), "[first] State 2 CRND");
    face.Agrees = false;
    panel.Delete();
    EXPECT_EQ(Seen(), "[first] State 2 CRND / Delete the state \"first\"?;");
    face.Agrees = true;
    panel.Delete();
    EXPECT_EQ(Seen(), "[State 2] CRND / Delete the state \"first\"?;");
    panel.Select(7);
    EXPECT_EQ(Seen(), "State 2 C---");
    panel.Restore();
    panel.Delete();
    EXPECT_FALSE(panel.Rename("x"));
    EXPECT_EQ(Seen(), "State 2 C---");
    EXPECT_EQ(source->InstrumentState, "1 GHz");
}

TEST_F(StatePanelTest, AFailedActionIsReportedAndLosesNothing) {
    panel.Capture();
    source->Failure = "Time-out.";
    CaptureAs("two");
    EXPECT_EQ(Seen(), "[State 1] CRND / The state has not been captured.\r\nTime-out.;");
    EXPECT_EQ(panel.NewName(), "two") << "so that it can be tried again";
    panel.Restore();
    EXPECT_EQ(Seen(), "[State 1] CRND / The state has not been restored.\r\nTime-out.;");
    source->Failure.clear();
    CaptureAs("STATE 1");
    EXPECT_EQ(Seen(),
              "[State 1] CRND / The state has not been captured.\r\nThere is already a state "
              "named \"State 1\".;");
    EXPECT_FALSE(panel.Rename(" "));
    EXPECT_EQ(Seen(),
              "[State 1] CRND / The state has not been renamed.\r\nEnter a name for the state.;");
    EXPECT_FALSE(face.IsBusy);
}

TEST_F(StatePanelTest, OffersWhatCanBeDoneWithoutAnInstrumentControl) {
    panel.Capture();
    book->SetSource(nullptr);
    EXPECT_EQ(Seen(), "[State 1] --ND");
    EXPECT_EQ(panel.Status(), "There is no instrument control to capture states from.");
    panel.Capture();
    panel.Restore();
    EXPECT_EQ(Seen(), "[State 1] --ND");
    EXPECT_THROW(book->Capture("x"), Error);
    panel.Show(nullptr);
    EXPECT_EQ(Seen(), "----");
}

TEST_F(StatePanelTest, StartsNothingWhileTheInstrumentIsTalkedTo) {
    source->WhileAsked = [&] {
        EXPECT_TRUE(face.IsBusy);
        EXPECT_FALSE(panel.CanCapture() || panel.CanRestore());
        panel.Capture();
        panel.Restore();
        panel.Delete();
    };
    panel.Capture();
    EXPECT_EQ(Seen(), "[State 1] CRND");
    source->WhileAsked = [&] { panel.Show(nullptr); };
    panel.Capture();
    EXPECT_EQ(Seen(), "----");
    EXPECT_EQ(book->List().States().size(), 2u) << "captured, though nobody looks any more";
}

}  // namespace
}  // namespace krv::tests
