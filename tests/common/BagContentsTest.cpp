#include "common/BagContents.h"

#include <gtest/gtest.h>

#include <limits>

#include "common/Error.h"
#include "common/MemoryPropertyBag.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/SealedBag.h"

namespace krv::tests {
namespace {

using Bytes = std::vector<std::byte>;

Bytes Sealed(const std::string& payload, std::uint32_t version = 1) {
    return BytesOf(SealedBag(payload, version));
}

// The payload of one entry named "n".
std::string Entry(const std::string& value) {
    return NumberBytes(1, 4) + NumberBytes(1, 4) + "n" + value;
}

std::string Refusal(const Bytes& contents) {
    return ErrorOf([&] { return DecodeBag(contents); });
}

std::string RefusalToKeep(const Value& value) {
    return ErrorOf([&] { return EncodeBag(std::vector<BagEntry>{{"n", value}}); });
}

ArrayValue List(ElementKind kind, std::vector<ArrayElement> elements) {
    const auto count = static_cast<std::uint32_t>(elements.size());
    return {kind, {{count, 0}}, std::move(elements)};
}

Value Nested(int levels) {
    Value value = std::int32_t{7};
    for (int level = 0; level < levels; ++level) {
        value = List(ElementKind::Any, {{value}});
    }
    return value;
}

std::vector<BagEntry> EveryKind() {
    return {
        {"empty", EmptyValue{}},
        {"null", NullValue{}},
        {"true", true},
        {"false", false},
        {"integer", std::numeric_limits<std::int16_t>::min()},
        {"long", std::numeric_limits<std::int32_t>::min()},
        {"single", -1.5F},
        {"double", std::numeric_limits<double>::denorm_min()},
        {"currency", CurrencyValue{-922337203685477LL}},
        {"date", DateValue{45000.25}},
        {"error", ErrorCodeValue{2007}},
        {"text", std::string("1,5 \xC2\xB5V\0b", 9)},
        {"no text", std::string()},
        {"bytes", ByteArray{BytesOf("\xFF\x01"), -3}},
        {"no bytes", ByteArray{}},
        {"table",
         ArrayValue{
             ElementKind::Integer, {{2, 1}, {1, -5}}, {{std::int16_t{1}}, {std::int16_t{-2}}}}},
        {"texts", List(ElementKind::Text, {{std::string("a")}, {std::string()}})},
        {"mixed", List(ElementKind::Any, {{true}, {ByteArray{BytesOf("x"), 0}}, {Nested(15)}})},
        {"none", List(ElementKind::Double, {})},
        {"", std::int32_t{1}},
    };
}

TEST(BagContents, EveryKindOfValueComesBackExactly) {
    const std::vector<BagEntry> entries = EveryKind();
    EXPECT_EQ(DecodeBag(EncodeBag(entries)), entries);
    EXPECT_TRUE(DecodeBag(EncodeBag({})).empty());
}

TEST(BagContents, TheBytesAreThoseOfTheDocument) {
    const std::vector<BagEntry> entries{{"n", std::string("ab")}, {"k", true}};
    const std::string payload = NumberBytes(2, 4) + NumberBytes(1, 4) + "n\x0A" +
                                NumberBytes(2, 4) + "ab" + NumberBytes(1, 4) + "k\x02\x01";
    EXPECT_EQ(EncodeBag(entries), Sealed(payload));
}

TEST(BagContents, ABagThatIsCutAlteredOrContinuedIsRefused) {
    const Bytes whole = EncodeBag(EveryKind());
    for (std::size_t size = 0; size < whole.size(); ++size) {
        EXPECT_EQ(Refusal({whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)}),
                  size < 8 ? "321 These aren't saved properties."
                           : "321 The saved properties are incomplete.");
    }
    for (std::size_t at = 0; at < whole.size(); ++at) {
        for (int bit = 0; bit < 8; ++bit) {
            Bytes altered = whole;
            altered[at] ^= static_cast<std::byte>(1 << bit);
            EXPECT_NE(Refusal(altered), "none") << "bit " << bit << " of byte " << at;
        }
    }
    Bytes longer = whole;
    longer.push_back(std::byte{0});
    EXPECT_EQ(Refusal(longer), "321 The saved properties are followed by something else.");
    EXPECT_EQ(Refusal(Sealed(NumberBytes(0, 4), 2)),
              "321 The saved properties are of the unknown version 2.");
}

// Sealed correctly, so that only the reading of the entries stands between them and the program.
TEST(BagContents, AForgedBagIsRefusedWithWhatIsWrong) {
    const std::string huge = NumberBytes(0xFFFFFFFF, 4);
    const std::string one = NumberBytes(1, 4);
    const auto array = [](char kind, const std::string& dimensions) {
        return Entry(std::string("\x0C") + kind + dimensions);
    };
    const auto dimension = [](std::uint32_t count) {
        return NumberBytes(count, 4) + NumberBytes(0, 4);
    };
    const std::string tooMany = "it tells of more values than it can hold.";
    std::string deep;
    for (int level = 0; level < 17; ++level) {
        deep += "\x0C\xFF\x01" + dimension(1);
    }
    const std::pair<std::string, std::string> cases[] = {
        {"", "a value goes past the end."},
        {huge, tooMany},
        {NumberBytes(2, 4) + one + "n" + NumberBytes(0, 1), tooMany},
        {one + huge + "n" + NumberBytes(0, 1), "a value goes past the end."},
        {NumberBytes(2, 4) + one + "n" + NumberBytes(0, 1) + one + "n" + NumberBytes(0, 1),
         "a name is there twice."},
        {Entry(NumberBytes(0, 1)) + "x", "there is more than the entries."},
        {Entry("\x0D"), "a value is of an unknown kind."},
        {Entry("\x02\x02"), "a value is neither true nor false."},
        {Entry("\x06" + one), "a value goes past the end."},
        {Entry("\x0A" + huge), "a value goes past the end."},
        {Entry("\x0B" + one + huge), "a value goes past the end."},
        {array('\x01', "\x01" + dimension(0)), "an array is of an unknown kind."},
        {array('\x0B', "\x01" + dimension(0)), "an array is of an unknown kind."},
        {array('\x04', NumberBytes(0, 1)), "an array's dimensions are wrong."},
        {array('\x04', "\x09" + dimension(0)), "an array's dimensions are wrong."},
        {array('\x04', "\x01" + dimension(2) + NumberBytes(1, 4)), tooMany},
        {array('\x04', "\x02" + dimension(0xFFFFFFFF) + dimension(2)), "an array is too large."},
        {array('\xFF', "\x01" + dimension(0x7FFFFFFF)), tooMany},
        {array('\x02', "\x01" + dimension(0x100001) + std::string(0x100001, '\1')), tooMany},
        {Entry(deep + NumberBytes(0, 1)), "arrays are nested too deep."},
    };
    for (const auto& [payload, why] : cases) {
        EXPECT_EQ(Refusal(Sealed(payload)), "321 The saved properties are damaged: " + why);
    }
}

TEST(BagContents, WhatCouldNotBeReadBackIsNotWritten) {
    EXPECT_EQ(RefusalToKeep(Nested(16)), "none");
    EXPECT_EQ(RefusalToKeep(Nested(17)), "380 Can't be kept: arrays are nested too deep.");
    EXPECT_EQ(RefusalToKeep(List(ElementKind::Long, {{true}})),
              "380 Can't be kept: an array holds an element of another kind.");
    EXPECT_EQ(RefusalToKeep(ArrayValue{ElementKind::Any, {{2, 0}}, {{true}}}),
              "380 Can't be kept: an array's elements don't fill its dimensions.");
    EXPECT_EQ(RefusalToKeep(ByteArray{Bytes(BagLimit::Bytes - 100), 0}), "none");
    EXPECT_EQ(RefusalToKeep(ByteArray{Bytes(BagLimit::Bytes), 0}),
              "380 Can't be kept: more than 64 megabytes.");
    EXPECT_EQ(RefusalToKeep(List(ElementKind::Boolean,
                                 std::vector<ArrayElement>(BagLimit::Values, ArrayElement{true}))),
              "380 Can't be kept: too many values.");
}

TEST(BagContents, ARefusedBagLeavesTheOldEntries) {
    MemoryPropertyBag bag;
    bag.Write("a", true);
    Bytes contents = bag.Contents();
    contents.back() ^= std::byte{1};
    EXPECT_THROW(bag.SetContents(contents), Error);
    EXPECT_EQ(bag.Entries().size(), 1u);
    contents.back() ^= std::byte{1};
    bag.Write("b", false);
    bag.SetContents(contents);
    EXPECT_FALSE(bag.Find("b"));
    bag.Write("b", true);
    bag.Write("a", false);
    EXPECT_EQ(bag.Entries(), (std::vector<BagEntry>{{"a", false}, {"b", true}}));
}

}  // namespace
}  // namespace krv::tests
