// The toolbar control as hosts and scripts meet it, on a computer without the suite.
#include <objsafe.h>
#include <olectl.h>

#include <string>
#include <vector>

#include "tests/windows/support/AtlContainer.h"
#include "tests/windows/support/ControlTest.h"
#include "tests/windows/support/DialogUser.h"

namespace krv::tests {
namespace {

using Microsoft::WRL::ComPtr;
using windows::LateBound;

constexpr int ConnectId = 2;
constexpr int GetImageId = 6;
constexpr int ButtonCount = 7;
const std::string NoAdapter =
    "Failed to transfer image to application.\r\nError Description: \r\n"
    "DataConnection Object Not Set";

using ToolbarControlTest = ControlTest;

TEST_F(ToolbarControlTest, IsAControlNotMarkedSafe) {
    const LateBound control = NewControl();
    ComPtr<IUnknown> safety;
    EXPECT_EQ(control.Object()->QueryInterface(IID_IObjectSafety,
                                               reinterpret_cast<void**>(safety.GetAddressOf())),
              E_NOINTERFACE);
    DWORD status = 0;
    ASSERT_EQ(Query<IOleObject>(control.Object())->GetMiscStatus(DVASPECT_CONTENT, &status), S_OK);
    EXPECT_NE(status & OLEMISC_INSIDEOUT, 0U);
    EXPECT_NE(status & OLEMISC_ACTIVATEWHENVISIBLE, 0U);
    CLSID id{};
    ASSERT_EQ(Query<IPersistStreamInit>(control.Object())->GetClassID(&id), S_OK);
    EXPECT_EQ(id, __uuidof(::KRVControl));
}

TEST_F(ToolbarControlTest, RunsTheCommandOfEachClickedButton) {
    const LateBound control = NewControl();
    const AtlContainer host(control.Object());
    Let([] { Dialog("About Corvane Tallyport for TQL/KRV").Part("OK").Click(); },
        [&] { host.Click(1); });
    // Part of the message box that the click ends in; empty for none.
    const std::vector<std::pair<int, std::string>> buttons{{ConnectId, "CvnKRVServer.CvnKRVServer"},
                                                           {4, "CvnInstrSetups.StateInfo"},
                                                           {5, "CvnKRVServer.CvnKRVServer"},
                                                           {GetImageId, NoAdapter},
                                                           {ButtonCount, ""}};
    for (const auto& [id, box] : buttons) {
        SCOPED_TRACE(windows::ToUtf8(host.Text(id)));
        host.Click(id);
        const auto texts = Boxes.Texts();
        ASSERT_EQ(texts.size(), box.empty() ? 0U : 1U);
        EXPECT_TRUE(box.empty() || texts[0].find(box) != std::string::npos) << texts[0];
    }
}

TEST_F(ToolbarControlTest, IsReachedByKeyboard) {
    const LateBound control = NewControl();
    const AtlContainer host(control.Object());
    SetFocus(host.Control());
    ASSERT_EQ(GetDlgCtrlID(GetFocus()), 1);
    const auto press = [](WPARAM key) {
        SendMessageW(GetFocus(), WM_KEYDOWN, key, 0);
        PumpMessages();
        return GetDlgCtrlID(GetFocus());
    };
    EXPECT_EQ(press(VK_LEFT), ButtonCount);
    EXPECT_EQ(press(VK_LEFT), GetImageId);
    press(VK_RETURN);
    EXPECT_EQ(Boxes.Texts(), std::vector<std::string>{NoAdapter});

    const auto active = Query<IOleInPlaceActiveObject>(control.Object());
    MSG tab{GetFocus(), WM_KEYDOWN, VK_TAB, 0, 0, {}};
    SetFocus(host.Child(GetImageId));
    EXPECT_EQ(active->TranslateAccelerator(&tab), S_OK);
    EXPECT_EQ(GetDlgCtrlID(GetFocus()), ButtonCount);
    EXPECT_NE(active->TranslateAccelerator(&tab), S_OK) << "the tab key leads out at the end";
}

}  // namespace
}  // namespace krv::tests
