// krvdoc's document, without a window.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "bench/document/DocumentApplication.h"
#include "bench/document/DocumentErrors.h"
#include "bench/document/PageLayout.h"
#include "bench/shared/DocumentFile.h"
#include "bench/shared/FileBytes.h"
#include "bench/shared/PictureCoding.h"
#include "common/MemoryPropertyBag.h"
#include "tests/support/TemporaryFolder.h"

namespace krv::tests {

using namespace bench;
namespace {

// Files that begin with "picture" are pictures of 480 by 240 points.
class FakeMeter final : public PictureMeter {
 public:
    PictureSize NaturalSize(const std::string& bytes) override {
        if (!bytes.starts_with("picture")) {
            throw Error(DocumentErrorNumber::InvalidPicture, "Invalid picture");
        }
        return {480, 240};
    }
};

class DocumentTest : public ::testing::Test, private DocumentObserver {
 protected:
    DocumentTest() {
        application.AddObserver(*this);
        document = application.Add();
        changes.clear();
    }
    ~DocumentTest() override { application.RemoveObserver(*this); }

    std::string File(const std::string& name, const std::string& bytes) {
        const std::string path = Path(name);
        WriteFileBytes(path, bytes);
        return path;
    }
    [[nodiscard]] std::string Path(const std::string& name) const {
        return (folder.Path() / name).string();
    }
    template <class Work>
    static std::int32_t ErrorOf(const Work& work) {
        try {
            work();
            return 0;
        } catch (const Error& error) {
            return error.Number();
        }
    }
    [[nodiscard]] const DocumentPicture& Picture(std::size_t index) const {
        return document->Pictures().at(index);
    }

    TemporaryFolder folder;
    FakeMeter meter;
    DocumentApplication application{meter};
    std::shared_ptr<Document> document;
    std::string changes;
    std::string whatSavingPutsIn;

