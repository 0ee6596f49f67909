// The toolbar and the dialogs in a workbook, with mouse and keyboard: what opens, what the keys do,
// what a user is shown, and how the toolbar follows the workbook.
#include <string>
#include <vector>

#include "bench/shared/windows/ProgramMenu.h"
#include "tests/windows/session/WorkbookUser.h"

namespace krv::tests {
namespace {

using bench::UserWindow;
using bench::WindowOf;

class WorkbookDialogs : public WorkbookUser {
 protected:
    WorkbookDialogs() {
        StartGenerator("M7718C");
        OpenBook({Wave(70, 0.5), Wave(70, -0.5)});
    }
    // The names of the toolbar's buttons that are shown; those that are disabled in brackets.
    std::string Toolbar(const UserWindow& book) const {
        std::string shown;
        for (const char* name : {"Corvane TQL/KRV", "Connect", "Connected", "Settings", "PutData",
                                 "GetImage", "Help"}) {
            // Looked up once: it may change at any moment.
            if (const UserWindow button = book.PartNow(name); button.Handle() != nullptr) {
                const std::string text = button.TakesInput() ? name : "(" + std::string(name) + ")";
                shown += (shown.empty() ? "" : ", ") + text;
            }
        }
        return shown;
    }
    void ExpectToolbar(const std::string& caption, const std::string& state) const {
        const UserWindow book = WindowOf(caption, Process());
        bench::WaitUntil([&] { return Toolbar(book) == state; });
        EXPECT_EQ(Toolbar(book), state);
    }
    void Choose(UINT command) const { PostMessageW(m_program->Window(), WM_COMMAND, command, 0); }

    const std::string Unconnected =
        "Corvane TQL/KRV, Connect, (Settings), (PutData), (GetImage), Help";
    const std::string Connected = "Corvane TQL/KRV, Connected, Settings, PutData, GetImage, Help";
};

TEST_F(WorkbookDialogs, TheToolbarFollowsConnectionAndWorkbook) {
    ExpectToolbar("wave.csv - krvbook", Unconnected);
    Connect();
    ExpectToolbar("wave.csv - krvbook", Connected);
    EXPECT_EQ(Book().Part("Connected").Text(),
              "Connected to M7718C Signal Generator at " + m_generator->Address());

    // The connected look belongs to the workbook that it was made in.
    Choose(bench::MenuCommand::New);
    ExpectToolbar("Book1 - krvbook", Unconnected);
    Choose(bench::MenuCommand::FirstDocument);
    ExpectToolbar("wave.csv - krvbook", Connected);
    EXPECT_EQ(Book().Part("Connected").Text(),
              "Connected to M7718C Signal Generator at " + m_generator->Address());

    Book().Part("Connected").Click();
    const UserWindow dialog = WindowOf(ConnectCaption, Process());
    dialog.Part("Disconnect").Click();
    dialog.Part("Not connected.");
    dialog.Part("Close").Click();
    ExpectToolbar("wave.csv - krvbook", Unconnected);
    EXPECT_EQ(Book().Part("GetImage").Text(),
              "Get Screen Image.  Connect to a signal generator first.")
        << "why it is grey";
}

TEST_F(WorkbookDialogs, TheConnectDialogIsReachedByKeyboard) {
    Book().Part("Connect").Click();
    const UserWindow dialog = WindowOf(ConnectCaption, Process());
    EXPECT_FALSE(Book().TakesInput()) << "the dialog is modal";
    // Enter in the box of the foreign control is its own, not the dialog's.
    dialog.Part("Edit").Type("tcp://127.0.0.1:1");
    dialog.Press(VK_RETURN);
    dialog.Part(
        "No connection to the instrument at tcp://127.0.0.1:1: nothing accepts connections there, "
        "or another program holds its only one.");

    dialog.Part("Edit").Type(m_generator->Address());
    dialog.Press(VK_RETURN);
    dialog.Part("Connected to M7718C at " + m_generator->Address() + ".");

    // Tab goes through the foreign control's parts and on to the dialog's own, and back.
    std::string order;
    for (int tabs = 0; tabs < 7; ++tabs) {
        const HWND before = dialog.Focused().Handle();
        dialog.Press(VK_TAB);
        bench::WaitUntil([&] { return dialog.Focused().Handle() != before; });
        const UserWindow reached = dialog.Focused();
        order +=
            "[" +
            (reached.ClassName() == "Edit" || reached.ClassName() == "ListBox" ? reached.ClassName()
                                                                               : reached.Text()) +
            "]";
    }
    EXPECT_EQ(order, "[&Connect][&Disconnect][Help][Close][ListBox][&Search][Edit]");
    dialog.Press(VK_ESCAPE);
    dialog.ExpectGone();
    ExpectToolbar("wave.csv - krvbook", Connected);
}

TEST_F(WorkbookDialogs, TheDownloadDialogIsReachedByKeyboard) {
    Connect();
    const UserWindow dialog = OpenDownload();
    EXPECT_TRUE(Book().TakesInput()) << "the dialog is modeless";
    dialog.Part("optSpreadsheet").Click();
    dialog.Part("textIRange").Type("A1:A70");
    std::string order;
    for (int tabs = 0; tabs < 6; ++tabs) {
        const HWND before = dialog.Focused().Handle();
        dialog.Press(VK_TAB);
        bench::WaitUntil([&] { return dialog.Focused().Handle() != before; });
        for (const char* name : {"CommandCaptureSelectionI", "textQRange",
                                 "CommandCaptureSelectionQ", "chkMarkerSource", "TextMarkerStart",
                                 "TextMarkerLength", "textINumberPoints", "textQNumberPoints"}) {
            if (dialog.Part(name).Handle() == dialog.Focused().Handle()) {
                order += std::string(order.empty() ? "" : " ") + name;
            }
        }
    }
    EXPECT_EQ(order,
              "CommandCaptureSelectionI textQRange CommandCaptureSelectionQ chkMarkerSource "
              "TextMarkerStart TextMarkerLength");
    dialog.Press(VK_F1);
    dialog.Press(VK_ESCAPE);
    dialog.ExpectGone();

    // Hidden, not forgotten.
    EXPECT_EQ(OpenDownload().Part("textIRange").Text(), "A1:A70");
    Download().Close();
}

TEST_F(WorkbookDialogs, TheScreenImageIsSavedAsTheKindThatItsNameOrTheSaveDialogSays) {
    const auto saveAs = [&](const char* name) {
        Book().Part("GetImage").Click();
        const UserWindow dialog = WindowOf("Get Screen Image", Process());
        dialog.Part("Save to File").Click();
        dialog.Part("OK").Click();
        const UserWindow save = WindowOf("Save As", Process());
        save.Part("Edit").Type(PathOf(name).string());
        save.Part("Save").Click();
        save.ExpectGone();
    };
    const auto written = [&](const char* name) {
        // It is there before it can be read: whoever has renamed it still holds it then.
        std::string content;
        bench::WaitUntil([&] { return !(content = Content(name)).empty(); });
        return content;
    };
    Connect();
    saveAs("a.bmp");
    EXPECT_EQ(written("a.bmp").substr(0, 2), "BM");
    // Without an ending the kind that is chosen in the dialog counts, which is GIF at first.
    saveAs("plain");
    EXPECT_EQ(written("plain.gif").substr(0, 3), "GIF");
    saveAs("a.png");
    EXPECT_NE(Confirm("its name must end with").find("a.png"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(PathOf("a.png")));
}

}  // namespace
}  // namespace krv::tests
