// What documents keep for the toolbar in a custom XML part: when it is written and read, and what
// happens to one that can't be read.
#include <cstddef>
#include <string>
#include <vector>

#include "tests/support/ErrorOf.h"
#include "tests/support/RunningGenerator.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/windows/addin/AddInHost.h"
#include "tests/windows/support/DialogUser.h"
#include "windows/addin/ControlPart.h"

namespace krv::tests {
namespace {

using windows::DecodePart;
using windows::EncodePart;

class DocumentParts : public AddInInExcel {
 protected:
    void StartConnected() {
        Start();
        ASSERT_TRUE(WaitForControl());
        Connect();
    }
    void Connect() {
        Let([&] { UseConnectDialog(m_generator.Address()); }, [&] { Click("Connect"); });
        EXPECT_TRUE(WaitUntil([&] { return !m_model.Active()->XmlParts().empty(); }));
    }
    [[nodiscard]] std::string File(const char* name) const {
        return (m_folder.Path() / name).string();
    }
    void Reopen(const std::string& file) {
        m_model.Close(m_model.Active());
        EXPECT_TRUE(WaitUntil([&] { return SitedControls() == 0; }));
        m_model.Open(file);
        PumpMessages();
    }

    RunningGenerator m_generator;
    TemporaryFolder m_folder;
};

TEST_F(DocumentParts, BringAConnectionBackAndMarkNoUnchangedDocument) {
    Start();
    ASSERT_TRUE(WaitForControl());
    EXPECT_FALSE(m_model.Active()->IsModified()) << "a control alone is no change";
    EXPECT_TRUE(m_model.Active()->XmlParts().empty());
    Connect();
    EXPECT_TRUE(m_model.Active()->IsModified());

    const auto part = m_model.Active()->XmlParts()[0];
    m_model.SaveAs(*m_model.Active(), File("kept.krvbook"));
    EXPECT_EQ(m_model.Active()->XmlParts()[0], part) << "saving alone writes nothing";
    Reopen(File("kept.krvbook"));
    EXPECT_TRUE(WaitUntil([&] { return Bar() == Connected; })) << Bar();
    EXPECT_FALSE(m_model.Active()->IsModified());
    EXPECT_EQ(*m_model.Active()->XmlParts()[0], *part);

    // Closed without saving: the file has what it had.
    Let(
        [] {
            const bench::UserWindow dialog = Dialog(ConnectCaption);
            dialog.Part("Disconnect").Click();
            dialog.Part("Not connected.");
            dialog.Part("Close").Click();
        },
        [&] { Click("Connected"); });
    EXPECT_TRUE(WaitUntil([&] { return m_model.Active()->IsModified(); }));
    EXPECT_EQ(m_model.Active()->XmlParts().size(), 1U);
    EXPECT_NE(*m_model.Active()->XmlParts()[0], *part);
    Reopen(File("kept.krvbook"));
    EXPECT_TRUE(WaitUntil([&] { return Bar() == Connected; })) << Bar();
    End();
}

TEST_F(DocumentParts, GoFromWindowToWindowWithTheirDocument) {
    StartConnected();
    const auto book = m_model.Active();
    const auto part = book->XmlParts()[0];
    const windows::LateBound control = Control();
    m_window.Add();
    m_model.Add();
    EXPECT_TRUE(WaitUntil([&] { return SitedControls() == 1; })) << "in the new window";
    // A second window of the first workbook.
    m_model.Activate(book);
    EXPECT_TRUE(WaitUntil([&] { return SitedControls() == 2; }));
    EXPECT_EQ(Control().Object(), control.Object()) << "the same one";
    Let(
        [&] {
            const bench::UserWindow dialog = Dialog(ConnectCaption);
            EXPECT_EQ(GetWindow(dialog.Handle(), GW_OWNER), m_window.MainHandle());
            dialog.Part("Close").Click();
        },
        [&] { Click("Connected"); });

    // The window goes, and the controls in it; the workbooks are still open in the other one.
    m_window.Close();
    EXPECT_FALSE(Control());
    m_model.Activate(m_model.Documents()[1]);
    m_model.Activate(book);
    EXPECT_TRUE(WaitUntil([&] { return Control() && Bar() == Connected; })) << Bar();
    EXPECT_NE(Control().Object(), control.Object());
    EXPECT_EQ(book->XmlParts(), std::vector{part}) << "what it keeps hasn't changed";
    End();
}

TEST_F(DocumentParts, ThatCannotBeReadAreToldOnceAndStay) {
    const std::string damaged =
        std::string("<toolbar xmlns=\"") + windows::PartNamespace + "\" version=\"2\"/>";
    {
        const auto book = m_model.Add();
        book->AddXmlPart(damaged);
        m_model.SaveAs(*book, File("later.krvbook"));
        m_model.Close(book);
    }
    Start();
    ASSERT_TRUE(WaitForControl());
    Let([] { bench::Answer("They stay in the document.", "OK", GetCurrentProcessId()); },
        [&] { Reopen(File("later.krvbook")); });
    EXPECT_EQ(Bar(), Unconnected);
    EXPECT_FALSE(m_model.Active()->IsModified());

    Connect();
    EXPECT_TRUE(WaitUntil([&] { return m_model.Active()->XmlParts().size() == 2; }));
    m_model.SaveAs(*m_model.Active(), File("both.krvbook"));
    // A box would keep this for ever.
    Reopen(File("both.krvbook"));
    EXPECT_TRUE(WaitUntil([&] { return Bar() == Connected; })) << Bar();
    EXPECT_EQ(*m_model.Active()->XmlParts()[0], damaged);
    End();
}

TEST(ControlPart, IsReadHoweverTheHostWritesItAndNotWhenItIsDamaged) {
    for (std::size_t size = 0; size < 8; ++size) {
        std::vector<std::byte> contents(size);
        for (std::size_t at = 0; at < size; ++at) {
            contents[at] = static_cast<std::byte>(251 * (at + 1));
        }
        EXPECT_EQ(DecodePart(EncodePart(contents)), contents) << size;
    }
    const std::string rewritten =
        "\xEF\xBB\xBF<?xml version='1.0'?>\r\n<n:toolbar bytes='4' xmlns:n='urn:x'\tversion = '1' >"
        "\r\n  AQID\r\n  BA==\r\n</n:toolbar>\r\n";
    EXPECT_EQ(DecodePart(rewritten),
              (std::vector<std::byte>{std::byte{1}, std::byte{2}, std::byte{3}, std::byte{4}}));
    for (const char* damaged :
         {"", "<", "<toolbar", "</toolbar>", "<a></", "<toolbar version=\"1\"/>",
          "<toolbar version=\"1\" bytes=\"3\">AQ==</toolbar>",
          "<toolbar version=\"1\" bytes=\"3\">AQI\x80</toolbar>", "<toolbar version='1>x</toolbar>",
          "<toolbar bytes=\"3\">AQID</toolbar>", "<?xml version='1'?"}) {
        EXPECT_EQ(ErrorOf([&] { (void)DecodePart(damaged); }).substr(0, 9), "321 They ") << damaged;
    }
}

}  // namespace
}  // namespace krv::tests
