// A workbook whose saved control was altered: it opens with its cells, unconnected, and says why.
// That an unaltered one connects by itself is seen in the sessions that ./run plays.
#include <optional>

#include "bench/shared/DocumentFile.h"
#include "bench/shared/windows/ActiveRegistration.h"
#include "common/MemoryPropertyBag.h"
#include "tests/support/RunningGenerator.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/windows/support/BenchProgram.h"
#include "tests/windows/support/ControlTest.h"
#include "tests/windows/support/RegisteredLibrary.h"

namespace krv::tests {
namespace {

using windows::LateBound;

class SavedWorkbook : public ControlTest {
 protected:
    // A workbook whose control was connected to the address, with another last byte or not.
    void Write(const char* name, const std::string& address, bool isAltered) const {
        MemoryPropertyBag bag;
        bag.Write("DataCWritten", std::int32_t{1});
        bag.Write("IOSettingWritten", true);
        bag.Write("ioAddress", address);
        const auto contents = bag.Contents();
        const bench::DocumentSection sections[] = {
            {"kind", "workbook"},
            {"cells", "1,2\r\n"},
            {"control", {reinterpret_cast<const char*>(contents.data()), contents.size()}}};
        std::string bytes = bench::EncodeDocument(sections);
        bytes.back() = static_cast<char>(bytes.back() ^ (isAltered ? 1 : 0));
        m_folder.Write(name, bytes);
    }
    [[nodiscard]] std::wstring Path(const char* name) const {
        return windows::ToWide(m_folder.PathOf(name));
    }
    static std::string ConnectedButton(const LateBound& application) {
        const LateBound button =
            application.CallObject(L"CommandBars", {L"TQL/KRV Signal Generator"})
                .CallObject(L"Controls", {L"Connected"});
        return button.GetBool(L"Visible") ? button.GetText(L"TooltipText") : "hidden";
    }

 private:
    const RegisteredLibrary m_control{TestedLibrary::Control()};
    const RegisteredLibrary m_suite{TestedLibrary::Suite()};
    TemporaryFolder m_folder;
};

TEST_F(SavedWorkbook, OpensUnconnectedWhenItsControlWasAltered) {
    const ClassForTests registry(L"Excel.Application", bench::KrvBookClassId);
    if (!registry.IsMade()) {
        GTEST_SKIP() << "this registry has an Excel.Application, or takes none";
    }
    const RunningGenerator generator;
    Write("a.krvbook", generator.Address(), true);
    Write("b.krvbook", generator.Address(), false);
    const BenchProgram program(
        L"krvbook.exe", L"KrvBook",
        L"\"" + Path("a.krvbook") + L"\" --screenshot-ready --register-as-active");
    ASSERT_NE(program.Window(), nullptr);
    {
        Microsoft::WRL::ComPtr<IUnknown> running;
        ASSERT_EQ(GetActiveObject(bench::KrvBookClassId, nullptr, &running), S_OK);
        const LateBound application(running.Get());
        EXPECT_EQ(static_cast<double>(application.CallObject(L"Range", {L"A1"}).Get(L"Value")), 1);
        EXPECT_TRUE(application.GetText(L"StatusBar")
                        .starts_with("The toolbar's settings in \"a.krvbook\" can't be used"));
        EXPECT_EQ(ConnectedButton(application), "hidden");
        // Another workbook brings its own control.
        application.GetObject(L"Workbooks").Call(L"Open", {Path("b.krvbook").c_str()});
        EXPECT_EQ(ConnectedButton(application),
                  "Connected to M7718C Signal Generator at " + generator.Address());
        application.Call(L"Quit");
    }
    EXPECT_EQ(program.ExitCode(), 0U);
}

}  // namespace
}  // namespace krv::tests
