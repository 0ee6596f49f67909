// The settings command with the suite's own state control in its dialog, before an instrument that
// is simulated in process: what the user sees and does, from the button to the instrument.
#include <string>
#include <thread>

#include "suite/windows/states/StateWindow.h"
#include "tests/support/RunningGenerator.h"
#include "tests/windows/AboutBoxUser.h"
#include "tests/windows/ConnectDialogUser.h"
#include "tests/windows/ControlTest.h"

namespace krv::testing {
namespace {

using suitecom::StateWindow;
using windows::LateBound;

std::string TextOf(HWND window) {
    wchar_t text[512] = L"";
    SendMessageW(window, WM_GETTEXT, 512, reinterpret_cast<LPARAM>(text));
    return windows::ToUtf8(text);
}

template <class Condition>
bool Waits(Condition&& holds) {
    for (int tries = 0; tries < 1000; ++tries) {
        if (holds()) {
            return true;
        }
        Sleep(10);
    }
    return false;
}

// The user in front of the settings dialog, in a thread of its own.
class SetupUser {
 public:
    SetupUser() {
        m_dialog = AboutBoxUser::FormWindow(L"Capture/Restore Settings");
        m_panel = ConnectDialogUser::Find(m_dialog, L"CvnStateWindow");
    }

    [[nodiscard]] HWND Dialog() const { return m_dialog; }
    [[nodiscard]] HWND Child(int id) const { return GetDlgItem(m_panel, id); }
    void Click(int id) const { SendMessageW(Child(id), BM_CLICK, 0, 0); }
    [[nodiscard]] bool CanClick(int id) const { return IsWindowEnabled(Child(id)) != 0; }
    void EnterName(const wchar_t* name) const {
        SendMessageW(Child(StateWindow::NameBox), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(name));
    }
    // A key that the window with the focus gets: after a message box it takes a moment to come
    // back.
    void Press(WPARAM key) const {
        EXPECT_TRUE(Waits([&] { return IsChild(m_dialog, FocusedWindow()) != 0; }));
        const HWND focused = FocusedWindow();
        PostMessageW(focused, WM_KEYDOWN, key, 1);
        PostMessageW(focused, WM_KEYUP, key, 1);
        // A sent message is answered when those that were posted before have been worked off.
        for (int turn = 0; turn < 5; ++turn) {
            SendMessageW(m_dialog, WM_NULL, 0, 0);
            Sleep(20);
        }
    }
    // Of the panel; 0 for a control of the form itself.
    [[nodiscard]] int FocusedChild() const {
        const HWND focused = FocusedWindow();
        return IsChild(m_panel, focused) != 0 ? GetDlgCtrlID(focused) : 0;
    }
    // The names of the states, the selected one in brackets.
    [[nodiscard]] std::string States() const {
        const HWND list = Child(StateWindow::StateListView);
        const auto count = SendMessageW(list, LVM_GETITEMCOUNT, 0, 0);
        std::string names;
        for (int row = 0; row < count; ++row) {
            const std::string name = Cell(row, 0);
            const bool selected =
                SendMessageW(list, LVM_GETITEMSTATE, static_cast<WPARAM>(row), LVIS_SELECTED) != 0;
            names += (row == 0 ? "" : " ") + (selected ? '[' + name + ']' : name);
        }
        return names;
    }
    // The list belongs to this process, and so can read where a message points to.
    [[nodiscard]] std::string Cell(int row, int column) const {
        wchar_t text[128] = L"";
        LVITEMW item{};
        item.iSubItem = column;
        item.pszText = text;
        item.cchTextMax = 128;
        SendMessageW(Child(StateWindow::StateListView), LVM_GETITEMTEXTW, static_cast<WPARAM>(row),
                     reinterpret_cast<LPARAM>(&item));
        return windows::ToUtf8(text);
    }
    void Select(int row) const {
        LVITEMW item{};
        item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
        item.state = LVIS_SELECTED | LVIS_FOCUSED;
        SendMessageW(Child(StateWindow::StateListView), LVM_SETITEMSTATE, static_cast<WPARAM>(row),
                     reinterpret_cast<LPARAM>(&item));
    }
    void RenameTo(const wchar_t* name) const {
        Click(StateWindow::RenameButton);
        const HWND list = Child(StateWindow::StateListView);
        const auto edit = reinterpret_cast<HWND>(SendMessageW(list, LVM_GETEDITCONTROL, 0, 0));
        SendMessageW(edit, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(name));
        Press(VK_RETURN);
    }
    [[nodiscard]] std::string Status() const { return TextOf(Child(StateWindow::StatusLabel)); }
    void Close() const { PostMessageW(m_dialog, WM_CLOSE, 0, 0); }

