#include "common/Text.h"

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace krv::tests {
namespace {

TEST(Text, TrimsBlanksAndNothingElse) {
    EXPECT_EQ(TrimBlanks("  a b  "), "a b");
    EXPECT_EQ(TrimBlanks("\ta\r\n "), "\ta\r\n");
    EXPECT_EQ(TrimBlanks("   "), "");
    EXPECT_EQ(TrimBlanks(""), "");
}

TEST(Text, TakesQuotesFromAroundAPath) {
    EXPECT_EQ(PathIn(" \"C:\\my waves\\i.txt\" "), "C:\\my waves\\i.txt");
    EXPECT_EQ(PathIn(" a\"b\".txt"), "a\"b\".txt");
    EXPECT_EQ(PathIn("\""), "\"");
    EXPECT_EQ(PathIn("\"\""), "");
}

TEST(Text, CountsCharactersAsTheHostApplicationsDo) {
    const std::vector<std::pair<std::string, std::size_t>> cases{
        {"", 0},
        {"abc", 3},
        {"\xC3\xA4\xE2\x82\xAC", 2},
        {"\xF0\x9F\x98\x80", 2},  // beyond the basic plane: two code units
        {"\xC3", 1},              // cut short
        {"\xE2\x82", 2},
        {"\xC0\xAF", 2},  // overlong
        {"\xE0\x80\xAF", 3},
        {"\xED\xA0\x80", 3},      // surrogate
        {"\xF4\x90\x80\x80", 4},  // beyond the last code
        {"a\xFF"
         "b",
         3},
    };
    for (const auto& [text, count] : cases) {
        EXPECT_EQ(CharacterCount(text), count) << text;
    }
}

TEST(Text, UpperCaseChangesLettersWithOneSimpleCounterpart) {
    const std::vector<std::pair<std::string, std::string>> cases{
        {"Sine_i.txt", "SINE_I.TXT"},
        {"\u00E4\u00F6\u00FC\u00E9\u00FE", "\u00C4\u00D6\u00DC\u00C9\u00DE"},
        {"\u00FF", "\u0178"},
        {"\u00DF\u00F7\u00B5", "\u00DF\u00F7\u00B5"},
        {"\u03B1\u03C9\u03C2\u03C3\u03CA", "\u0391\u03A9\u03A3\u03A3\u03AA"},
        {"\u03AC\u03AD\u03AE\u03AF\u03CC\u03CD\u03CE",
         "\u0386\u0388\u0389\u038A\u038C\u038E\u038F"},
        {"\u0430\u044F\u0451\u0491", "\u0410\u042F\u0401\u0490"},
        {"\u0463\u04C2\u04CF\u04D1", "\u0462\u04C1\u04C0\u04D0"},
        {"\u65E5\U0001F600\xFF", "\u65E5\U0001F600\xFF"},
    };
    for (const auto& [text, upper] : cases) {
        EXPECT_EQ(UpperCase(text), upper);
        EXPECT_TRUE(EqualIgnoringCase(text, upper));
    }
    EXPECT_FALSE(EqualIgnoringCase("a", "b"));
    EXPECT_FALSE(EqualIgnoringCase("ss", "\u00DF"));
}

}  // namespace
}  // namespace krv::tests
