// The about box in its window, with the components of this computer, and the clipboard.
#include <gtest/gtest.h>
#include <windows.h>
// After windows.h, which it needs.
#include <commctrl.h>

#include <array>
#include <string>

#include "tests/windows/support/AutomationTest.h"
#include "tests/windows/support/ControlTest.h"
#include "tests/windows/support/DialogUser.h"
#include "tests/windows/support/TestedLibrary.h"
#include "windows/base/WideText.h"
#include "windows/desktop/WindowsClipboard.h"
#include "windows/suite/RegisteredComponents.h"

namespace krv::tests {
namespace {

// A component of this registry, for as long as it lives.
class MadeUpComponent {
 public:
    explicit MadeUpComponent(const std::wstring& path, const wchar_t* server = L"InprocServer32") {
        Set(ProgId + std::wstring(L"\\CLSID"), Id);
        Set(L"CLSID\\" + std::wstring(Id) + L"\\" + server, path);
    }
    MadeUpComponent(const MadeUpComponent&) = delete;
    MadeUpComponent& operator=(const MadeUpComponent&) = delete;
    ~MadeUpComponent() {
        RegDeleteTreeW(HKEY_CLASSES_ROOT, ProgId);
        RegDeleteTreeW(HKEY_CLASSES_ROOT, (L"CLSID\\" + std::wstring(Id)).c_str());
    }

    static ports::ComponentVersion Find() {
        return windows::RegisteredComponents("").Find("CvnTests.MadeUp");
    }

 private:
    static constexpr const wchar_t* ProgId = L"CvnTests.MadeUp";
    static constexpr const wchar_t* Id = L"{0C9F2D54-5B0E-4F4A-8C35-9A1C52D6E7B3}";
    static void Set(const std::wstring& key, const std::wstring& value) {
        RegSetKeyValueW(HKEY_CLASSES_ROOT, key.c_str(), nullptr, REG_EXPAND_SZ, value.c_str(),
                        static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
    }
};

TEST(RegisteredComponents, AreToldByTheFilesThatTheRegistryNames) {
    const std::string progId = "CvnKRVServer.CvnKRVServer";
    windows::RegisteredComponents components("Own.Name");
    EXPECT_FALSE(components.Find(progId).isInstalled);
    const TestedLibrary& suite = TestedLibrary::Suite();
    ASSERT_EQ(suite.Register(), S_OK);
    const ports::ComponentVersion found = components.Find(progId);
    EXPECT_EQ(suite.Unregister(), S_OK);
    EXPECT_TRUE(found.isInstalled);
    EXPECT_EQ(found.path, windows::ToUtf8(suite.Path()));
    EXPECT_EQ(found.version.substr(found.version.size() - 2), ".0") << found.version;
    // The year, however the user writes dates.
    SYSTEMTIME now{};
    GetLocalTime(&now);
    const std::string year = std::to_string(now.wYear % 100);
    EXPECT_NE(found.buildDate.find(year), std::string::npos) << found.buildDate;
    const ports::ComponentVersion own = components.Own();
    EXPECT_EQ(own.name, "Own.Name");
    EXPECT_TRUE(own.path.ends_with("\\test_windows.exe")) << own.path;
}

TEST(RegisteredComponents, AreFoundByAnyKindOfPathAndNotInstalledWithoutTheirFile) {
    const std::wstring path = TestedLibrary::Suite().Path();
    {
        const MadeUpComponent quoted(L'"' + path + L'"');
        EXPECT_EQ(MadeUpComponent::Find().path, windows::ToUtf8(path));
    }
    SetEnvironmentVariableW(L"KRV_TEST_LIBRARY", path.c_str());
    {
        const MadeUpComponent withVariable(L"%KRV_TEST_LIBRARY%");
        EXPECT_EQ(MadeUpComponent::Find().path, windows::ToUtf8(path));
        EXPECT_NE(MadeUpComponent::Find().version, "");
    }
    {
        const MadeUpComponent ofTheSystem(L"oleaut32.dll");
        EXPECT_TRUE(MadeUpComponent::Find().isInstalled);
        EXPECT_NE(MadeUpComponent::Find().path.find('\\'), std::string::npos);
    }
    for (const std::wstring& command : {path, path + L" /automation", L'"' + path + L"\" -x y",
                                        std::wstring(L"notepad.exe /x")}) {
        const MadeUpComponent ofItsOwn(command, L"LocalServer32");
        EXPECT_TRUE(MadeUpComponent::Find().isInstalled) << windows::ToUtf8(command);
    }
    const MadeUpComponent gone(path + L".gone");
    EXPECT_FALSE(MadeUpComponent::Find().isInstalled);
    EXPECT_EQ(MadeUpComponent::Find().path, windows::ToUtf8(path) + ".gone");
}

std::wstring ClipboardText() {
    std::wstring text;
    if (OpenClipboard(nullptr) != FALSE) {
        const HANDLE memory = GetClipboardData(CF_UNICODETEXT);
        text = memory != nullptr ? static_cast<const wchar_t*>(GlobalLock(memory)) : L"";
        CloseClipboard();
    }
    return text;
}

TEST(Clipboard, TakesTextsUnlessAnotherProgramKeepsIt) {
    windows::WindowsClipboard clipboard;
    clipboard.SetText("\xC2\xB5\tone\r\n");
    EXPECT_EQ(ClipboardText(), L"\u00B5\tone\r\n");
    const HWND other =
        CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
    ASSERT_NE(OpenClipboard(other), FALSE);
    EXPECT_NE(ErrorOf([&] { clipboard.SetText("kept out"); }), "none");
    CloseClipboard();
    DestroyWindow(other);
    EXPECT_EQ(ClipboardText(), L"\u00B5\tone\r\n");
}

using AboutBoxTest = ControlTest;

TEST_F(AboutBoxTest, ListsTheComponentsAndCopiesThem) {
    const windows::LateBound control = NewControl();
    windows::WindowsClipboard().SetText("");
    Let(
        [] {
            const bench::UserWindow box = Dialog("About Corvane Tallyport for TQL/KRV");
            box.Part("Version Information...").Click();
            const bench::UserWindow list = Dialog("Version Information");
            const HWND components = list.Part(windows::ToUtf8(WC_LISTVIEWW)).Handle();
            EXPECT_EQ(SendMessageW(components, LVM_GETITEMCOUNT, 0, 0), 7);
            const LRESULT header = SendMessageW(components, LVM_GETHEADER, 0, 0);
            RECT last{};
            SendMessageW(reinterpret_cast<HWND>(header), HDM_GETITEMRECT, 3,
                         reinterpret_cast<LPARAM>(&last));
            RECT area{};
            GetClientRect(components, &area);
            EXPECT_EQ(last.right, area.right) << "no header without a column";
            list.Part("Copy to Clipboard").Click();
            list.Part("Close").Click();
            list.ExpectGone();
            box.Part("OK").Click();
        },
        [&] { control.Call(L"DoAbout"); });
    const std::wstring copied = ClipboardText();
    EXPECT_EQ(copied.substr(0, 36), L"Component\tVersion\tBuild Date\tPath\r\nC");
    EXPECT_NE(copied.find(L"CvnKRVControl.KRVControl\t1.0.0.0\t"), std::wstring::npos);
    EXPECT_NE(copied.find(L"\\KRVControl.dll\r\n"), std::wstring::npos);
    EXPECT_NE(copied.find(L"CvnKRVServer.CvnKRVServer\tnot installed\t\t\r\n"), std::wstring::npos);
}

}  // namespace
}  // namespace krv::tests
