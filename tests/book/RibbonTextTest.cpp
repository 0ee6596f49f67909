// The ribbon of an add-in, checked as an Office application checks it.
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "bench/shared/RibbonText.h"
#include "common/Error.h"
#include "tests/support/ErrorOf.h"

namespace krv::tests {
namespace {

using namespace bench;

constexpr const char* RibbonSpace = "http://schemas.microsoft.com/office/2009/07/customui";

// A ribbon whose one button has these attributes.
std::string WithButton(const std::string& attributes, const std::string& more = {}) {
    return std::string("<customUI xmlns=\"") + RibbonSpace +
           "\" onLoad=\"Load\"><ribbon><tabs><tab id=\"t\" label=\"T &amp; Q\"><group id=\"g\" "
           "label=\"G\"><button " +
           attributes + "/>" + more + "</group></tab></tabs></ribbon></customUI>";
}

TEST(RibbonText, TellsTabsGroupsButtonsAndTheirCallbacks) {
    const RibbonDescription ribbon = ReadRibbon(
        "<?xml version=\"1.0\"?>\n<!-- ours -->" +
        WithButton("id=\"b\" getLabel=\"Label\" onAction=\"Act\" size=\"large\" keytip=\"K1\"",
                   "<separator id=\"s\"/><button idMso=\"TabHome\" onAction=\"Act\"/>"));
    EXPECT_EQ(ribbon.onLoad, "Load");
    EXPECT_EQ(ribbon.callbacks, (std::vector<std::string>{"Load", "Label", "Act"}));
    ASSERT_EQ(ribbon.tabs.size(), 1U);
    EXPECT_EQ(ribbon.tabs[0].label, "T & Q");
    ASSERT_EQ(ribbon.tabs[0].groups[0].buttons.size(), 2U);
    EXPECT_EQ(ribbon.tabs[0].groups[0].buttons[0].Get("keytip"), "K1");
}

TEST(RibbonText, IsDroppedForOneFault) {
    // What a schema says, and what it misses.
    const std::vector<std::pair<std::string, std::string>> faults{
        {"id=\"b\" Label=\"x\"", "\"button\" can't have \"Label\""},
        {"id=\"b\" label=\"\"", "\"\" is no label"},
        {"id=\"1b\"", "\"1b\" is no id"},
        {"id=\"g\"", "\"g\" is there twice"},
        {"id=\"b\" keytip=\"LONG\"", "\"LONG\" is no keytip"},
        {"id=\"b\" keytip=\"A B\"", "\"A B\" is no keytip"},
        {"id=\"b\" size=\"huge\"", "\"huge\" is no size"},
        {"id=\"b\" enabled=\"yes\"", "\"yes\" is no enabled"},
        {"id=\"b\" label=\"" + std::string(1025, 'x') + "\"",
         "\"" + std::string(1025, 'x') + "\" is no label"},
        {"label=\"x\"", "a \"button\" has no id"},
        {"id=\"b\" idMso=\"TabHome\"", "\"button\" has \"id\" in more than one way"},
        {"id=\"b\" label=\"x\" getLabel=\"X\"", "\"button\" has \"label\" in more than one way"},
        {"id=\"b\" imageMso=\"Copy\" getImage=\"X\"",
         "\"button\" has \"image\" in more than one way"},
        {"id=\"b\" insertAfterMso=\"TabHome\" insertBeforeMso=\"TabView\"",
         "\"button\" has \"insertAfterMso\" in more than one way"},
        {"idMso=\"TabNonsense\"", "\"TabNonsense\" is no part of the application"}};
    for (const auto& [attributes, fault] : faults) {
        const std::string xml = WithButton(attributes);
        EXPECT_EQ(ErrorOf([&] { (void)ReadRibbon(xml); }),
                  "321 The ribbon isn't valid: " + fault + ".");
    }
    for (const std::string& xml :
         {std::string("<customUI xmlns=\"http://elsewhere\"/>"), WithButton("id=\"b\"", "text"),
          WithButton("id=\"b\"", "<box id=\"x\"/>"),
          std::string("<customUI xmlns=\"") + RibbonSpace + "\"><tabs/></customUI>",
          WithButton("id=\"b\" id=\"c\""), WithButton("id=\"b\"").substr(0, 150)}) {
        EXPECT_EQ(ErrorOf([&] { (void)ReadRibbon(xml); }).substr(0, 8), "321 The ") << xml;
    }
}

}  // namespace
}  // namespace krv::tests
