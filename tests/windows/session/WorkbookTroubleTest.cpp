// What goes wrong during a user's session: an instrument that vanishes, a user who cancels, a
// workbook that is busy, closes or dies. The control stays usable, says what happened, and never
// hangs.
#include <string>

#include "tests/windows/session/WorkbookUser.h"

namespace krv::tests {
namespace {

using bench::UserWindow;
using bench::WindowOf;

class WorkbookTrouble : public WorkbookUser {
 protected:
    static constexpr const char* Progress = "KRV -- Download Data";

    void OpenConnected(std::size_t points, std::vector<std::string> faults = {}) {
        StartGenerator("M7718C", std::move(faults));
        OpenBook({Wave(points, 0.5), Wave(points, -0.5)});
        Connect();
    }
    static std::string Cells(char column, std::size_t points) {
        return std::string(1, column) + "1:" + column + std::to_string(points);
    }
};

TEST_F(WorkbookTrouble, ACancelledDownloadEndsSilentlyAndTheNextOneWorks) {
    constexpr std::size_t Many = 400000;
    OpenConnected(Many);
    const UserWindow dialog = OpenDownloadOfCells(Cells('A', Many), Cells('B', Many));
    for (const bool byKey : {false, true}) {
        DownloadAs(dialog, "CANCELLED");
        const UserWindow progress = WindowOf(Progress, Process());
        if (byKey) {
            progress.Press(VK_ESCAPE);
        } else {
            progress.Part("CommandCancel").Click();
        }
        progress.ExpectGone();
        EXPECT_TRUE(bench::WaitUntil([&] { return dialog.TakesInput(); }));
    }
    // The question that comes with a long download.
    DownloadAs(dialog, "DECLINED");
    EXPECT_EQ(bench::Answer("Do you want to continue?", "No", Process()).find("Estimated"), 0U);
    dialog.Part("textIRange").Type("A1:A100");
    dialog.Part("textQRange").Type("B1:B100");
    DownloadAs(dialog, "SENT");
    Confirm(Complete);
    EXPECT_EQ(Stored("SENT", "iq").size(), 200U);
    EXPECT_EQ(Stored("CANCELLED", "iq"), Codes{});
    EXPECT_EQ(Stored("DECLINED", "iq"), Codes{});
}

TEST_F(WorkbookTrouble, ABusyWorkbookIsNamedAndTheNextDownloadWorks) {
    OpenConnected(100);
    const UserWindow dialog = OpenDownloadOfCells("A1:A100", "B1:B100");
    const HWND grid = FindWindowExW(Book().Handle(), nullptr, L"KrvBookGrid", nullptr);
    PostMessageW(grid, WM_CHAR, '7', 0);
    Book().Part("KrvBookGrid").Part("Edit");
    DownloadAs(dialog, "BUSY");
    const std::string told = Confirm("busy");
    EXPECT_NE(told.find("Finish what it is doing"), std::string::npos) << told;
    PostMessageW(Book().Part("KrvBookGrid").Part("Edit").Handle(), WM_KEYDOWN, VK_ESCAPE, 1);
    EXPECT_TRUE(bench::WaitUntil([&] { return !Book().Part("KrvBookGrid").HasPart("Edit"); }));
    DownloadAs(dialog, "READY");
    Confirm(Complete);
    EXPECT_EQ(Stored("READY", "iq").size(), 200U);
}

TEST_F(WorkbookTrouble, AWorkbookThatClosesDuringADownloadEndsWithoutAFault) {
    OpenConnected(2000, {"bandwidth=2000"});
    const UserWindow book = Book();
    DownloadAs(OpenDownloadOfCells("A1:A2000", "B1:B2000"), "CUT");
    WindowOf(Progress, Process());
    book.Close();
    EXPECT_EQ(m_program->ExitCode(), 0U);
    m_program.reset();
}

}  // namespace
}  // namespace krv::tests
