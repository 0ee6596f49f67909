#include "bench/book/RangeText.h"

#include <gtest/gtest.h>

namespace krv::tests {

using namespace bench;
namespace {

struct RangeCase {
    const char* text;
    // Empty when the text is no range.
    const char* address;
};

class RangeTextTest : public ::testing::TestWithParam<RangeCase> {};

TEST_P(RangeTextTest, IsResolvedToItsAddress) {
    const auto range = ParseRangeText(GetParam().text);
    EXPECT_EQ(range ? AddressOf(range->areas) : "", GetParam().address) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(
    Cells, RangeTextTest,
    ::testing::Values(RangeCase{"A1", "$A$1"}, RangeCase{"  b2 ", "$B$2"},
                      RangeCase{"$C$3:D$4", "$C$3:$D$4"}, RangeCase{"D4:C3", "$C$3:$D$4"},
                      RangeCase{"D3:C4", "$C$3:$D$4"}, RangeCase{"A1 : B2", "$A$1:$B$2"},
                      RangeCase{"Z1:AA1", "$Z$1:$AA$1"}, RangeCase{"A1:A1", "$A$1"},
                      RangeCase{"XFD1048576", "$XFD$1048576"}));

INSTANTIATE_TEST_SUITE_P(WholeColumnsAndRows, RangeTextTest,
                         ::testing::Values(RangeCase{"A:A", "$A:$A"}, RangeCase{"$C:B", "$B:$C"},
                                           RangeCase{"1:3", "$1:$3"}, RangeCase{"$7:$7", "$7:$7"},
                                           RangeCase{"A1:A1048576", "$A:$A"},
                                           RangeCase{"A1:XFD1", "$1:$1"},
                                           RangeCase{"A:XFD", "$1:$1048576"}));

INSTANTIATE_TEST_SUITE_P(Unions, RangeTextTest,
                         ::testing::Values(RangeCase{"A1:A10,C1:C10", "$A$1:$A$10,$C$1:$C$10"},
                                           RangeCase{"A1 , A1,2:2", "$A$1,$A$1,$2:$2"},
                                           RangeCase{"A1,", ""}, RangeCase{",A1", ""}));

INSTANTIATE_TEST_SUITE_P(SheetNames, RangeTextTest,
                         ::testing::Values(RangeCase{"wave!A1", "$A$1"},
                                           RangeCase{"wave!A1,wave!B1", "$A$1,$B$1"},
                                           RangeCase{"wave!A1,other!B1", ""},
                                           RangeCase{"A1,wave!B1", ""}, RangeCase{"!A1", ""},
                                           RangeCase{"wave!", ""}));

INSTANTIATE_TEST_SUITE_P(
    NoRanges, RangeTextTest,
    ::testing::Values(RangeCase{"", ""}, RangeCase{"waveform", ""}, RangeCase{"A", ""},
                      RangeCase{"12", ""}, RangeCase{"A0", ""}, RangeCase{"XFE1", ""},
                      RangeCase{"AAAA1", ""}, RangeCase{"A1048577", ""},
                      RangeCase{"A99999999999999999999", ""}, RangeCase{"A1:", ""},
                      RangeCase{"A1:B", ""}, RangeCase{"A:1", ""}, RangeCase{"A1:2", ""},
                      RangeCase{"$", ""}, RangeCase{"$$A1", ""}, RangeCase{"A$", ""},
                      RangeCase{"A1$", ""}, RangeCase{"A1B", ""}, RangeCase{"R1C1", ""},
                      RangeCase{"A-1", ""}, RangeCase{"A1;B1", ""},
                      RangeCase{"\xC3\x84"
                                "1",
                                ""}));

TEST(RangeText, NamesItsSheetAndEndsAt255Characters) {
    EXPECT_EQ(ParseRangeText("my wave!A1")->sheetName, "my wave");
    std::string text = "A1";
    while (text.size() < 255) {
        text += text.size() == 254 ? " " : ",A1";
    }
    text.resize(255, '1');
    EXPECT_TRUE(ParseRangeText(text));
    EXPECT_FALSE(ParseRangeText(text + "1"));
}

}  // namespace
}  // namespace krv::tests
