#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "common/Error.h"
#include "tests/support/TemporaryFolder.h"
#include "windows/base/UserNumberFormat.h"
#include "windows/desktop/WindowsFileRemoval.h"
#include "windows/desktop/WindowsProcess.h"
#include "windows/desktop/WindowsScreenResolution.h"

namespace krv::tests {
namespace {

// Gives the process another temporary folder for as long as it lives.
class TemporaryFolderIs {
 public:
    explicit TemporaryFolderIs(const std::wstring& folder) {
        GetEnvironmentVariableW(L"TMP", m_before, MAX_PATH);
        SetEnvironmentVariableW(L"TMP", folder.c_str());
    }
    ~TemporaryFolderIs() { SetEnvironmentVariableW(L"TMP", m_before); }

 private:
    wchar_t m_before[MAX_PATH] = {};
};

TEST(WindowsProcessTest, TheTemporaryFolderEndsWithASeparatorAndIsEmptyWhenTooLong) {
    windows::WindowsProcess process;
    EXPECT_EQ(process.Id(), GetCurrentProcessId());
    {
        const TemporaryFolderIs folder(L"C:\\windows");
        EXPECT_EQ(process.TemporaryFolder(), "C:\\windows\\");
    }
    // With the separator, 254 characters fit.
    std::wstring longest = L"C:\\" + std::wstring(100, L'a') + L"\\" + std::wstring(149, L'b');
    {
        const TemporaryFolderIs folder(longest);
        EXPECT_EQ(process.TemporaryFolder().size(), 254U);
    }
    const TemporaryFolderIs folder(longest + L"c");
    EXPECT_EQ(process.TemporaryFolder(), "");
}

// Sets the user's decimal separator for as long as it lives.
class DecimalSeparatorIs {
 public:
    explicit DecimalSeparatorIs(const wchar_t* separator) {
        GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, m_before, 8);
        SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, separator);
    }
    ~DecimalSeparatorIs() { SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, m_before); }

 private:
    wchar_t m_before[8] = {};
};

TEST(UserNumberFormatTest, FollowsTheRegionalSettings) {
    const struct {
        const wchar_t* separator;
        char expected;
    } cases[] = {{L",", ','}, {L".", '.'}, {L"\u066B", '.'}, {L"::", '.'}};
    for (const auto& [separator, expected] : cases) {
        const DecimalSeparatorIs setting(separator);
        EXPECT_EQ(windows::UserNumberFormat().decimalSeparator, expected);
    }
}

TEST(WindowsFileRemovalTest, TakesAwayWhatIsReadOnlyAndHidden) {
    const TemporaryFolder folder;
    const std::filesystem::path path = folder.Path() / L"KRV\u00E4.wmf";
    std::ofstream(path) << "picture";
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN);
    const std::u8string utf8 = path.u8string();
    const std::string name(utf8.begin(), utf8.end());
    windows::WindowsFileRemoval removal;
    removal.ClearAttributes(name);
    EXPECT_EQ(GetFileAttributesW(path.c_str()) & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN),
              0U);
    removal.Delete(name);
    EXPECT_FALSE(std::filesystem::exists(path));
    const auto numberOf = [](auto&& work) {
        try {
            work();
        } catch (const Error& error) {
            return error.Number();
        }
        return 0;
    };
    EXPECT_EQ(numberOf([&] { removal.ClearAttributes(name); }), ErrorNumber::FileNotFound);
    EXPECT_EQ(numberOf([&] { removal.Delete(name); }), ErrorNumber::FileNotFound);
}

}  // namespace
}  // namespace krv::tests
