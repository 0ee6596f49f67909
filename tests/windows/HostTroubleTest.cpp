// Containers that drop the control while its dialogs are open.
#include <atomic>
#include <functional>
#include <string>
#include <thread>

#include "bench/session/windows/UserDesktop.h"
#include "tests/windows/ControlTest.h"
#include "tests/windows/HostedControl.h"
#include "tests/windows/RegisteredLibrary.h"

namespace krv::testing {
namespace {

using bench::UserWindow;
using bench::WindowOf;
using windows::HostedControl;
using windows::LateBound;

class HostTrouble : public ControlTest {
 protected:
    // Does the work on this thread, which also serves the windows, while the user works in another.
    static void Let(
        const std::function<void()>& user, const std::function<void()>& work = [] {}) {
        std::atomic<bool> done = false;
        std::string problem;
        std::thread thread([&] {
            try {
                user();
            } catch (const bench::SessionError& error) {
                problem = error.what();
            }
            done = true;
        });
        work();
        while (!done) {
            windows::PumpMessages();
            Sleep(1);
        }
        thread.join();
        EXPECT_EQ(problem, "");
    }

    static UserWindow Window(const char* caption) {
        return WindowOf(caption, GetCurrentProcessId());
    }
    // Leaves the download dialog open, with a generator in process connected.
    static void OpenDownload(const LateBound& control) {
        Let(
            [] {
                const UserWindow dialog = Window(" Connect To TQL/KRV Signal Generator");
                dialog.Part("Edit").Type("sim://M7718C");
                dialog.Part("Connect").Click();
                dialog.Part("Connected to M7718C at sim://M7718C.");
                dialog.Part("Close").Click();
            },
            [&] { control.Call(L"DoConnect"); });
        control.Call(L"DoDataTransfer", {_variant_t(0L), _variant_t(0L)});
    }
    static bool HasForms() {
        for (const UserWindow& window : bench::TopWindows(GetCurrentProcessId())) {
            if (window.ClassName() == "KRVForm") {
                return true;
            }
        }
        return false;
    }

    const RegisteredLibrary m_suite{TestedLibrary::Suite()};
};

TEST_F(HostTrouble, ADialogGoesWithAControlThatItsContainerDrops) {
    LateBound control = NewControl();
    {
        const HostedControl host(control.Object());
        OpenDownload(control);
        EXPECT_TRUE(HasForms());
    }
    control = LateBound();
    EXPECT_FALSE(HasForms());
}

}  // namespace
}  // namespace krv::testing
