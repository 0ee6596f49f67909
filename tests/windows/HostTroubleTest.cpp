// Hosts that fail the control: an application that dies during a session, and containers that drop
// the control while its dialogs are open.
#include <atomic>
#include <functional>
#include <string>
#include <thread>

#include "bench/session/windows/UserDesktop.h"
#include "tests/windows/ControlTest.h"
#include "tests/windows/ExcelModel.h"
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
    static constexpr const char* DownloadCaption = "Download Waveform to KRV";

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

TEST_F(HostTrouble, AnApplicationThatDiesIsNamedAndTheControlStaysUsable) {
    ExcelModel excel;
    excel.Cell = [](long, long) { return _variant_t(0.5); };
    excel.Names[L"A1:A200"] = {{1, 1, 200, 1}};
    excel.Application->Properties[L"ActiveWorkbook"] =
        ObjectVariant(NewScripted({{L"Name", L"wave.xls"}}));
    const LateBound control = NewControl();
    control.PutObject(L"ConnectedApplication", excel.Application.Get());
    OpenDownload(control);
    Let([&] {
        const UserWindow dialog = Window(DownloadCaption);
        dialog.Part("optSpreadsheet").Click();
        dialog.Part("textIRange").Type("A1:A200");
        dialog.Part("textINumberPoints").Expect("200");
    });
    // As calls end from now on when the application's process has gone.
    const auto dead = [](const ScriptedCall&) -> _variant_t {
        throw CallFailure{HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE)};
    };
    for (auto& [name, member] : excel.Application->Members) {
        member = dead;
    }
    Let([&] {
        const UserWindow dialog = Window(DownloadCaption);
        dialog.Part("cmdDownload").Click();
        bench::WaitUntil([&] { return Boxes.Count() > 0; });
        dialog.Part("textIRange").Type("A1:A20");
        dialog.Part("textINumberPoints").Expect("Error");
    });
    const auto texts = Boxes.Texts();
    ASSERT_EQ(texts.size(), 1U);
    EXPECT_NE(texts[0].find("closed or has failed"), std::string::npos) << texts[0];

    // What needs no application goes on.
    Let([&] {
        const UserWindow dialog = Window(DownloadCaption);
        dialog.Part("optFileFoldersSS").Click();
        dialog.Part("cmdDownload").Click();
        bench::WaitUntil([&] { return Boxes.Count() > 0; });
        dialog.Part("cmdCancel").Click();
        dialog.ExpectGone();
    });
    EXPECT_EQ(Boxes.Texts(),
              std::vector<std::string>{"No File Name specified for the I and Q Data."});
}

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
