// The add-in in applications that load it as Excel and Word do: how it is loaded, what it puts
// there, and that it leaves nothing behind.
#include <fstream>
#include <iterator>
#include <string>

#include "bench/shared/windows/AddInRegistry.h"
#include "bench/shared/windows/AddInRibbon.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/RunningGenerator.h"
#include "tests/windows/addin/AddInHost.h"
#include "tests/windows/support/DialogUser.h"
#include "windows/addin/LoadLog.h"
#include "windows/base/DotsPerInch.h"
#include "windows/com/RegistryKey.h"
#include "windows/extensibility/OfficeInterfaces.h"

namespace krv::tests {
namespace {

using windows::LateBound;

constexpr CLSID AddInClass{
    0x7c1f0c52, 0x6f0e, 0x4a1f, {0x9a, 0x36, 0x2f, 0x6d, 0x1a, 0x3b, 0x7b, 0x10}};

TEST_F(AddInInExcel, MakesTheCommandBarAndAControlForEachWorkbook) {
    Start();
    EXPECT_EQ(m_reports, std::vector<std::string>{});
    EXPECT_TRUE(Instance().GetBool(L"Connect"));
    ASSERT_TRUE(WaitForControl());
    EXPECT_EQ(Bar(), Unconnected);
    const LateBound first = Control();
    EXPECT_EQ(first.GetObject(L"ConnectedApplication").Object(), m_objects->Application());
    const auto book = m_model.Active();

    m_model.Add();
    EXPECT_TRUE(WaitUntil([&] { return Control() && Control().Object() != first.Object(); }));
    EXPECT_EQ(SitedControls(), 2);
    m_model.Activate(book);
    EXPECT_TRUE(WaitUntil([&] { return Control().Object() == first.Object(); }))
        << "a workbook keeps its control";
    Application().CallObject(L"Workbooks", {windows::ToVariant(std::int32_t{2})}).Call(L"Close");
    EXPECT_TRUE(WaitUntil([&] { return SitedControls() == 1; }));

    m_model.Close(book);
    EXPECT_TRUE(WaitUntil([&] { return SitedControls() == 0; })) << "the start screen has none";
    End();
    EXPECT_TRUE(m_model.CommandBars().empty());
}

TEST_F(AddInInExcel, RunsTheControlsCommandsFromTheCommandBar) {
    RunningGenerator generator;
    Start();
    ASSERT_TRUE(WaitForControl());
    Let(
        [&] {
            const bench::UserWindow dialog = Dialog(ConnectCaption);
            EXPECT_EQ(GetWindow(dialog.Handle(), GW_OWNER), m_window.MainHandle());
            EXPECT_FALSE(IsWindowEnabled(m_window.MainHandle())) << "the dialog is modal";
            UseConnectDialog(generator.Address());
        },
        [&] { Click("Connect"); });
    EXPECT_EQ(Bar(), Connected);
    EXPECT_EQ(m_model.GeneratorBar().At(3).tooltipText,
              "Connected to M7718C Signal Generator at " + generator.Address());
    End();
}

TEST_F(AddInInExcel, WaitsForABusyHost) {
    Start();
    m_window.isEditing = true;
    PumpMessages();
    EXPECT_TRUE(m_model.CommandBars().empty());
    m_window.isEditing = false;
    EXPECT_TRUE(WaitForControl());
    End();
}

TEST_F(AddInInExcel, ShowsOnTheRibbonWhatTheControlAllowsAndWhy) {
    RunningGenerator generator;
    Start();
    int invalidated = 0;
    bench::AddInRibbon ribbon(m_addIns->All()[0]->Instance(),
                              m_objects->Automation().shared_from_this(),
                              [&invalidated] { ++invalidated; });
    EXPECT_EQ(ribbon.Tab(), "TQL/KRV");
    const auto shown = [&ribbon] {
        std::string text;
        for (const bench::BandGroup& group : ribbon.Groups()) {
            for (const bench::BandButton& button : group.buttons) {
                BITMAP picture{};
                EXPECT_NE(GetObjectW(button.picture, sizeof picture, &picture), 0);
                EXPECT_EQ(picture.bmWidth,
                          MulDiv(32, static_cast<int>(windows::DotsPerInch(nullptr)), 96));
                if (button.isVisible) {
                    text += (text.empty() ? "" : ", ") +
                            (button.isEnabled ? button.label : "(" + button.label + ")");
                }
            }
        }
        return text;
    };
    const auto button = [&ribbon](std::size_t group, std::size_t index) {
        return ribbon.Groups()[group].buttons[index];
    };
    EXPECT_EQ(shown(), "(Corvane TQL/KRV), (Connect), (Settings), (PutData), (GetImage), (Help)")
        << "before there is a control";
    ASSERT_TRUE(WaitForControl());
    EXPECT_TRUE(WaitUntil([&] { return shown() == Unconnected; })) << shown();
    EXPECT_FALSE(m_model.GeneratorBar().IsVisible()) << "behind the ribbon";
    EXPECT_EQ(button(2, 0).tip,
              "Download Arb Waveform Data.  Connect to a signal generator first.");

    invalidated = 0;
    Let([&] { UseConnectDialog(generator.Address()); }, [&] { button(1, 0).click(); });
    EXPECT_TRUE(WaitUntil([&] { return invalidated > 0; })) << "without being asked";
    EXPECT_EQ(shown(), Connected);
    EXPECT_EQ(button(1, 1).tip, "Connected to M7718C Signal Generator at " + generator.Address());
    EXPECT_EQ(button(2, 0).tip, "Download Arb Waveform Data");
    const auto book = m_model.Active();
    m_model.Add();
    EXPECT_TRUE(WaitUntil([&] { return shown() == Unconnected; })) << shown();
    m_model.Activate(book);
    EXPECT_TRUE(WaitUntil([&] { return shown() == Connected; })) << shown();
    invalidated = 0;
    PumpMessages();
    EXPECT_EQ(invalidated, 0) << "only when it has changed";
    m_model.Close(book);
    m_model.Close(m_model.Active());
    EXPECT_TRUE(WaitUntil([&] { return SitedControls() == 0; }));
    EXPECT_EQ(button(2, 0).tip, "Open a document first.");
    End();
}

// What the user has set for one application counts for it alone.
TEST_F(AddInInExcel, IsLoadedAsTheRegistrySays) {
    const std::wstring excel = L"Excel";
    const std::wstring name = L"KRVAddIn.Connect";
    const auto behavior = [&](const std::wstring& progId) {
        for (const auto& addIn : bench::FindAddIns(excel)) {
            if (addIn.progId == progId) {
                return addIn.behavior;
            }
        }
        return DWORD{99};
    };
    bench::WriteLoadBehavior(excel, name, 2);
    bench::WriteLoadBehavior(excel, L"Nobody.AddIn", 3);
    Start();
    EXPECT_FALSE(Instance().GetBool(L"Connect"));
    ASSERT_EQ(m_reports.size(), 1U);
    EXPECT_EQ(m_reports[0].find("The add-in Nobody.AddIn wasn't loaded."), 0U) << m_reports[0];
    EXPECT_EQ(behavior(L"Nobody.AddIn"), 2U) << "not tried again";

    Instance().Put(L"Connect", windows::ToVariant(true));
    EXPECT_EQ(behavior(name), 3U);
    EXPECT_TRUE(WaitForControl()) << "without a start-up to wait for";
    Instance().Put(L"Connect", windows::ToVariant(false));
    EXPECT_EQ(behavior(name), 2U);
    EXPECT_TRUE(m_model.CommandBars().empty());
    EXPECT_EQ(SitedControls(), 0);

    bench::WriteLoadBehavior(excel, name, 16);
    Start();
    EXPECT_TRUE(Instance().GetBool(L"Connect")) << "at the first start";
    EXPECT_EQ(behavior(name), 9U) << "and on demand from then on";
    End();
    // What the application has written.
    const windows::RegistryKey makers(HKEY_CURRENT_USER, L"Software\\Microsoft");
    for (const wchar_t* progId : {L"KRVAddIn.Connect", L"Nobody.AddIn"}) {
        makers.DeleteTree(std::wstring(L"Office\\Excel\\Addins\\") + progId);
    }
    for (const wchar_t* key : {L"Office\\Excel\\Addins", L"Office\\Excel", L"Office"}) {
        makers.DeleteWhenEmpty(key);
    }
}

TEST_F(AddInInWord, PutsTheControlIntoADocumentAndLeavesTheTemplateSaved) {
    RunningGenerator generator;
    Start();
    ASSERT_TRUE(WaitForControl());
    EXPECT_EQ(Bar(), Unconnected);
    Let([&] { UseConnectDialog(generator.Address()); }, [&] { Click("Connect"); });
    EXPECT_EQ(Bar(), Connected);
    EXPECT_TRUE(m_model.IsTemplateSaved());
    // Another document takes the place of the first, whose connection ends.
    const LateBound first = Control();
    m_model.Add();
    EXPECT_TRUE(WaitUntil([&] { return Control() && Control().Object() != first.Object(); }));
    EXPECT_EQ(SitedControls(), 1);
    EXPECT_TRUE(WaitUntil([&] { return Bar() == Unconnected; })) << Bar();
    End();
    EXPECT_TRUE(m_model.CommandBars().empty());
}

TEST(AddIn, SaysInItsLogWhyItIsNotThere) {
    OleInitialize(nullptr);
    std::error_code ignored;
    std::filesystem::remove(windows::LogFile(), ignored);
    {
        const LateBound addIn = TestedLibrary::AddIn().Create(AddInClass);
        Microsoft::WRL::ComPtr<windows::IDTExtensibility2> host;
        ASSERT_EQ(addIn.Object()->QueryInterface(__uuidof(windows::IDTExtensibility2),
                                                 reinterpret_cast<void**>(host.GetAddressOf())),
                  S_OK);
        EXPECT_EQ(
            host->OnConnection(addIn.Object(), windows::ConnectMode::Startup, nullptr, nullptr),
            windows::ToHresult(ErrorNumber::ActionNotSupported));
        EXPECT_EQ(host->OnStartupComplete(nullptr), S_OK) << "whatever else comes";
        EXPECT_EQ(host->OnDisconnection(windows::DisconnectMode::HostShutdown, nullptr), S_OK);
    }
    EXPECT_EQ(TestedLibrary::AddIn().ObjectCount(), 0);
    std::ifstream stream(windows::LogFile());
    const std::string text{std::istreambuf_iterator<char>(stream), {}};
    EXPECT_NE(text.find("test_windows.exe " + std::to_string(sizeof(void*) * 8) + "-bit"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("neither Excel nor Word"), std::string::npos) << text;
    OleUninitialize();
}

}  // namespace
}  // namespace krv::tests
