// Placeholders on forms for controls of other makers.
#include <string>

#include "common/forms/Form.h"
#include "ports/suite/ProgIds.h"
#include "tests/windows/support/AutomationTest.h"
#include "tests/windows/support/RegisteredLibrary.h"
#include "windows/control/SystemContainer.h"
#include "windows/forms/WindowsScreen.h"

namespace krv::tests {
namespace {

struct PlaceholderForm : forms::Form {
    PlaceholderForm(ports::FormScreen& screen, const char* progId)
        : Form("PlaceholderForm", screen), Placeholder(*this, "Placeholder", progId) {}
    forms::ForeignControl Placeholder;
};

TEST(ForeignControls, ThatAreNotInstalledKeepTheFormFromLoading) {
    OleInitialize(nullptr);
    {
        windows::SystemContainer host;
        windows::WindowsScreen screen(&host);
        PlaceholderForm form(screen, "Nobody.HasThisControl");
        const std::string error = ErrorOf([&] { form.Load(); });
        EXPECT_EQ(error.rfind("429 ", 0), 0U) << error;
        EXPECT_NE(error.find("Nobody.HasThisControl"), std::string::npos) << error;
        EXPECT_EQ(screen.WindowOf(form), nullptr);

        windows::WindowsScreen plain;
        PlaceholderForm empty(plain, "Nobody.HasThisControl");
        empty.Load();
        EXPECT_FALSE(empty.Placeholder.Object());
        empty.Unload();
    }
    OleUninitialize();
}

TEST(ForeignControls, ThatLackAPropertyAreShownAsTheyAre) {
    OleInitialize(nullptr);
    {
        const RegisteredLibrary suite(TestedLibrary::Suite());
        windows::SystemContainer host;
        windows::WindowsScreen screen(&host);
        PlaceholderForm form(screen, ports::ProgId::Discovery);
        form.Placeholder.Properties = {{"propertyofanothersuite", true}};
        EXPECT_EQ(ErrorOf([&] { form.Load(); }), "none");
        EXPECT_TRUE(form.Placeholder.Object());
        form.Unload();
    }
    OleUninitialize();
}

}  // namespace
}  // namespace krv::tests
