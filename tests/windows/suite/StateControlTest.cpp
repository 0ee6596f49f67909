// The state control in a container that doesn't wait for it.
#include "suite/windows/states/StateWindow.h"
#include "tests/windows/support/AnswerBox.h"
#include "tests/windows/support/AtlContainer.h"
#include "tests/windows/support/ScriptedObject.h"
#include "tests/windows/support/SuiteTest.h"

namespace krv::tests {
namespace {

using suite::StateWindow;
using windows::LateBound;

TEST_F(SuiteTest, AStateControlThatIsReleasedWhileItAsksGoesAfterTheAnswer) {
    LateBound info = Create(__uuidof(StateInfo));
    const auto setup =
        NewScripted({{L"Model", L"M7718C"}, {L"Version", L"C.01"}, {L"SetupValue", L"state"}});
    info.PutObject(L"SetupInterface", setup.Get());
    info.Call(L"Capture", {L"x"});
    LateBound control = Create(__uuidof(InstrumentState));
    control.PutObject(L"StateInfo", info.Object());
    {
        const AtlContainer host(control.Object());
        long objectsMeanwhile = 0;
        AnswerBox(L"Instrument States", IDYES, [&] {
            EXPECT_EQ(IsWindowEnabled(host.Frame()), FALSE);
            DestroyWindow(GetParent(host.Control()));
            control = LateBound();
            objectsMeanwhile = TestedLibrary::Suite().ObjectCount();
        });
        host.Click(StateWindow::DeleteButton);
        EXPECT_GT(objectsMeanwhile, 1) << "the list, and the control that is asking";
        EXPECT_NE(IsWindowEnabled(host.Frame()), FALSE);
    }
    EXPECT_EQ(info.GetLong(L"Count"), 0);
    info.PutObject(L"SetupInterface", nullptr);
}

}  // namespace
}  // namespace krv::tests
