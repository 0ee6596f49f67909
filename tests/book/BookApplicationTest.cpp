#include "bench/book/BookApplication.h"

#include <gtest/gtest.h>

#include <fstream>

#include "tests/support/ErrorOf.h"
#include "tests/support/TemporaryFolder.h"

namespace krv::tests {

using namespace bench;
namespace {

class BookApplicationTest : public ::testing::Test, public OfficeObserver {
 protected:
    BookApplicationTest() { m_application.AddObserver(*this); }

    void OnChanged(OfficeChange change) override { m_changes.push_back(change); }

    std::string File(const std::string& name, const std::string& content) {
        std::filesystem::create_directories((m_folder.Path() / name).parent_path());
        std::ofstream(m_folder.Path() / name, std::ios::binary) << content;
        return (m_folder.Path() / name).string();
    }
    [[nodiscard]] std::string Path(const std::string& name) const {
        return (m_folder.Path() / name).string();
    }
    std::shared_ptr<Workbook> AddBook() {
        m_application.Add();
        return m_application.ActiveBook();
    }

    TemporaryFolder m_folder;
    BookApplication m_application;
    std::vector<OfficeChange> m_changes;
};

TEST_F(BookApplicationTest, SavesUnderANameThatNoOtherBookHas) {
    m_application.Open(File("a.csv", "I,Q\n0.5,2\n"));
    const auto book = m_application.ActiveBook();
    EXPECT_EQ(m_application.Open(book->FullName()), book);
    (void)m_application.Open(File("b.csv", ""));
    EXPECT_EQ(book->SheetName(), "a");
    book->SetCell({2, 0}, 0.1);
    EXPECT_TRUE(book->IsModified());
    EXPECT_EQ(ErrorNumberOf([&] { m_application.SaveAs(*book, Path("b.csv")); }), 1004);
    EXPECT_EQ(ErrorNumberOf([&] { m_application.Open(File("other/a.csv", "")); }), 1004);
    EXPECT_EQ(ErrorNumberOf([&] { m_application.SaveAs(*book, Path("no/c.csv")); }), 75);
    EXPECT_TRUE(book->IsModified());
    m_application.SaveAs(*book, Path("c.csv"));
    EXPECT_EQ(book->Name(), "c.csv");
    EXPECT_FALSE(book->IsModified());
    EXPECT_EQ(m_folder.Content("c.csv"), "I,Q\r\n0.5,2\r\n0.1,\r\n");
    EXPECT_EQ(ErrorNumberOf([&] { m_application.Open(Path("none.csv")); }), 53);
    EXPECT_EQ(ErrorNumberOf([&] { m_application.Open(m_folder.Path().string()); }), 75);
    EXPECT_EQ(ErrorNumberOf([&] { m_application.Open(File("bad.csv", "\"")); }), 321);
}

TEST_F(BookApplicationTest, ResolvesRangesOnTheActiveBook) {
    m_application.Open(File("wave.csv", "1\n2\n"));
    const BookRange range = m_application.Range("B2:C4,E5");
    EXPECT_EQ(range.Item(0, 1).Address(), "$B$1");
    EXPECT_EQ(range.Item(5, 2).Address(), "$C$6");
    EXPECT_EQ(range.Resize(1, std::nullopt).Address(), "$B$2:$C$2");
    EXPECT_EQ(m_application.Range("wave!A1").Count(), 1);
    EXPECT_EQ(ErrorNumberOf([&] { (void)range.Resize(0, 1); }), 1004);
    EXPECT_EQ(ErrorNumberOf([&] { (void)range.Item(1, 16384); }), 1004);
    EXPECT_EQ(ErrorNumberOf([&] { (void)range.Area(3); }), 9);
    EXPECT_EQ(ErrorNumberOf([&] { (void)m_application.Range("tone!A1"); }), 1004);
    m_application.Close(m_application.Active());
    EXPECT_EQ(ErrorNumberOf([&] { (void)range.Item(1, 1); }), 424);
}

TEST_F(BookApplicationTest, ReportsOnlyRealChangesOfItsSurroundings) {
    m_application.SetStatus("Reading I-File...");
    m_application.SetStatus("Reading I-File...");
    m_application.SetStatus(std::nullopt);
    m_application.SetCursor(2);
    EXPECT_TRUE(m_application.IsWaiting());
    EXPECT_EQ(ErrorNumberOf([&] { m_application.SetCursor(4); }), 1004);
    CommandBarModel& bar = m_application.GeneratorBar();
    CommandBarButton button = bar.At(bar.PositionOf("&putdata"));
    EXPECT_EQ(button.tooltipText, "PutData");
    button.isEnabled = false;
    bar.Set(5, button);
    bar.Set(5, button);
    EXPECT_EQ(ErrorNumberOf([&] { (void)bar.PositionOf("Print"); }), ErrorNumber::InvalidCall);
    EXPECT_EQ(m_changes, (std::vector{OfficeChange::StatusBar, OfficeChange::StatusBar,
                                      OfficeChange::Cursor, OfficeChange::CommandBars}));
}

TEST_F(BookApplicationTest, KeepsPicturesWithTheWorkbook) {
    const auto book = AddBook();
    DocumentPicture picture;
    picture.bytes = std::string("\0\xFF picture", 10);
    picture.size = {480, 240};
    picture.left = 63;
    picture.top = 15e6;
    book->AddPicture(picture);
    book->ChangePictureSize(book->AddPicture(picture), {100, 240});
    picture.size = {1e9, 1};
    EXPECT_EQ(ErrorNumberOf([&] { book->AddPicture(picture); }), 1004);
    EXPECT_TRUE(book->IsModified());

    m_application.SaveAs(*book, Path("a.krvbook"));
    m_application.Close(book);
    const auto reopened = m_application.Open(Path("a.krvbook"));
    ASSERT_EQ(reopened->Pictures().size(), 2U);
    const DocumentPicture& kept = reopened->Pictures()[1];
    EXPECT_EQ(kept.name, "Picture 2");
    EXPECT_EQ(kept.bytes, std::string("\0\xFF picture", 10));
    EXPECT_EQ(kept.size.width, 100);
    EXPECT_EQ(kept.left, 63);
    EXPECT_EQ(kept.top, 15e6);
    EXPECT_EQ(m_application.Add()->Name(), "Book2") << "the numbers go on";
}

}  // namespace
}  // namespace krv::tests
