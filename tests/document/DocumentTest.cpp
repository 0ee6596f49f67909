// krvdoc's document, without a window.
#include <gtest/gtest.h>

#include "bench/document/DocumentApplication.h"
#include "bench/document/PageLayout.h"
#include "bench/shared/DocumentFile.h"
#include "bench/shared/FileBytes.h"
#include "common/MemoryPropertyBag.h"
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

    std::int32_t ErrorOfOpening(const std::string& bytes) {
        WriteFileBytes(Path("altered.krvdoc"), bytes);
        return ErrorNumberOf([&] { application.Open(Path("altered.krvdoc")); });
    }
    [[nodiscard]] std::string Path(const std::string& name) const {
        return (folder.Path() / name).string();
    }

    TemporaryFolder folder;
    DocumentApplication application;
    std::shared_ptr<Document> document;
    std::string changes;

 private:
    void OnChanged(OfficeChange change) override {
        constexpr const char* Names[] = {"documents ", "file ",     "text ",
                                         "pictures ",  "selected ", "status ",
                                         "cursor ",    "screen ",   "bars "};
        changes += Names[static_cast<int>(change)];
    }
};

TEST_F(DocumentTest, ComesBackFromItsFileAsItWas) {
    document->SetText("First \xC3\xBC\n\nThird");
    document->SetText("First \xC3\xBC\n\nThird");
    document->AddPicture({.bytes = std::string("\0\x01", 2), .size = {480, 240}, .top = -3});
    EXPECT_EQ(changes, "text pictures ");
    EXPECT_EQ(ErrorNumberOf([&] { document->AddPicture({.size = {1585, 1}}); }), 4608);
    document->SetControlProperties(std::string("bag\0s", 5));
    application.SaveAs(*document, Path("letter.krvdoc"));

    application.Open(Path("letter.krvdoc"));
    application.Close(application.Active());
    application.Open(Path("letter.krvdoc"));
    document = application.OpenDocument();
    EXPECT_EQ(document->Text(), "First \xC3\xBC\n\nThird");
    EXPECT_EQ(document->ControlProperties(), std::string("bag\0s", 5));
    ASSERT_EQ(document->Pictures().size(), 1U);
    EXPECT_EQ(document->Pictures()[0].bytes, std::string("\0\x01", 2));
    EXPECT_EQ(document->Pictures()[0].left, std::nullopt);
    EXPECT_EQ(document->Pictures()[0].top, -3);
}

TEST_F(DocumentTest, IsRefusedWhenItsFileIsNone) {
    const auto saved = [&](const char* kind, const std::string& pictures) {
        return EncodeDocument(
            std::vector<DocumentSection>{{"kind", kind}, {"text", ""}, {"pictures", pictures}});
    };
    MemoryPropertyBag pictures;
    const auto contents = [&](const char* name, const Value& value) {
        pictures.Write(name, value);
        const auto bytes = pictures.Contents();
        return std::string(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    };
    const std::string none = contents("count", std::int32_t{1});
    (void)contents("name1", std::string("Picture 1"));
    (void)contents("bytes1", ByteArray{});
    (void)contents("height1", 1.0);
    const std::string huge = contents("width1", 1e300);
    const std::string wrongKind = contents("width1", std::string("wide"));
    const std::string negative = contents("count", std::int32_t{-1});
    EXPECT_EQ(ErrorOfOpening("plain text"), 321);
    for (const std::string& section : {std::string("no bag"), none, huge, wrongKind, negative}) {
        EXPECT_EQ(ErrorOfOpening(saved("document", section)), 321);
        EXPECT_EQ(application.OpenDocument(), document) << "what was open stays";
    }
    EXPECT_EQ(ErrorOfOpening(saved("workbook", contents("count", std::int32_t{0}))), 321);
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

TEST(PageLayout, PutsPicturesWithoutAPlaceBelowTheText) {
    const std::vector<DocumentPicture> pictures{
        {.size = {100, 50}}, {.size = {80, 40}, .left = 200, .top = 10}, {.size = {60, 30}}};
    const PageLayout layout = LayOut(pictures, 100);
    EXPECT_EQ(layout.pictures[0].top, 108);
    EXPECT_EQ(layout.pictures[1].left, 200);
    EXPECT_EQ(layout.pictures[1].top, 10);
    EXPECT_EQ(layout.pictures[2].top, 108 + 50 + 8) << "the placed one takes no room";
    EXPECT_EQ(layout.bottom, 166 + 30);
}

}  // namespace
}  // namespace krv::tests
