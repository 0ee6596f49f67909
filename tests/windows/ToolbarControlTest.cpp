// The toolbar control as hosts and scripts meet it, on a computer without the suite.
#include <objsafe.h>
#include <olectl.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/windows/AboutBoxUser.h"
#include "tests/windows/AutomationTest.h"
#include "tests/windows/ControlTest.h"
#include "tests/windows/HostedControl.h"

namespace krv::tests {

using namespace bench;
using namespace windows;
namespace {

using Microsoft::WRL::ComPtr;
using windows::HostedControl;
using windows::LateBound;
using windows::PumpMessages;

constexpr int ConnectId = 2;
constexpr int GetImageId = 6;
constexpr int ButtonCount = 7;
const std::string NoAdapter =
    "Failed to transfer image to application.\r\nError Description: \r\n"
    "DataConnection Object Not Set";

using ToolbarControlTest = ControlTest;

TEST_F(ToolbarControlTest, RunsEachMemberByName) {
    const LateBound control = NewControl();
    struct Member {
        const wchar_t* name;
        std::vector<_variant_t> arguments;
        // Part of the message box that the member shows; empty for none.
        std::string box;
    };
    const std::string missingServer = "CvnKRVServer.CvnKRVServer";
    const std::string missingStates = "CvnInstrSetups.StateInfo";
    const _variant_t missing(DISP_E_PARAMNOTFOUND, VT_ERROR);
    const std::vector<Member> members{
        {L"DoConnect", {}, missingServer},        {L"UpdateConnectedStatus", {}, ""},
        {L"DoSetup", {}, missingStates},          {L"DoDataTransfer", {0L, 0L}, missingServer},
        {L"DoDataTransfer", {missing, L"x"}, ""}, {L"StartTransfer", {1L, L"two"}, ""},
        {L"StopTransfer", {1L, 2.0}, ""},         {L"DoHelp", {}, ""}};
    for (const Member& member : members) {
        SCOPED_TRACE(windows::ToUtf8(member.name));
        std::vector<VARIANT> arguments(member.arguments.begin(), member.arguments.end());
        EXPECT_EQ(ErrorOf([&] { control.CallByReference(member.name, arguments); }), "none");
        const auto texts = Boxes.Texts();
        ASSERT_EQ(texts.size(), member.box.empty() ? 0U : 1U);
        EXPECT_TRUE(member.box.empty() || texts[0].find(member.box) != std::string::npos)
            << texts[0];
    }
    AboutBoxUser::Show([&] { control.Call(L"DoAbout"); });
}

TEST_F(ToolbarControlTest, RaisesTheMissingConnectionToTheCallerOfDoSaveScreenImage) {
    const LateBound control = NewControl();
    EXPECT_EQ(ErrorOf([&] { control.Call(L"DoSaveScreenImage"); }),
              "-2147221499 DataConnection Object Not Set "
              "(KRVControl::IToolbarSupport_DoSaveScreenImage)");
    EXPECT_EQ(Boxes.Texts(), std::vector<std::string>{NoAdapter});

    const auto direct = Query<IToolbarSupport>(control.Object());
    EXPECT_EQ(direct->DoSaveScreenImage(), static_cast<HRESULT>(0x80040005));
    Boxes.Texts();
}

TEST_F(ToolbarControlTest, TakesNoApplicationThatNoAdapterTakes) {
    const LateBound control = NewControl();
    const auto isEmpty = [&] { return control.Get(L"ConnectedApplication").pdispVal == nullptr; };
    EXPECT_TRUE(isEmpty());
    const LateBound other = NewControl();
    control.PutObject(L"ConnectedApplication", other.Object());
    EXPECT_TRUE(isEmpty());
    control.PutObject(L"ConnectedApplication", nullptr);
    EXPECT_TRUE(isEmpty());
}

TEST_F(ToolbarControlTest, OffersFurtherInterfacesWithMembersOfTheirOwnAndOneIdentity) {
    const LateBound control = NewControl();
    const auto identity = Query<IUnknown>(control.Object());
    const auto resources = Query<CvnResourceClient>(control.Object());
    const auto setup = Query<ISetupInterface>(control.Object());
    ASSERT_TRUE(resources && setup && Query<IDebugContainer>(control.Object()));
    EXPECT_EQ(Query<IUnknown>(resources.Get()).Get(), identity.Get());
    EXPECT_EQ(Query<IUnknown>(setup.Get()).Get(), identity.Get());
    EXPECT_TRUE(Query<IToolbarSupport>(setup.Get()));

    // Through the interface's own IDispatch, which a query would not lead to.
    wchar_t name[] = L"CategoryId";
    LPOLESTR names = name;
    DISPID id = 0;
    ASSERT_EQ(resources->GetIDsOfNames(IID_NULL, &names, 1, 0, &id), S_OK);
    DISPPARAMS none{};
    _variant_t category;
    ASSERT_EQ(resources->Invoke(id, IID_NULL, 0, DISPATCH_PROPERTYGET, &none, &category, nullptr,
                                nullptr),
              S_OK);
    EXPECT_EQ(windows::TextOf(category), "{395BCE5B-69FC-441a-904F-1373971E4237}");

    BSTR model = nullptr;
    const HRESULT refused = setup->get_Model(&model);
    EXPECT_NE(ErrorOf([&] {
                  windows::ThrowIfFailed(refused, setup.Get(), __uuidof(ISetupInterface));
              }).find("CvnKRVServer.CvnKRVServer"),
              std::string::npos);
    IDispatch* information = control.Object();
    EXPECT_EQ(setup->GetLegacyVantorFileInfo(nullptr, nullptr, &information), S_OK);
    EXPECT_EQ(information, nullptr);
}

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

TEST_F(ToolbarControlTest, ShowsAButtonForEachCommandInOrder) {
    const LateBound control = NewControl();
    const HostedControl host(control.Object());
    LONG left = -1;
    for (int id = 1; id <= ButtonCount; ++id) {
        SCOPED_TRACE(id);
        RECT place{};
        ASSERT_TRUE(GetWindowRect(host.Child(id), &place));
        EXPECT_GT(place.left, left);
        EXPECT_EQ(place.right - place.left, place.bottom - place.top);
        EXPECT_TRUE(IsWindowVisible(host.Child(id)));
        left = place.left;
    }
    EXPECT_EQ(host.Text(1), L"Corvane TQL/KRV");
    EXPECT_EQ(host.Text(ButtonCount), L"Help");
}

TEST_F(ToolbarControlTest, RunsTheCommandOfEachClickedButton) {
    const LateBound control = NewControl();
    const HostedControl host(control.Object());
    AboutBoxUser::Show([&] { host.Click(1); });
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
    const HostedControl host(control.Object());
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

// What a container holds, to be dropped from within a command's own message loop.
struct Container {
    LateBound control;
    std::unique_ptr<hosts::HostedControl> host;
    MessageBoxReader& boxes;
};
Container* dropped = nullptr;

void CALLBACK Drop(HWND, UINT, UINT_PTR timer, DWORD) {
    KillTimer(nullptr, timer);
    dropped->host.reset();
    dropped->control = LateBound();
    dropped->boxes.Hold(false);
}

TEST_F(ToolbarControlTest, OutlivesAContainerThatDropsItDuringACommand) {
    Boxes.Hold(true);
    Container container{NewControl(), nullptr, Boxes};
    container.host = std::make_unique<hosts::HostedControl>(container.control.Object());
    dropped = &container;
    SetTimer(nullptr, 0, 1, Drop);
    SendMessageW(container.host->Child(GetImageId), BM_CLICK, 0, 0);
    EXPECT_FALSE(container.control);
}

}  // namespace
}  // namespace krv::tests