 private:
    // The focus takes a moment to come, also after a message box.
    [[nodiscard]] HWND FocusedWindow() const {
        GUITHREADINFO information{};
        information.cbSize = sizeof information;
        EXPECT_TRUE(Waits([&] {
            GetGUIThreadInfo(GetWindowThreadProcessId(m_dialog, nullptr), &information);
            return IsChild(m_dialog, information.hwndFocus) != 0;
        }));
        return information.hwndFocus;
    }

    HWND m_dialog = nullptr;
    HWND m_panel = nullptr;
};

// Answers the next message box with Yes or No.
std::string AnswerBox(int answer) {
    std::string text;
    Waits([&] {
        const HWND box = FindWindowW(L"#32770", L"Instrument States");
        if (box == nullptr || IsWindowVisible(box) == 0) {
            return false;
        }
        text = TextOf(GetDlgItem(box, 0xFFFF));
        PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(answer), 0);
        return Waits([&] { return IsWindow(box) == 0; });
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

    template <class Work>
    static void SetUpWith(const LateBound& control, const Work& work) {
        std::thread acting([&] {
            const SetupUser user;
            work(user);
            user.Close();
        });
        control.Call(L"DoSetup");
        acting.join();
    }
};

TEST_F(SetupDialogTest, CapturesRestoresRenamesAndDeletes) {
    const auto generator = std::make_shared<bench::Generator>(bench::GeneratorSettings{});
    const RunningGenerator running(generator);
    const auto frequency = [&]() -> double& { return generator->Output().frequencyHz; };
    const LateBound control = ConnectedControl(running.Address());
    Boxes.Texts();
    Boxes.Hold(true);
    std::string seen;
    std::string question;
    SetUpWith(control, [&](const SetupUser& user) {
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
    SetUpWith(control, [&](const SetupUser& user) { seen = user.States(); });
    EXPECT_EQ(seen, "[one]") << "the control keeps its states from one dialog to the next";
    EXPECT_TRUE(Boxes.Texts().empty());
}

TEST_F(SetupDialogTest, CanBeWorkedByTheKeyboard) {
    const LateBound control = ConnectedControl("sim://M7718C");
    Boxes.Texts();
    Boxes.Hold(true);
    std::string seen;
    SetUpWith(control, [&](const SetupUser& user) {
        seen += user.FocusedChild() == StateWindow::NameBox ? "name;" : "elsewhere;";
        user.Press(VK_RETURN);
        seen += user.States() + ';';
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
        seen += Waits([&] { return IsWindowVisible(user.Dialog()) == 0; }) ? "closed" : "open";
    });
    EXPECT_EQ(seen, "name;[State 1];list;[State 1];[State 1];delete;form;closed");
}

TEST_F(SetupDialogTest, TellsOfAFailureAndLosesNothing) {
    auto generator = std::make_unique<RunningGenerator>();
    const LateBound control = ConnectedControl(generator->Address());
    Boxes.Texts();
    std::string seen;
    SetUpWith(control, [&](const SetupUser& user) {
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
}  // namespace krv::testing
