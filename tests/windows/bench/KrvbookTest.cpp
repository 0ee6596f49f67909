// krvbook as a program: started, driven with messages as by its user, attached to as by an add-in.
#include <gtest/gtest.h>
#include <windows.h>
// After windows.h, which it needs.
#include <commctrl.h>

#include <fstream>
#include <string>

#include "bench/book/windows/GridLook.h"
#include "bench/shared/windows/ActiveRegistration.h"
#include "bench/shared/windows/ControlHost.h"
#include "bench/shared/windows/ProgramMenu.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/windows/support/AutomationTest.h"
#include "tests/windows/support/BenchProgram.h"
#include "windows/automation/LateBound.h"
#include "windows/automation/VariantValue.h"
#include "windows/base/DotsPerInch.h"
#include "windows/base/WideText.h"

namespace krv::tests {
namespace {

using namespace bench;

using windows::LateBound;
using windows::ToVariant;
using windows::ToWide;

class RunningKrvbook final : public BenchProgram {
 public:
    explicit RunningKrvbook(const std::wstring& arguments)
        : BenchProgram(L"krvbook.exe", L"KrvBook", arguments) {}
};

class KrvbookTest : public AutomationTest {
 protected:
    KrvbookTest() {
        std::ofstream file(m_folder.Path() / "wave.csv");
        file << "I,Q\n";
        for (int row = 1; row < 1000; ++row) {
            file << row << "," << -row * 0.5 << "\n";
        }
    }
    [[nodiscard]] std::wstring File() const {
        return L"\"" + (m_folder.Path() / "wave.csv").wstring() + L"\" --screenshot-ready";
    }
    static std::string TextOf(HWND window) {
        std::array<wchar_t, 200> text{};
        SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
        return windows::ToUtf8(text.data());
    }
    static std::string NameBoxOf(HWND window) {
        return TextOf(FindWindowExW(window, nullptr, WC_EDITW, nullptr));
    }

    TemporaryFolder m_folder;
};

TEST_F(KrvbookTest, FollowsItsUser) {
    const RunningKrvbook program(File());
    const HWND window = program.Window();
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(TextOf(window), "wave.csv - krvbook");
    const HWND grid = FindWindowExW(window, nullptr, L"KrvBookGrid", nullptr);
    const GridLook look(windows::DotsPerInch(window));
    const auto click = [&](CellPosition cell, WPARAM keys) {
        const RECT place = look.PlaceOf(cell, {});
        const LPARAM at = MAKELPARAM(place.left + 5, place.top + 5);
        SendMessageW(grid, WM_LBUTTONDOWN, MK_LBUTTON | keys, at);
        SendMessageW(grid, WM_LBUTTONUP, keys, at);
    };
    click({1, 1}, 0);
    click({10, 0}, MK_SHIFT);
    EXPECT_EQ(NameBoxOf(window), "A2:B11");
    click({2, 3}, MK_CONTROL);
    EXPECT_EQ(NameBoxOf(window), "A2:B11,D3");

    // The first character opens the box over the cell.
    SendMessageW(grid, WM_CHAR, '7', 0);
    const HWND box = FindWindowExW(grid, nullptr, WC_EDITW, nullptr);
    ASSERT_NE(box, nullptr);
    SendMessageW(box, WM_CHAR, '5', 0);
    SendMessageW(box, WM_KEYDOWN, VK_RETURN, 0);
    EXPECT_EQ(NameBoxOf(window), "D4");
    SendMessageW(grid, WM_KEYDOWN, VK_UP, 0);
    EXPECT_EQ(NameBoxOf(window), "D3");

    SendMessageW(window, WM_COMMAND, MenuCommand::Save, 0);
    EXPECT_EQ(m_folder.Content("wave.csv").substr(0, 31), "I,Q,,\r\n1,-0.5,,\r\n2,-1,,75\r\n3,-1");
    PostMessageW(window, WM_CLOSE, 0, 0);
    EXPECT_EQ(program.ExitCode(), 0U);
}

TEST_F(KrvbookTest, IsFoundAsTheRunningApplicationOnlyInARegistryForTests) {
    {
        const RunningKrvbook refused(File() + L" --register-as-active");
        EXPECT_EQ(refused.ExitCode(), 1U);
    }
    const ClassForTests registry(L"Excel.Application", KrvBookClassId);
    if (!registry.IsMade()) {
        GTEST_SKIP() << "this registry has an Excel.Application, or takes none";
    }
    const RunningKrvbook program(File() + L" --register-as-active");
    ASSERT_NE(program.Window(), nullptr);
    Microsoft::WRL::ComPtr<IUnknown> running;
    ASSERT_EQ(GetActiveObject(KrvBookClassId, nullptr, &running), S_OK);
    {
        const LateBound application(running.Get());
        EXPECT_EQ(application.GetObject(L"ActiveWorkbook").GetText(L"Name"), "wave.csv");
        const LateBound range =
            application.CallObject(L"Range", {ToVariant(std::string("A2:B1000"))});
        std::vector<Value> values(999 * 2);
        windows::CopyCells(range.Get(L"Value"), 999, 2, values);
        EXPECT_EQ(values.back(), Value(-499.5));
        EXPECT_EQ(ErrorOf([&] { application.Call(L"Range", {ToVariant(std::string("wave"))}); }),
                  "1004 Method 'Range' of object '_Application' failed (krvbook)");
        application.Call(L"Quit");
    }
    running.Reset();
    EXPECT_EQ(program.ExitCode(), 0U);
}

TEST_F(KrvbookTest, RefusesUnknownOptions) {
    EXPECT_EQ(RunningKrvbook(L"--nonsense").ExitCode(), 2U);
}

// A control that someone else wrote; a system may come without it.
TEST_F(KrvbookTest, HostsAForeignControlInPlace) {
    const HWND parent = CreateWindowExW(0, WC_STATICW, L"host", WS_OVERLAPPEDWINDOW, 0, 0, 500, 400,
                                        nullptr, nullptr, nullptr, nullptr);
    CLSID id{};
    if (FAILED(CLSIDFromProgID(L"Shell.Explorer", &id))) {
        GTEST_SKIP() << "there is no such control";
    }
    {
        ControlHost host(parent, id, nullptr);
        const HWND inner = GetWindow(parent, GW_CHILD);
        ASSERT_NE(inner, nullptr);
        host.Move({10, 20, 310, 220});
        RECT place{};
        GetWindowRect(inner, &place);
        MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&place), 2);
        EXPECT_EQ(place.left, 10);
        EXPECT_EQ(place.bottom, 220);
        EXPECT_TRUE(LateBound(host.Control()).GetBool(L"Visible"));
    }
    EXPECT_EQ(GetWindow(parent, GW_CHILD), nullptr);
    DestroyWindow(parent);
}

}  // namespace
}  // namespace krv::tests
