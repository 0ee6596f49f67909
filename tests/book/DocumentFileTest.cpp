// The container of documents: what was written comes back, and nothing else is taken for it.
#include "bench/shared/DocumentFile.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "bench/book/BookApplication.h"
#include "common/Error.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/TemporaryFolder.h"

namespace krv::tests {

using namespace bench;
namespace {

const std::vector<DocumentSection> Sections{
    {"kind", "workbook"}, {"eight-88", std::string("\0\xFF\r\n", 4)}, {"empty", ""}};

// What reading all sections gives: "name=size" each, or what is wrong.
std::string Outcome(const std::string& bytes) {
    try {
        const DocumentFile file(bytes);
        std::string text;
        for (const DocumentSection& section : Sections) {
            const auto found = file.Section(section.name);
            text += section.name + (found == section.bytes ? " same; " : " differs; ");
        }
        return text;
    } catch (const Error& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::InvalidFileFormat);
        return error.Description();
    }
}

TEST(DocumentFileTest, GivesBackWhatWasWritten) {
    const std::string bytes = EncodeDocument(Sections);
    EXPECT_TRUE(DocumentFile::IsOne(bytes));
    EXPECT_EQ(Outcome(bytes), "kind same; eight-88 same; empty same; ");
    EXPECT_EQ(DocumentFile(bytes).Section("none"), std::nullopt);
    DocumentFile(bytes).RequireKind("workbook");
    EXPECT_THROW(DocumentFile(bytes).RequireKind("document"), Error);
    EXPECT_THROW(DocumentFile(EncodeDocument({})).RequireKind("workbook"), Error);
    EXPECT_FALSE(DocumentFile::IsOne("I,Q\n"));
}

// Any single bit, any cut and any addition.
TEST(DocumentFileTest, TakesNothingElseForIt) {
    const std::string bytes = EncodeDocument(Sections);
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        EXPECT_NE(Outcome(bytes.substr(0, at)).find("damaged"), std::string::npos) << at;
        for (int bit = 0; bit < 8; ++bit) {
            std::string altered = bytes;
            altered[at] = static_cast<char>(altered[at] ^ (1 << bit));
            EXPECT_EQ(Outcome(altered).find("same"), std::string::npos) << at << ' ' << bit;
        }
    }
    EXPECT_EQ(Outcome(bytes + 'x'), "The file is damaged: it is longer than it was.");
    std::string later = bytes;
    later[8] = 2;
    EXPECT_EQ(Outcome(later), "The file is of version 2, which this program can't read.");
}

class SavedWorkbookTest : public ::testing::Test, public OfficeObserver {
 protected:
    SavedWorkbookTest() { m_application.AddObserver(*this); }
    void OnOpened(OfficeDocument& opened) override {
        EXPECT_EQ(m_application.Active().get(), &opened);
        m_opened.clear();
        for (const auto& part : opened.XmlParts()) {
            m_opened += *part;
        }
    }
    void OnSaving(OfficeDocument& book) override {
        if (book.XmlParts().empty()) {
            book.AddXmlPart(m_part);
        }
    }

    [[nodiscard]] std::string Path(const std::string& name) const {
        return (m_folder.Path() / name).string();
    }
    std::shared_ptr<Workbook> Reopen(const std::string& name) {
        while (m_application.Active()) {
            m_application.Close(m_application.Active());
        }
        m_application.Open(Path(name));
        return m_application.ActiveBook();
    }

    TemporaryFolder m_folder;
    BookApplication m_application;
    std::string m_part = "<state xmlns='urn:x'>of the control</state>";
    std::string m_opened;
};

TEST_F(SavedWorkbookTest, ComesBackWithCellsAndXmlParts) {
    m_application.Add();
    const auto book = m_application.ActiveBook();
    book->SetCell({0, 1}, 1.0 / 3.0);
    book->SetCell({4, 0}, std::string("a;\"b\"\r\nc"));
    m_application.SaveAs(*book, Path("a.KrvBook"));
    EXPECT_EQ(m_folder.Names(), std::set<std::string>{"a.KrvBook"});

    const auto again = Reopen("a.KrvBook");
    EXPECT_EQ(again->Cells().At({0, 1}), Value(1.0 / 3.0));
    EXPECT_EQ(again->Cells().At({4, 0}), Value(std::string("a;\"b\"\r\nc")));
    EXPECT_EQ(again->SheetName(), "a");
    EXPECT_EQ(m_opened, m_part);
    EXPECT_EQ(again->Notice(), "");
    EXPECT_FALSE(again->IsModified());

    again->RemoveXmlPart(again->XmlParts()[0]);
    EXPECT_TRUE(again->IsModified());
    EXPECT_EQ(ErrorOf([&] { again->AddXmlPart("<a>\n<b></a>"); }),
              "321 The XML isn't well formed in line 2: \"b\" is missing.");
    m_application.SaveAs(*again, Path("b.csv"));
    EXPECT_EQ(again->XmlParts().size(), 1U);
    again->RemoveXmlPart(again->XmlParts()[0]);
    EXPECT_FALSE(again->IsModified()) << "such a file has no room for them";
    EXPECT_EQ(m_folder.Content("b.csv").substr(0, 20), ",0.3333333333333333\r");
    Reopen("b.csv");
    EXPECT_EQ(m_opened, "");
}

}  // namespace
}  // namespace krv::tests
