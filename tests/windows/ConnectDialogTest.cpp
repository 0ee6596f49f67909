// The connect dialog with the suite's own discovery control on it, and what stands in for a control
// that isn't installed.
#include <string>
#include <thread>

#include "AutomationTest.h"
#include "ControlTest.h"
#include "common/forms/Form.h"
#include "windows/control/AtlHost.h"
#include "windows/forms/Pictures.h"
#include "windows/forms/WindowsScreen.h"

namespace krv::testing {
namespace {

using windows::LateBound;

// The user in front of the connect dialog, in a thread of its own.
class ConnectDialogUser {
 public:
    // The dialog's window, once it is there.
    static HWND Dialog() {
        for (int tries = 0; tries < 1000; ++tries) {
            const HWND found = FindWindowW(L"KRVForm", L" Connect To TQL/KRV Signal Generator");
            if (found != nullptr && IsWindowVisible(found) != 0) {
                return found;
            }
            Sleep(10);
        }
        return nullptr;
    }

    // The window of this class and text inside another, however deep; any text when none is given.
    static HWND Find(HWND parent, const wchar_t* className, const std::wstring& text = {}) {
        for (HWND child = GetWindow(parent, GW_CHILD); child != nullptr;
             child = GetWindow(child, GW_HWNDNEXT)) {
            wchar_t kind[64] = L"";
            GetClassNameW(child, kind, 64);
            if (lstrcmpiW(kind, className) == 0 && (text.empty() || TextOf(child) == text)) {
                return child;
            }
            if (const HWND deeper = Find(child, className, text); deeper != nullptr) {
                return deeper;
            }
        }
        return nullptr;
    }

    static void Click(HWND dialog, const wchar_t* caption) {
        SendMessageW(Find(dialog, L"Button", caption), BM_CLICK, 0, 0);
    }

 private:
    static std::wstring TextOf(HWND window) {
        wchar_t text[256] = L"";
        SendMessageW(window, WM_GETTEXT, 256, reinterpret_cast<LPARAM>(text));
        return text;
    }
};

// The suite's components are registered as long as this lives.
class ConnectDialogTest : public ControlTest {
 protected:
    ConnectDialogTest() { EXPECT_EQ(TestedLibrary::Suite().Register(), S_OK); }
    ~ConnectDialogTest() override {
        EXPECT_EQ(TestedLibrary::Suite().ObjectCount(), 0);
        EXPECT_EQ(TestedLibrary::Suite().Unregister(), S_OK);
    }

    // Runs the connect command while the user works on its dialog, which closing ends.
    template <class Work>
    static void Connect(const LateBound& control, const Work& work) {
        std::thread user([&] {
            const HWND dialog = ConnectDialogUser::Dialog();
            work(dialog);
            ConnectDialogUser::Click(dialog, L"Close");
        });
        control.Call(L"DoConnect");
        user.join();
    }
};

TEST_F(ConnectDialogTest, KeepsTheConnectionThatTheUserMadeInTheDiscoveryControl) {
    const LateBound control = NewControl();
    bool editable = false;
    Connect(control, [&](HWND dialog) {
        const HWND address = ConnectDialogUser::Find(dialog, L"Edit");
        editable = address != nullptr;
        SendMessageW(address, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"sim://M7718C"));
        ConnectDialogUser::Click(dialog, L"&Connect");
    });
    EXPECT_TRUE(editable);
    EXPECT_EQ(Boxes.Texts(), std::vector<std::string>{});

    const std::wstring connected = L"Connected to M7718C at sim://M7718C.";
    bool shown = false;
    Connect(control, [&](HWND dialog) {
        shown = ConnectDialogUser::Find(dialog, L"Static", connected) != nullptr;
        ConnectDialogUser::Click(dialog, L"&Disconnect");
    });
    EXPECT_TRUE(shown) << "a second dialog shows the session of the first";
    Connect(control, [&](HWND dialog) {
        shown = ConnectDialogUser::Find(dialog, L"Static", connected) != nullptr;
    });
    EXPECT_FALSE(shown);
    Boxes.Texts();
}

TEST(ForeignControls, ThatAreNotInstalledKeepTheFormFromLoading) {
    OleInitialize(nullptr);
    {
        struct PlaceholderForm : forms::Form {
            using Form::Form;
            forms::ForeignControl Placeholder{*this, "Placeholder", "Nobody.HasThisControl"};
        };
        windows::AtlHost host;
        windows::WindowsScreen screen(windows::DrawPicture, &host);
        PlaceholderForm form("PlaceholderForm", screen);
        const std::string error = ErrorOf([&] { form.Load(); });
        EXPECT_EQ(error.rfind("429 ", 0), 0U) << error;
        EXPECT_NE(error.find("Nobody.HasThisControl"), std::string::npos) << error;
        EXPECT_EQ(screen.WindowOf(form), nullptr);

        windows::WindowsScreen plain(windows::DrawPicture);
        PlaceholderForm empty("PlaceholderForm", plain);
        empty.Load();
        EXPECT_FALSE(empty.Placeholder.Object());
        empty.Unload();
    }
    OleUninitialize();
}

}  // namespace
}  // namespace krv::testing
