// Containers that drop the control while its dialogs are open.
#include <windows.h>
// After windows.h, which it needs.
#include <commctrl.h>

#include <atomic>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tests/windows/support/AtlContainer.h"
#include "tests/windows/support/ControlTest.h"
#include "tests/windows/support/DialogUser.h"
#include "tests/windows/support/RegisteredLibrary.h"

namespace krv::tests {
namespace {

using bench::UserWindow;
using windows::LateBound;

// Does something on this thread when a message comes, wherever messages are let through.
class Interruption {
 public:
    explicit Interruption(std::function<void()> work) : m_work(std::move(work)) {
        m_window = CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr,
                                   nullptr);
        SetWindowSubclass(m_window, Procedure, 0, reinterpret_cast<DWORD_PTR>(this));
    }
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;
    ~Interruption() { DestroyWindow(m_window); }
    void Post() const { PostMessageW(m_window, WM_APP, 0, 0); }
    [[nodiscard]] bool IsDone() const { return m_done; }

 private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wide, LPARAM low, UINT_PTR,
                                      DWORD_PTR self) {
        if (message == WM_APP) {
            reinterpret_cast<Interruption*>(self)->m_work();
            reinterpret_cast<Interruption*>(self)->m_done = true;
        }
        return DefSubclassProc(window, message, wide, low);
    }

    std::function<void()> m_work;
    HWND m_window = nullptr;
    std::atomic<bool> m_done = false;
};

class HostTrouble : public ControlTest {
 protected:
    // Leaves the download dialog open, with a generator in process connected.
    static void OpenDownload(const LateBound& control) {
        Connect(control, "sim://M7718C");
        control.Call(L"DoDataTransfer", {_variant_t(0L), _variant_t(0L)});
    }
    static void TypeWaveform() {
        const std::string folder = std::filesystem::absolute(KRV_SOURCE_DIR).string();
        Dialog(Download).Part("TextIFileName").Type(folder + "\\examples\\sineI.txt");
    }
    static bool HasForms() {
        for (const UserWindow& window : bench::TopWindows(GetCurrentProcessId())) {
            if (window.ClassName() == "KRVForm") {
                return true;
            }
        }
        return false;
    }

    static constexpr const char* Download = "Download Waveform to KRV";

    const RegisteredLibrary m_suite{TestedLibrary::Suite()};
};

TEST_F(HostTrouble, ADialogGoesWithAControlThatItsContainerDrops) {
    LateBound control = NewControl();
    {
        const AtlContainer host(control.Object());
        OpenDownload(control);
        EXPECT_TRUE(HasForms());
    }
    control = LateBound();
    EXPECT_FALSE(HasForms());
}

TEST_F(HostTrouble, ADownloadEndsWithAControlThatItsContainerDropsMeanwhile) {
    LateBound control = NewControl();
    std::optional<AtlContainer> host(control.Object());
    OpenDownload(control);
    const Interruption drop([&] {
        host.reset();
        control = LateBound();
    });
    Let([&] {
        TypeWaveform();
        Dialog(Download).Part("cmdDownload").Click();
        drop.Post();
        bench::WaitUntil([&] { return drop.IsDone() && !HasForms(); });
    });
    EXPECT_FALSE(HasForms());
    EXPECT_TRUE(Boxes.Texts().empty()) << "nobody is left to be told of anything";
}

TEST_F(HostTrouble, AControlThatItsContainerDropsWhileItAsksGoesAfterTheAnswer) {
    LateBound control = NewControl();
    std::optional<AtlContainer> host(control.Object());
    OpenDownload(control);
    const Interruption drop([&] {
        host.reset();
        control = LateBound();
    });
    Boxes.Hold(true);
    Let([&] {
        TypeWaveform();
        Dialog(Download).Part("TextScaleFactor").Type("101");
        Dialog(Download).Part("cmdDownload").Click();
        bench::MessageBoxOf("Scale Factor", GetCurrentProcessId());
        drop.Post();
        bench::WaitUntil([&] { return drop.IsDone(); });
        Boxes.Hold(false);
        bench::WaitUntil([&] { return !HasForms(); });
    });
    EXPECT_FALSE(HasForms());
}

TEST_F(HostTrouble, AModalDialogEndsWithTheWindowThatItBelongsTo) {
    const LateBound control = NewControl();
    std::optional<AtlContainer> host(control.Object());
    SetForegroundWindow(host->Frame());
    const Interruption drop([&] { host.reset(); });
    Let(
        [&] {
            Dialog(ConnectCaption);
            drop.Post();
            bench::WaitUntil([&] { return drop.IsDone() && !HasForms(); });
        },
        [&] { control.Call(L"DoConnect"); });
    EXPECT_TRUE(drop.IsDone());
}

TEST_F(HostTrouble, ACommandOutlivesTheControlWhoseButtonStartedIt) {
    const std::vector<std::pair<const char*, const char*>> commands{
        {"Corvane TQL/KRV", "About Corvane Tallyport for TQL/KRV"}, {"Connect", ConnectCaption}};
    for (const auto& [button, caption] : commands) {
        SCOPED_TRACE(button);
        LateBound control = NewControl();
        std::optional<AtlContainer> host(control.Object());
        const Interruption drop([&] {
            host.reset();
            control = LateBound();
        });
        Let([&] {
            UserWindow(host->Frame()).Part(button).Click();
            Dialog(caption);
            drop.Post();
            bench::WaitUntil([&] { return drop.IsDone() && !HasForms(); });
        });
        EXPECT_FALSE(HasForms());
        EXPECT_EQ(TestedLibrary::Control().ObjectCount(), 0);
    }
}

}  // namespace
}  // namespace krv::tests
