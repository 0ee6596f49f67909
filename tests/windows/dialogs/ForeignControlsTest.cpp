// Placeholders on forms for controls that aren't installed.
#include <string>

#include "common/forms/Form.h"
#include "tests/windows/support/AutomationTest.h"
#include "windows/control/SystemContainer.h"
#include "windows/forms/WindowsScreen.h"

namespace krv::tests {
namespace {

TEST(ForeignControls, ThatAreNotInstalledKeepTheFormFromLoading) {
    OleInitialize(nullptr);
    {
        struct PlaceholderForm : forms::Form {
            using Form::Form;
            forms::ForeignControl Placeholder{*this, "Placeholder", "Nobody.HasThisControl"};
        };
        windows::SystemContainer host;
        windows::WindowsScreen screen(&host);
        PlaceholderForm form("PlaceholderForm", screen);
        const std::string error = ErrorOf([&] { form.Load(); });
        EXPECT_EQ(error.rfind("429 ", 0), 0U) << error;
        EXPECT_NE(error.find("Nobody.HasThisControl"), std::string::npos) << error;
        EXPECT_EQ(screen.WindowOf(form), nullptr);

        windows::WindowsScreen plain;
        PlaceholderForm empty("PlaceholderForm", plain);
        empty.Load();
        EXPECT_FALSE(empty.Placeholder.Object());
        empty.Unload();
    }
    OleUninitialize();
}

}  // namespace
}  // namespace krv::tests
