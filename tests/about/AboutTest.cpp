#include <gtest/gtest.h>

#include <string>

#include "about/AboutDialogs.h"
#include "about/FrmAbout.h"
#include "about/FrmVersionInfo.h"
#include "common/Error.h"
#include "tests/support/ScriptedDesktop.h"

namespace krv::tests {
namespace {

using namespace about;

class FakeVersions final : public ports::ComponentVersions {
 public:
    ports::ComponentVersion Own() override {
        return {"Own.Control", true, "1.2.3.4", "11/21/2026", "C:\\Suite\\Own.dll"};
    }
    ports::ComponentVersion Find(const std::string& progId) override {
        if (progId == "Installed.Part") {
            return {progId, true, "2.0.0.0", "1/2/2026", "C:\\Suite\\Part.dll"};
        }
        if (progId == "Damaged.Part") {
            return {progId, true, "", "", "C:\\Suite\\Damaged.dll"};
        }
        return {progId, false};
    }
};

class FakeClipboard final : public ports::Clipboard {
 public:
    std::string Text;
    bool IsKept = false;
    void SetText(const std::string& text) override {
        if (IsKept) {
            throw Error(ErrorNumber::Unspecified, "Another program keeps the clipboard.");
        }
        Text = text;
    }
};

class AboutTest : public ::testing::Test {
 protected:
    ScriptedDesktop desk;
    FakeVersions versions;
    FakeClipboard clipboard;
    about::AboutDialogs dialogs{{desk.Screen, desk.MessageBoxes, clipboard, versions}};

    template <class Form>
    Form& Shown() {
        return dynamic_cast<Form&>(*desk.Screen.LastShown);
    }
};

constexpr const char* Copied =
    "Component\tVersion\tBuild Date\tPath\r\n"
    "Own.Control\t1.2.3.4\t11/21/2026\tC:\\Suite\\Own.dll\r\n"
    "Installed.Part\t2.0.0.0\t1/2/2026\tC:\\Suite\\Part.dll\r\n"
    "Missing.Part\tnot installed\t\t\r\n"
    "Damaged.Part\tunknown\t\tC:\\Suite\\Damaged.dll\r\n";

TEST_F(AboutTest, TellsTheProductAndTheVersionsOfItsComponents) {
    about::FrmAbout* box = nullptr;
    desk.Screen.Then([&] {
        box = &Shown<about::FrmAbout>();
        EXPECT_EQ(box->lblProduct.Caption.Get(), "Corvane Tallyport for TQL/KRV");
        EXPECT_EQ(box->lblVersion.Caption.Get(), "Version 1.2.3.4");
        EXPECT_EQ(box->lblBuildDate.Caption.Get(), "Built on 11/21/2026");
        desk.Screen.Click(box->cmdVersionInfo);
    });
    desk.Screen.Then([&] {
        auto& list = Shown<about::FrmVersionInfo>();
        EXPECT_EQ(list.lvwComponents.StateText(),
                  "lvwComponents \"Own.Control, 1.2.3.4, 11/21/2026, C:\\Suite\\Own.dll; "
                  "Installed.Part, 2.0.0.0, 1/2/2026, C:\\Suite\\Part.dll; "
                  "Missing.Part, not installed, , ; "
                  "Damaged.Part, unknown, , C:\\Suite\\Damaged.dll\"");
        desk.Screen.Click(list.cmdCopy);
        EXPECT_EQ(clipboard.Text, Copied);
        desk.Screen.Click(list.cmdClose);
    });
    desk.Screen.Then([&] { desk.Screen.Click(box->cmdOK); });
    dialogs.ShowAbout({"Installed.Part", "Missing.Part", "Damaged.Part"});
    EXPECT_EQ(desk.Screen.Shows, (std::vector<std::string>{
                                     "load FrmAbout", "modal FrmAbout", "load FrmVersionInfo",
                                     "modal FrmVersionInfo", "hide FrmVersionInfo",
                                     "unload FrmVersionInfo", "hide FrmAbout", "unload FrmAbout"}));
}

TEST_F(AboutTest, CopiesWithItsKeyAndSaysWhenItCannot) {
    about::FrmVersionInfo list(desk.Screen, clipboard, desk.MessageBoxes);
    list.SetComponents({versions.Own()});
    list.ShowModeless();
    EXPECT_FALSE(desk.Screen.Press(list, 'C')) << "without Ctrl it is the list's own key";
    EXPECT_EQ(clipboard.Text, "");
    EXPECT_TRUE(desk.Screen.PressWithControl(list, 'C'));
    EXPECT_NE(clipboard.Text, "");
    clipboard.IsKept = true;
    desk.Screen.Click(list.cmdCopy);
    EXPECT_EQ(desk.MessageBoxes.Shown,
              std::vector<std::string>{
                  "[stop] Version Information: Another program keeps the clipboard. (OK)"});
    EXPECT_TRUE(list.IsVisible());
}

}  // namespace
}  // namespace krv::tests
