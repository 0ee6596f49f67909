// The connect dialog with the suite's own discovery control on it, and what stands in for a control
// that isn't installed.
#include <string>

#include "common/forms/Form.h"
#include "tests/windows/AutomationTest.h"
#include "tests/windows/ConnectDialogUser.h"
#include "tests/windows/ControlTest.h"
#include "windows/control/AtlHost.h"
#include "windows/forms/Pictures.h"
#include "windows/forms/WindowsScreen.h"

namespace krv::tests {

using namespace bench;
using namespace windows;
namespace {

using windows::LateBound;

// The suite's components are registered as long as this lives.
class ConnectDialogTest : public ControlTest {
 protected:
    ConnectDialogTest() { EXPECT_EQ(TestedLibrary::Suite().Register(), S_OK); }
    ~ConnectDialogTest() override {
        EXPECT_EQ(TestedLibrary::Suite().ObjectCount(), 0);
        EXPECT_EQ(TestedLibrary::Suite().Unregister(), S_OK);
    }
};

TEST_F(ConnectDialogTest, KeepsTheConnectionThatTheUserMadeInTheDiscoveryControl) {
    const LateBound control = NewControl();
    bool editable = false;
    ConnectDialogUser::Connect(control, [&](HWND dialog) {
        const HWND address = ConnectDialogUser::Find(dialog, L"Edit");
        editable = address != nullptr;
        SendMessageW(address, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"sim://M7718C"));
        ConnectDialogUser::Click(dialog, L"&Connect");
    });
    EXPECT_TRUE(editable);
    EXPECT_EQ(Boxes.Texts(), std::vector<std::string>{});

    const std::wstring connected = L"Connected to M7718C at sim://M7718C.";
    bool shown = false;
    ConnectDialogUser::Connect(control, [&](HWND dialog) {
        shown = ConnectDialogUser::Find(dialog, L"Static", connected) != nullptr;
        ConnectDialogUser::Click(dialog, L"&Disconnect");
    });
    EXPECT_TRUE(shown) << "a second dialog shows the session of the first";
    ConnectDialogUser::Connect(control, [&](HWND dialog) {
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
}  // namespace krv::tests
