// Workbooks that krvbook saves and opens with its control: connected again, or not when they were
// altered.
#include <fstream>
#include <optional>

#include "bench/office/DocumentFile.h"
#include "bench/office/windows/ActiveRegistration.h"
#include "common/MemoryPropertyBag.h"
#include "tests/support/RunningGenerator.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/windows/BenchProgram.h"
#include "tests/windows/ControlTest.h"
#include "tests/windows/TestedLibrary.h"
#include "windows/automation/VariantValue.h"

namespace krv::testing {
namespace {

using windows::LateBound;
using windows::ToVariant;

class SavedWorkbookTest : public ControlTest {
 protected:
    SavedWorkbookTest() {
        EXPECT_EQ(TestedLibrary::Suite().Register(), S_OK);
        EXPECT_EQ(TestedLibrary::Control().Register(), S_OK);
    }
    ~SavedWorkbookTest() override {
        EXPECT_EQ(TestedLibrary::Control().Unregister(), S_OK);
        EXPECT_EQ(TestedLibrary::Suite().Unregister(), S_OK);
    }

    [[nodiscard]] std::wstring Path(const wchar_t* name) const {
        return (m_folder.Path() / name).wstring();
    }
    void Write(const char* name, const std::string& bytes) const {
        std::ofstream(m_folder.Path() / name, std::ios::binary) << bytes;
    }
    // A workbook whose control was connected to the address.
    void WriteBookFor(const std::string& address) const {
        MemoryPropertyBag bag;
        bag.Write("DataCWritten", std::int32_t{1});
        bag.Write("IOSettingWritten", true);
        bag.Write("ioAddress", address);
        const auto contents = bag.Contents();
        const bench::DocumentSection sections[] = {
            {"kind", "workbook"},
            {"cells", "1,2\r\n"},
            {"control", {reinterpret_cast<const char*>(contents.data()), contents.size()}}};
        Write("a.krvbook", bench::EncodeDocument(sections));
    }
    // Starts krvbook on the file and attaches to it.
    LateBound Start(std::optional<BenchProgram>& program, const wchar_t* name) const {
        program.emplace(L"krvbook.exe", L"KrvBook",
                        L"\"" + Path(name) + L"\" --screenshot-ready --register-as-active");
        EXPECT_NE(program->Window(), nullptr);
        Microsoft::WRL::ComPtr<IUnknown> running;
        EXPECT_EQ(GetActiveObject(bench::KrvBookClassId, nullptr, &running), S_OK);
        return LateBound(running.Get());
    }
    static std::string ConnectedButton(const LateBound& application) {
        const LateBound button =
            application.CallObject(L"CommandBars", {L"TQL/KRV Signal Generator"})
                .CallObject(L"Controls", {L"Connected"});
        return button.GetBool(L"Visible") ? button.GetText(L"TooltipText") : "hidden";
    }
    static double CellA1(const LateBound& application) {
        return application.CallObject(L"Range", {L"A1"}).Get(L"Value");
    }

    ClassForTests m_registry{L"Excel.Application", bench::KrvBookClassId};
    TemporaryFolder m_folder;
};

TEST_F(SavedWorkbookTest, ReconnectsByItselfAndOpensUnconnectedWhenItsControlWasAltered) {
    if (!m_registry.IsMade()) {
        GTEST_SKIP() << "this registry has an Excel.Application, or takes none";
    }
    const RunningGenerator generator;
    const std::string connected = "Connected to M7718C Signal Generator at " + generator.Address();
    WriteBookFor(generator.Address());
    std::optional<BenchProgram> program;
    {
        const LateBound application = Start(program, L"a.krvbook");
        EXPECT_EQ(ConnectedButton(application), connected);
        EXPECT_EQ(CellA1(application), 1);
        application.CallObject(L"Range", {L"A1"}).Put(L"Value", 7.0);
        application.GetObject(L"ActiveWorkbook").Call(L"SaveAs", {Path(L"b.krvbook").c_str()});
        application.Call(L"Quit");
    }
    EXPECT_EQ(program->ExitCode(), 0U);
    {
        const LateBound application = Start(program, L"b.krvbook");
        EXPECT_EQ(ConnectedButton(application), connected);
        EXPECT_EQ(CellA1(application), 7);
        PostMessageW(program->Window(), WM_CLOSE, 0, 0);
    }
    EXPECT_EQ(program->ExitCode(), 0U) << "nothing has changed that would be asked about";

    std::string altered = m_folder.Content("b.krvbook");
    altered.back() ^= 1;
    Write("c.krvbook", altered);
    {
        const LateBound application = Start(program, L"c.krvbook");
        EXPECT_EQ(ConnectedButton(application), "hidden");
        EXPECT_EQ(CellA1(application), 7);
        EXPECT_TRUE(application.GetText(L"StatusBar")
                        .starts_with("The toolbar's settings in \"c.krvbook\" can't be used"));
        // Another workbook brings its own control.
        application.GetObject(L"Workbooks").Call(L"Open", {Path(L"b.krvbook").c_str()});
        EXPECT_EQ(ConnectedButton(application), connected);
        application.Call(L"Quit");
    }
    EXPECT_EQ(program->ExitCode(), 0U);
}

}  // namespace
}  // namespace krv::testing
