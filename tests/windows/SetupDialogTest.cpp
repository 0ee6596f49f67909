// The settings command with the suite's own state control in its dialog, before an instrument that
// is simulated in process: what the user sees and does, from the button to the instrument.
#include <string>
#include <thread>

#include "tests/support/RunningGenerator.h"
#include "tests/windows/ConnectDialogUser.h"
#include "tests/windows/ControlTest.h"
#include "tests/windows/SetupDialogUser.h"

namespace krv::tests {

using namespace bench;
using namespace windows;
namespace {

using suite::StateWindow;
using windows::LateBound;

// Answers the next message box with Yes or No.
std::string AnswerBox(int answer) {
    std::string text;
    SetupUser::Waits([&] {
        const HWND box = FindWindowW(L"#32770", L"Instrument States");
        if (box == nullptr || IsWindowVisible(box) == 0) {
            return false;
        }
        text = SetupUser::TextOf(GetDlgItem(box, 0xFFFF));
        PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(answer), 0);
        return SetupUser::Waits([&] { return IsWindow(box) == 0; });
    });
    return text;
}

class SetupDialogTest : public ControlTest {
 protected:
    SetupDialogTest() { EXPECT_EQ(TestedLibrary::Suite().Register(), S_OK); }
    ~SetupDialogTest() override {
        EXPECT_EQ(TestedLibrary::Suite().ObjectCount(), 0);
        EXPECT_EQ(TestedLibrary::Suite().Unregister(), S_OK);
    }

    // A control that has been connected by its dialog's discovery control.
    LateBound ConnectedControl(const std::string& address) {
        const LateBound control = NewControl();
        ConnectDialogUser::Connect(control, [&](HWND dialog) {
            ConnectDialogUser::ConnectTo(dialog, windows::ToWide(address));
        });
        return control;
    }
};

TEST_F(SetupDialogTest, CapturesRestoresRenamesAndDeletes) {
    const auto generator = std::make_shared<simulator::Generator>(simulator::GeneratorSettings{});
    const RunningGenerator running(generator);
    const auto frequency = [&]() -> double& { return generator->Output().frequencyHz; };
    const LateBound control = ConnectedControl(running.Address());
    Boxes.Texts();
    Boxes.Hold(true);
    std::string seen;
    std::string question;
    SetupUser::SetUp(control, [&](const SetupUser& user) {
        seen += user.CanClick(StateWindow::CaptureButton) ? "C" : "-";
        seen += user.CanClick(StateWindow::RestoreButton) ? "R" : "-";
        seen += user.CanClick(StateWindow::DeleteButton) ? "D;" : "-;";
        frequency() = 1e9;
        user.Click(StateWindow::CaptureButton);
        frequency() = 2e9;
        user.EnterName(L"two");
        user.Click(StateWindow::CaptureButton);
        seen += user.States() + ';' + user.Status() + ';' + user.Cell(1, 2) + ';';
        user.Select(0);
        user.Click(StateWindow::RestoreButton);
        seen += frequency() == 1e9 ? "1 GHz;" : "unchanged;";
        user.RenameTo(L"one");
        seen += user.States() + ';';
        user.Select(1);
        std::thread answer([&] { question = AnswerBox(IDYES); });
        user.Click(StateWindow::DeleteButton);
        answer.join();
        seen += user.States();
    });
    EXPECT_EQ(seen,
              "C--;State 1 [two];Captured \"two\".;M7718C (B.03.40);1 GHz;"
              "[one] two;[one]");
    EXPECT_EQ(question, "Delete the state \"two\"?");
    Boxes.Hold(false);

    seen.clear();
    SetupUser::SetUp(control, [&](const SetupUser& user) { seen = user.States(); });
    EXPECT_EQ(seen, "[one]") << "the control keeps its states from one dialog to the next";
    EXPECT_TRUE(Boxes.Texts().empty());
}

TEST_F(SetupDialogTest, CanBeWorkedByTheKeyboard) {
    const LateBound control = ConnectedControl("sim://M7718C");
    Boxes.Texts();
    Boxes.Hold(true);
    std::string seen;
    SetupUser::SetUp(control, [&](const SetupUser& user) {
        seen += user.FocusedChild() == StateWindow::NameBox ? "name;" : "elsewhere;";
        user.TypeInto(StateWindow::NameBox, L'x');
        user.Press(VK_RETURN);
        user.TypeInto(StateWindow::NameBox, L'y');
        seen += user.States() + SetupUser::TextOf(user.Child(StateWindow::NameBox)) + ';';
        user.Press(VK_TAB);
        user.Press(VK_TAB);
        seen += user.FocusedChild() == StateWindow::StateListView ? "list;" : "elsewhere;";
        user.Press(VK_F2);
        const auto edit = reinterpret_cast<HWND>(
            SendMessageW(user.Child(StateWindow::StateListView), LVM_GETEDITCONTROL, 0, 0));
        SendMessageW(edit, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"abandoned"));
        user.Press(VK_ESCAPE);
        seen += user.States() + ';';
        std::thread answer([] { AnswerBox(IDNO); });
        user.Press(VK_DELETE);
        answer.join();
        seen += user.States() + ';';
        for (int steps = 0; steps < 3; ++steps) {
            user.Press(VK_TAB);
        }
        seen += user.FocusedChild() == StateWindow::DeleteButton ? "delete;" : "elsewhere;";
        user.Press(VK_TAB);
        seen += user.FocusedChild() == 0 ? "form;" : "panel;";
        user.Press(VK_ESCAPE);
        seen += SetupUser::Waits([&] { return IsWindowVisible(user.Dialog()) == 0; }) ? "closed"
                                                                                      : "open";
    });
    EXPECT_EQ(seen, "name;[x]y;list;[x];[x];delete;form;closed");
}

TEST_F(SetupDialogTest, TellsOfAFailureAndLosesNothing) {
    auto generator = std::make_unique<RunningGenerator>();
    const LateBound control = ConnectedControl(generator->Address());
    Boxes.Texts();
    std::string seen;
    SetupUser::SetUp(control, [&](const SetupUser& user) {
        user.Click(StateWindow::CaptureButton);
        generator.reset();
        user.Click(StateWindow::CaptureButton);
        user.Click(StateWindow::RestoreButton);
        seen = user.States();
    });
    EXPECT_EQ(seen, "[State 1]");
    const auto boxes = Boxes.Texts();
    ASSERT_GE(boxes.size(), 2U);
    EXPECT_TRUE(boxes[0].starts_with("The state has not been captured.")) << boxes[0];
    EXPECT_TRUE(
        boxes[1].starts_with("State restore operation failed--state has not been restored."))
        << boxes[1];
}

}  // namespace
}  // namespace krv::tests