 private:
    void OnChanged(DocumentChange change) override {
        constexpr const char* Names[] = {"document ", "text ",   "pictures ", "file ",
                                         "status ",   "cursor ", "bars "};
        changes += Names[static_cast<int>(change)];
    }
    void OnSaving(Document& saved) override {
        if (!whatSavingPutsIn.empty()) {
            saved.SetControlProperties(whatSavingPutsIn);
        }
    }
};

TEST_F(DocumentTest, TakesPicturesInTheSizeThatIsAskedFor) {
    PictureToAdd picture{.file = File("screen.wmf", "picture")};
    document->AddPicture(picture);
    picture.width = 120;
    document->AddPicture(picture);
    picture.width.reset();
    picture.height = 120;
    picture.left = 36;
    document->AddPicture(picture);
    picture.width = 10;
    picture.top = -5.5;
    document->AddPicture(picture);
    const PictureSize sizes[] = {{480, 240}, {120, 60}, {240, 120}, {10, 120}};
    for (std::size_t index = 0; index < std::size(sizes); ++index) {
        EXPECT_EQ(Picture(index).size.width, sizes[index].width) << index;
        EXPECT_EQ(Picture(index).size.height, sizes[index].height) << index;
    }
    EXPECT_EQ(Picture(2).left, 36);
    EXPECT_EQ(Picture(2).top, std::nullopt);
    EXPECT_EQ(Picture(3).top, -5.5);
    EXPECT_EQ(changes, "pictures pictures pictures pictures ");
    EXPECT_TRUE(document->IsModified());
}

TEST_F(DocumentTest, RefusesWhatIsNoPictureAndWhatFitsNoPage) {
    const std::string file = File("screen.wmf", "picture");
    constexpr double Infinite = std::numeric_limits<double>::infinity();
    const struct {
        PictureToAdd picture;
        std::int32_t error;
    } cases[] = {
        {{.file = Path("missing.wmf")}, ErrorNumber::FileNotFound},
        {{.file = File("text.wmf", "text")}, DocumentErrorNumber::InvalidPicture},
        {{.file = file, .isSavedWithDocument = false}, DocumentErrorNumber::ValueOutOfRange},
        {{.file = file, .width = 0}, DocumentErrorNumber::ValueOutOfRange},
        {{.file = file, .height = -1}, DocumentErrorNumber::ValueOutOfRange},
        {{.file = file, .width = std::nan("")}, DocumentErrorNumber::ValueOutOfRange},
        {{.file = file, .left = Infinite}, DocumentErrorNumber::ValueOutOfRange},
        {{.file = file, .height = 1585}, DocumentErrorNumber::ValueOutOfRange},
    };
    for (const auto& [picture, error] : cases) {
        EXPECT_EQ(ErrorOf([&] { document->AddPicture(picture); }), error)
            << &picture - &cases->picture;
    }
    EXPECT_EQ(changes, "");
    document->AddPicture({.file = file});
    EXPECT_EQ(
        ErrorOf([&] { document->ChangePicture(0, [](auto& picture) { picture.size.width = 0; }); }),
        DocumentErrorNumber::ValueOutOfRange);
    EXPECT_EQ(Picture(0).size.width, 480);
    EXPECT_EQ(ErrorOf([&] { document->RemovePicture(1); }), DocumentErrorNumber::NoSuchMember);
}

TEST_F(DocumentTest, NamesEachPictureAnew) {
    const PictureToAdd picture{.file = File("screen.wmf", "picture")};
    for (int count = 0; count < 3; ++count) {
        document->AddPicture(picture);
    }
    document->RemovePicture(0);
    document->AddPicture(picture);
    EXPECT_EQ(Picture(0).name, "Picture 2");
    EXPECT_EQ(Picture(2).name, "Picture 4");
    EXPECT_EQ(document->PictureByName("picture 3"), 1U);
    EXPECT_EQ(ErrorOf([&] { (void)document->PictureByName("Picture 1"); }),
              DocumentErrorNumber::NoSuchMember);
}

TEST_F(DocumentTest, ComesBackFromItsFileAsItWas) {
    document->SetText("First \xC3\xBC\n\nThird");
    const std::string picture = File("screen.wmf", std::string("picture\0\x01", 9));
    document->AddPicture({.file = picture, .left = 1.25, .top = -3});
    document->AddPicture({.file = picture, .isLinked = true, .isSavedWithDocument = false});
    document->AddPicture({.file = picture, .isLinked = true});
    whatSavingPutsIn = std::string("bag\0s", 5);
    application.Save(*document, Path("letter.krvdoc"));
    EXPECT_FALSE(document->IsModified());
    EXPECT_EQ(document->Name(), "letter.krvdoc");
    WriteFileBytes(picture, "picture, changed");

    changes.clear();
    const auto before = document->Pictures();
    document = application.Open(Path("letter.krvdoc"));
    EXPECT_EQ(changes, "document ");
    EXPECT_EQ(document->Text(), "First \xC3\xBC\n\nThird");
    EXPECT_EQ(document->ControlProperties(), whatSavingPutsIn);
    EXPECT_EQ(document->Problem(), "");
    ASSERT_EQ(document->Pictures().size(), 3U);
    EXPECT_EQ(Picture(0).bytes, before[0].bytes);
    EXPECT_EQ(Picture(0).left, 1.25);
    EXPECT_EQ(Picture(0).top, -3);
    EXPECT_EQ(Picture(1).bytes, "picture, changed") << "only linked";
    EXPECT_EQ(Picture(1).top, std::nullopt);
    EXPECT_EQ(Picture(2).bytes, before[2].bytes) << "linked and saved";
    EXPECT_EQ(Picture(2).link, picture);
}

TEST_F(DocumentTest, IsRefusedWhenItsFileIsNone) {
    const auto saved = [&](std::vector<DocumentSection> sections) {
        return File("altered.krvdoc", EncodeDocument(sections));
    };
    MemoryPropertyBag pictures;
    pictures.Write("count", std::int32_t{1});
    const auto contents = [&] {
        const auto bytes = pictures.Contents();
        return std::string(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    };
    const std::string noPictures = contents();
    pictures.Write("name1", std::string("Picture 1"));
    pictures.Write("width1", 1e300);
    pictures.Write("height1", 1.0);
    const std::string hugePicture = contents();
    pictures.Write("width1", std::string("wide"));
    const std::string wrongKind = contents();
    pictures.Write("count", std::int32_t{-1});
    const std::string files[] = {
        File("plain.txt", "plain text"),
        saved({{"kind", "workbook"}, {"cells", "1"}}),
        saved({{"kind", "document"}, {"text", ""}, {"pictures", "no bag"}}),
        saved({{"kind", "document"}, {"text", ""}, {"pictures", noPictures}}),
        saved({{"kind", "document"}, {"text", ""}, {"pictures", hugePicture}}),
        saved({{"kind", "document"}, {"text", ""}, {"pictures", wrongKind}}),
        saved({{"kind", "document"}, {"text", ""}, {"pictures", contents()}}),
    };
    for (const std::string& file : files) {
        EXPECT_EQ(ErrorOf([&] { application.Open(file); }), ErrorNumber::InvalidFileFormat) << file;
        EXPECT_EQ(application.OpenDocument(), document) << "what was open stays";
    }
    EXPECT_EQ(ErrorOf([&] { application.Open(Path("missing.krvdoc")); }),
              ErrorNumber::FileNotFound);
}

TEST_F(DocumentTest, OpensWithDamagedControlPropertiesAndSaysSo) {
    std::string bytes = EncodeDocument(std::vector<DocumentSection>{
        {"kind", "document"}, {"text", "kept"}, {"control", "properties"}});
    bytes.back() = '!';
    document = application.Open(File("damaged.krvdoc", bytes));
    EXPECT_EQ(document->Text(), "kept");
    EXPECT_EQ(document->ControlProperties(), std::nullopt);
    EXPECT_NE(document->Problem(), "");
}

TEST_F(DocumentTest, IsTheOnlyOneThatItsApplicationHasOpen) {
    EXPECT_EQ(document->Name(), "Document1");
    const auto second = application.Add();
    EXPECT_EQ(application.ActiveDocument(), second);
    EXPECT_EQ(ErrorOf([&] { application.Save(*document, Path("closed.krvdoc")); }),
              DocumentErrorNumber::NoDocumentOpen);
    application.Close();
    EXPECT_EQ(ErrorOf([&] { (void)application.ActiveDocument(); }),
              DocumentErrorNumber::NoDocumentOpen);
    EXPECT_EQ(changes, "document document ");
    application.SetCursor(0);
    application.SetCursor(0);
    EXPECT_EQ(ErrorOf([&] { application.SetCursor(4); }), DocumentErrorNumber::ValueOutOfRange);
    EXPECT_EQ(application.Cursor(), SystemCursor::Wait);
    application.SetStatus("Connecting...");
    EXPECT_EQ(changes, "document document cursor status ");
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
    EXPECT_EQ(LayOut({{.size = {10, 10}, .top = 0}}, 100).bottom, 100);
}

}  // namespace
}  // namespace krv::tests
