// krvdoc's document, without a window.
#include <gtest/gtest.h>

#include "bench/document/DocumentApplication.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/TemporaryFolder.h"

namespace krv::tests {

using namespace bench;
namespace {

class DocumentTest : public ::testing::Test, private OfficeObserver {
 protected:
    DocumentTest() {
        application.AddObserver(*this);
        application.Add();
        document = application.OpenDocument();
        changes.clear();
    }
    ~DocumentTest() override { application.RemoveObserver(*this); }

    [[nodiscard]] std::string Path(const std::string& name) const {
        return (folder.Path() / name).string();
    }

    TemporaryFolder folder;
    DocumentApplication application;
    std::shared_ptr<Document> document;
    std::string changes;

 private:
    void OnChanged(OfficeChange change) override {
        constexpr const char* Names[] = {"documents ", "file ",   "text ",   "pictures ", "parts ",
                                         "selected ",  "status ", "cursor ", "screen ",   "bars "};
        changes += Names[static_cast<int>(change)];
    }
};

TEST_F(DocumentTest, ComesBackFromItsFileAsItWas) {
    document->SetText("First \xC3\xBC\n\nThird");
    document->SetText("First \xC3\xBC\n\nThird");
    document->AddPicture({.bytes = std::string("\0\x01", 2), .size = {480, 240}, .top = -3});
    EXPECT_EQ(changes, "text pictures ");
    EXPECT_EQ(ErrorNumberOf([&] { document->AddPicture({.size = {1585, 1}}); }), 4608);
    application.SaveAs(*document, Path("letter.krvdoc"));

    application.Open(Path("letter.krvdoc"));
    application.Close(application.Active());
    application.Open(Path("letter.krvdoc"));
    document = application.OpenDocument();
    EXPECT_EQ(document->Text(), "First \xC3\xBC\n\nThird");
    ASSERT_EQ(document->Pictures().size(), 1U);
    EXPECT_EQ(document->Pictures()[0].bytes, std::string("\0\x01", 2));
    EXPECT_EQ(document->Pictures()[0].left, std::nullopt);
    EXPECT_EQ(document->Pictures()[0].top, -3);
}

TEST_F(DocumentTest, IsTheOnlyOneThatItsApplicationHasOpen) {
    EXPECT_EQ(document->Name(), "Document1");
    const auto second = application.Add();
    EXPECT_EQ(application.Documents(), std::vector{second});
    application.Close(second);
    EXPECT_EQ(application.OpenDocument(), nullptr);
    changes.clear();
    application.SetCursor(0);
    application.SetCursor(0);
    EXPECT_EQ(ErrorNumberOf([&] { application.SetCursor(4); }), 4608);
    EXPECT_TRUE(application.IsWaiting());
    EXPECT_EQ(changes, "cursor ");
}

}  // namespace
}  // namespace krv::tests
