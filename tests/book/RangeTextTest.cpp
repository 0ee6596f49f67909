#include "bench/book/RangeText.h"

#include <gtest/gtest.h>

namespace krv::tests {

using namespace bench;
namespace {

TEST(RangeText, IsResolvedToItsAddress) {
    const std::pair<const char*, const char*> ranges[] = {
        {"A1", "$A$1"},
        {"  b2 ", "$B$2"},
        {"$C$3:D$4", "$C$3:$D$4"},
        {"D3:C4", "$C$3:$D$4"},
        {"A1 : B2", "$A$1:$B$2"},
        {"Z1:AA1", "$Z$1:$AA$1"},
        {"A1:A1", "$A$1"},
        {"XFD1048576", "$XFD$1048576"},
        {"$C:B", "$B:$C"},
        {"$7:$7", "$7:$7"},
        {"A1:A1048576", "$A:$A"},
        {"A1:XFD1", "$1:$1"},
        {"A:XFD", "$1:$1048576"},
        {"A1 , A1,2:2", "$A$1,$A$1,$2:$2"},
        {"wave!A1,wave!B1", "$A$1,$B$1"},
    };
    for (const auto& [text, address] : ranges) {
        const auto range = ParseRangeText(text);
        EXPECT_EQ(range ? AddressOf(range->areas) : "none", address) << text;
    }
    EXPECT_EQ(ParseRangeText("my wave!A1")->sheetName, "my wave");
}

TEST(RangeText, IsNothingElse) {
    for (const char* text : {"",
                             "waveform",
                             "A",
                             "12",
                             "A0",
                             "XFE1",
                             "AAAA1",
                             "A1048577",
                             "A99999999999999999999",
                             "A1:",
                             "A1:B",
                             "A:1",
                             "A1:2",
                             "$",
                             "$$A1",
                             "A$",
                             "A1$",
                             "A1B",
                             "A-1",
                             "A1;B1",
                             "A1,",
                             ",A1",
                             "wave!A1,other!B1",
                             "A1,wave!B1",
                             "!A1",
                             "wave!"}) {
        EXPECT_FALSE(ParseRangeText(text)) << text;
    }
    const std::string longest = "A" + std::string(253, '0') + "1";
    EXPECT_TRUE(ParseRangeText(longest));
    EXPECT_FALSE(ParseRangeText(longest + " ")) << "longer than 255 characters";
}

}  // namespace
}  // namespace krv::tests
