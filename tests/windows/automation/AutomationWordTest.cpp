#include "windows/office/AutomationWord.h"

#include "common/AsKind.h"
#include "tests/windows/support/AutomationTest.h"
#include "tests/windows/support/ExcelModel.h"
#include "windows/office/ApplicationObjects.h"

namespace krv::tests {
namespace {

class AutomationWordTest : public AutomationTest {
 protected:
    static constexpr IID WordApplicationId{
        0x00020970, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
    const ScriptedPointer m_application = NewScripted();
    const ScriptedPointer m_document = NewScripted();

    AutomationWordTest() {
        m_application->Answer(WordApplicationId);
        m_document->Members[L"Application"] = [this](const ScriptedCall&) {
            return ObjectVariant(m_application);
        };
    }
    std::shared_ptr<ports::WordHost> Word() {
        return AsKind<ports::WordHost>(windows::HostOf(m_application.Get()));
    }
};

TEST_F(AutomationWordTest, AddsPicturesWithNothingButTheirFile) {
    EXPECT_NE(ErrorOf([&] { (void)Word()->ActiveDocument(); }), "none");
    m_application->Properties[L"ActiveDocument"] = _variant_t(static_cast<IDispatch*>(nullptr));
    EXPECT_EQ(ErrorOf([&] { (void)Word()->ActiveDocument(); }),
              "91 Object variable or With block variable not set");
    m_application->Members[L"ActiveDocument"] = [&](const ScriptedCall&) {
        return ObjectVariant(m_document);
    };
    const ScriptedPointer shapes = NewScripted();
    m_document->Properties[L"Shapes"] = ObjectVariant(shapes);
    std::wstring added;
    shapes->Members[L"AddPicture"] = [&](const ScriptedCall& call) {
        EXPECT_EQ(call.Arguments.size(), 1U);
        added = V_BSTR(&call.Arguments.at(0));
        return ObjectVariant(NewScripted());
    };
    Word()->ActiveDocument()->AddPicture("C:\\Temp\\\xC2\xB5.wmf");
    EXPECT_EQ(added, L"C:\\Temp\\\u00B5.wmf");
    shapes->Members[L"AddPicture"] = [&](const ScriptedCall&) -> _variant_t {
        throw HostException{static_cast<HRESULT>(0x800A1422), L"No such file.", L"Word"};
    };
    EXPECT_EQ(ErrorOf([&] { Word()->ActiveDocument()->AddPicture("x"); }),
              "5154 No such file. (Word)");
}

TEST_F(AutomationWordTest, HidesNoEntryOfAListBehindOneThatFails) {
    const ScriptedPointer first = NewScripted({{L"Installed", false}, {L"Saved", true}});
    const ScriptedPointer list = NewScripted({{L"Count", 2L}});
    list->Members[L"Item"] = [&](const ScriptedCall& call) -> _variant_t {
        return V_I4(&call.Arguments.at(0)) == 1 ? ObjectVariant(first) : throw CallFailure{E_FAIL};
    };
    m_application->Properties[L"AddIns"] = ObjectVariant(list);
    m_application->Properties[L"Templates"] = ObjectVariant(list);
    const auto entries = Word()->AddIns();
    entries.at(0)->SetInstalled(true);
    EXPECT_EQ(V_BOOL(&first->Properties[L"Installed"]), VARIANT_TRUE);
    EXPECT_NE(ErrorOf([&] { (void)entries.at(1)->Name(); }), "none");
    const auto templates = Word()->Templates();
    EXPECT_TRUE(templates.at(0)->IsSaved());
    EXPECT_NE(ErrorOf([&] { (void)templates.at(1)->IsSaved(); }), "none");
}

TEST_F(AutomationWordTest, WritesToAButtonOnlyWhatItHasNotYet) {
    const ScriptedPointer button = NewScripted({{L"Caption", L"Help"}});
    int writes = 0;
    button->Members[L"TooltipText"] = [&](const ScriptedCall& call) {
        writes += call.Flags == DISPATCH_PROPERTYPUT ? 1 : 0;
        return _variant_t(L"Help");
    };
    const ScriptedPointer bar = NewScripted({{L"Name", L"Bar"}});
    bar->Properties[L"Controls"] = ExcelModel::Collection({button}, L"Caption");
    m_application->Properties[L"CommandBars"] = ExcelModel::Collection({bar}, L"Name");
    const auto control = Word()->CommandBarByName("Bar")->ControlByCaption("Help");
    control->SetTooltipText("Help");
    EXPECT_EQ(writes, 0);
    control->SetTooltipText("Other");
    EXPECT_EQ(writes, 1);
}

TEST_F(AutomationWordTest, TellsWhichTemplatesAreSaved) {
    const ScriptedPointer changed = NewScripted({{L"Saved", false}});
    m_application->Properties[L"Templates"] =
        ExcelModel::Collection({NewScripted({{L"Saved", true}}), changed}, L"Saved");
    const auto templates = Word()->Templates();
    EXPECT_TRUE(templates.at(0)->IsSaved());
    EXPECT_FALSE(templates.at(1)->IsSaved());
    templates.at(1)->SetSaved(true);
    EXPECT_EQ(V_BOOL(&changed->Properties[L"Saved"]), VARIANT_TRUE);
}

}  // namespace
}  // namespace krv::tests
