#include "windows/office/AutomationWord.h"

#include "common/AsKind.h"
#include "tests/windows/support/AutomationTest.h"
#include "tests/windows/support/ScriptedObject.h"
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

}  // namespace
}  // namespace krv::tests
