// The settings command with the suite's own state control in its dialog, worked by the keyboard
// alone before an instrument that is simulated in process.
#include <string>

#include "suite/windows/states/StateWindow.h"
#include "tests/windows/support/ControlTest.h"
#include "tests/windows/support/DialogUser.h"
#include "tests/windows/support/RegisteredLibrary.h"

namespace krv::tests {
namespace {

using bench::UserWindow;
using suite::StateWindow;

class SetupDialogTest : public ControlTest {
 protected:
    // A part of the panel by its identifier in it.
    static UserWindow Part(const UserWindow& panel, int id) {
        return UserWindow(GetDlgItem(panel.Handle(), id));
    }
    // Presses the key; the part that has the keyboard afterwards, 0 for one of the form itself.
    static int Press(const UserWindow& dialog, const UserWindow& panel, WPARAM key) {
        const HWND before = dialog.Focused().Handle();
        dialog.Press(key);
        bench::WaitUntil([&] { return dialog.Focused().Handle() != before; });
        const HWND focused = dialog.Focused().Handle();
        return IsChild(panel.Handle(), focused) != FALSE ? GetDlgCtrlID(focused) : 0;
    }
    // Presses the key until the part has the keyboard.
    static void GoTo(const UserWindow& dialog, const UserWindow& panel, int id) {
        for (int steps = 0; steps < 10 && Press(dialog, panel, VK_TAB) != id; ++steps) {
        }
        EXPECT_EQ(GetDlgCtrlID(dialog.Focused().Handle()), id);
    }

    const RegisteredLibrary m_suite{TestedLibrary::Suite()};
};

TEST_F(SetupDialogTest, CanBeWorkedByTheKeyboard) {
    const windows::LateBound control = NewControl();
    Connect(control, "sim://M7718C");
    Boxes.Texts();
    Boxes.Hold(true);
    Let(
        [] {
            const UserWindow dialog = Dialog("Capture/Restore Settings");
            const UserWindow panel = dialog.Part("CvnStateWindow");
            const UserWindow list = Part(panel, StateWindow::StateListView);
            Part(panel, StateWindow::NameBox).Type("x");
            dialog.Press(VK_RETURN);
            dialog.Part("Captured \"x\".");
            Part(panel, StateWindow::NameBox).Expect("State 1");
            GoTo(dialog, panel, StateWindow::StateListView);
            dialog.Press(VK_F2);
            list.Part("Edit").Type("abandoned");
            dialog.Press(VK_ESCAPE);
            EXPECT_TRUE(bench::WaitUntil([&] { return !list.HasPart("Edit"); }));
            EXPECT_TRUE(dialog.IsShown());
            dialog.Press(VK_DELETE);
            EXPECT_EQ(bench::Answer("Delete the state", "No", GetCurrentProcessId()),
                      "Delete the state \"x\"?");
            GoTo(dialog, panel, StateWindow::DeleteButton);
            EXPECT_EQ(Press(dialog, panel, VK_TAB), 0) << "on to the form's own button";
            dialog.Press(VK_ESCAPE);
            dialog.ExpectGone();
        },
        [&] { control.Call(L"DoSetup"); });
}

}  // namespace
}  // namespace krv::tests
