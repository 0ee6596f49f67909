// krvbook as a program: started, driven with messages as by its user, attached to as by an add-in.
#include <gtest/gtest.h>
#include <windows.h>

#include <fstream>
#include <string>

#include "bench/shared/windows/ActiveRegistration.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/windows/support/AutomationTest.h"
#include "tests/windows/support/BenchProgram.h"
#include "windows/automation/LateBound.h"
#include "windows/automation/VariantValue.h"

namespace krv::tests {
namespace {

using namespace bench;

using windows::LateBound;
using windows::ToVariant;

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

    TemporaryFolder m_folder;
};

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
        EXPECT_EQ(ErrorOf([&] {
                      application.Call(L"Range", {ToVariant(std::string("wave"))});
                  }).substr(0, 20),
                  "1004 \"Range\" failed,");
        application.Call(L"Quit");
    }
    running.Reset();
    EXPECT_EQ(program.ExitCode(), 0U);
}

TEST_F(KrvbookTest, RefusesUnknownOptions) {
    EXPECT_EQ(RunningKrvbook(L"--nonsense").ExitCode(), 2U);
}

}  // namespace
}  // namespace krv::tests
