// krvdoc's automation objects, called as add-ins and macros call them.
#include <gtest/gtest.h>

#include "bench/document/windows/DocumentApplicationObject.h"
#include "bench/shared/FileBytes.h"
#include "bench/shared/windows/OfficeObjects.h"
#include "common/AsKind.h"
#include "hosts/AppConnectionWord.h"
#include "tests/support/FakeHostedControl.h"
#include "tests/support/RecordingHelp.h"
#include "tests/support/RecordingPictures.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/windows/support/AutomationTest.h"
#include "tests/windows/support/PictureFiles.h"
#include "tests/windows/support/WindowDouble.h"
#include "windows/automation/AutomationPeer.h"
#include "windows/automation/LateBound.h"
#include "windows/automation/VariantValue.h"
#include "windows/office/ApplicationObjects.h"

namespace krv::tests {
namespace {

using namespace bench;

using windows::LateBound;
using windows::ToVariant;

_variant_t Text(const std::string& text) {
    return ToVariant(text);
}

// A running application without a window, and what a caller does to it.
class DocumentAutomationTest : public AutomationTest {
 protected:
    std::shared_ptr<Document> AddDocument() {
        m_model.Add();
        return m_model.OpenDocument();
    }
    [[nodiscard]] std::string File(const std::string& name, const std::string& bytes) const {
        WriteFileBytes(Path(name), bytes);
        return Path(name);
    }
    [[nodiscard]] std::string Path(const std::string& name) const {
        return (m_folder.Path() / name).string();
    }

    TemporaryFolder m_folder;
    DocumentApplication m_model;
    WindowDouble m_window;
    OfficeObjects<DocumentApplicationObject> m_objects{m_model, m_window};
    LateBound m_application{m_objects.Application()};
};

TEST_F(DocumentAutomationTest, ServesTheProductsOwnAdapter) {
    const auto word = AsKind<ports::WordHost>(windows::HostOf(m_objects.Application()));
    EXPECT_EQ(ErrorOf([&] { AsKind<ports::ExcelHost>(windows::HostOf(m_objects.Application())); }),
              "13 Type mismatch");
    EXPECT_EQ(ErrorOf([&] { (void)word->ActiveDocument(); }),
              "4248 This command is not available because no document is open. (krvdoc)");
    const auto document = AddDocument();
    word->ActiveDocument()->AddPicture(File("screen.wmf", PlaceableMetafile()));
    ASSERT_EQ(document->Pictures().size(), 1U);
    EXPECT_EQ(document->Pictures()[0].size.width, 480);
    EXPECT_EQ(document->Pictures()[0].size.height, 240);
    EXPECT_EQ(
        ErrorOf([&] { word->ActiveDocument()->AddPicture(Path("missing.wmf")); }).substr(0, 3),
        "53 ");
    EXPECT_EQ(windows::AutomationBehind(*word->ActiveDocument()->Application()),
              m_objects.Application());

    EXPECT_TRUE(word->IsStatusBarDisplayed());
    word->SetStatusBarText("Reading I-File...");
    EXPECT_EQ(m_model.StatusText(), "Reading I-File...");
    word->SetBusyCursor(true);
    EXPECT_TRUE(m_model.IsWaiting());
    word->SetBusyCursor(false);
    EXPECT_FALSE(m_model.IsWaiting());
    m_model.AddIns().push_back({"krv.dot", "C:\\Templates", false});
    word->AddIns().at(0)->SetInstalled(true);
    EXPECT_TRUE(m_model.AddIns()[0].isInstalled);
    m_model.AddGeneratorBar();
    word->CommandBarByName(GeneratorBarName)->ControlByCaption("PutData")->SetEnabled(false);
    EXPECT_FALSE(m_model.GeneratorBar().At(5).isEnabled);
}

TEST_F(DocumentAutomationTest, AddsPicturesWithAnyOfTheirArguments) {
    const auto document = AddDocument();
    const std::string file = File("screen.wmf", PlaceableMetafile());
    const LateBound shapes = m_application.GetObject(L"ActiveDocument").GetObject(L"Shapes");
    const _variant_t none(DISP_E_PARAMNOTFOUND, VT_ERROR);
    (void)shapes.Call(L"AddPicture", {Text(file), ToVariant(false), ToVariant(true),
                                      ToVariant(36.5), none, ToVariant(std::int32_t{120})});
    const DocumentPicture& picture = document->Pictures()[0];
    EXPECT_EQ(picture.left, 36.5);
    EXPECT_EQ(picture.top, std::nullopt);
    EXPECT_EQ(picture.size.height, 60);
    EXPECT_EQ(ErrorOf([&] {
                  shapes.Call(L"AddPicture", {Text(file), ToVariant(true)});
              }),
              "445 Linked pictures are not supported. (krvdoc)");
    EXPECT_EQ(ErrorOf([&] { shapes.Call(L"AddPicture", {Text(File("no.wmf", "text"))}); }),
              "481 Invalid picture (krvdoc)");
    EXPECT_EQ(ErrorOf([&] { shapes.Call(L"AddPicture"); }), "449 Argument not optional (krvdoc)");
}

}  // namespace
}  // namespace krv::tests
