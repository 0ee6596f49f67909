#include "bench/book/BookApplication.h"

#include <gtest/gtest.h>

#include <fstream>

#include "tests/support/ErrorOf.h"
#include "tests/support/TemporaryFolder.h"

namespace krv::tests {

using namespace bench;
namespace {

class BookApplicationTest : public ::testing::Test {
 protected:
    std::string File(const std::string& name, const std::string& content) {
        std::filesystem::create_directories((m_folder.Path() / name).parent_path());
        std::ofstream(m_folder.Path() / name, std::ios::binary) << content;
        return (m_folder.Path() / name).string();
    }
    [[nodiscard]] std::string Path(const std::string& name) const {
        return (m_folder.Path() / name).string();
    }

    TemporaryFolder m_folder;
    BookApplication m_application;
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

}  // namespace
}  // namespace krv::tests
