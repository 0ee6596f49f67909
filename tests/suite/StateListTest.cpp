#include "suite/states/StateList.h"

#include <gtest/gtest.h>

#include "common/MemoryPropertyBag.h"
#include "tests/support/ErrorOf.h"

namespace krv::tests {
namespace {

using namespace suite;

std::string Names(const StateList& list) {
    std::string names;
    for (const NamedState& state : list.States()) {
        names += (names.empty() ? "" : "|") + state.name;
    }
    return names;
}

NamedState StateNamed(const std::string& name) {
    return {name, DateValue{45000.5}, "M7718C", "B.03.40", ByteArray{{std::byte{7}}}};
}

class StateListTest : public ::testing::Test {
 protected:
    StateList list;

    void Fill(std::initializer_list<const char*> names) {
        for (const char* const name : names) {
            list.Add(StateNamed(name));
        }
    }
};

TEST_F(StateListTest, NamesAreUniqueWhateverTheirCaseAndBlanks) {
    Fill({" Sine, 10 dBm ", "QPSK"});
    EXPECT_EQ(Names(list), "Sine, 10 dBm|QPSK");
    const std::string taken = "457 There is already a state named \"QPSK\".";
    EXPECT_EQ(ErrorOf([&] { Fill({"qpsk "}); }), taken);
    EXPECT_EQ(ErrorOf([&] { list.Rename(0, "qpsk"); }), taken);
    EXPECT_EQ(ErrorOf([&] { list.Rename(0, "  "); }), "380 Enter a name for the state.");
    EXPECT_EQ(ErrorOf([&] { list.Rename(0, "a\nb"); }),
              "380 The name of a state can't hold control characters.");
    EXPECT_EQ(ErrorOf([&] { list.Rename(0, std::string(65, 'x')); }),
              "380 The name of a state can have at most 64 characters.");
    EXPECT_EQ(ErrorOf([&] { list.Rename(2, "x"); }), "9 Subscript out of range");
    EXPECT_EQ(Names(list), "Sine, 10 dBm|QPSK") << "nothing that failed has changed anything";
    list.Rename(1, "Qpsk");
    list.Rename(0, "QPSK 2");
    EXPECT_EQ(Names(list), "QPSK 2|Qpsk");
}

TEST_F(StateListTest, ProposesTheFirstNumberThatIsFree) {
    EXPECT_EQ(list.FreeName(), "State 1");
    Fill({"state 1", "State 3"});
    EXPECT_EQ(list.FreeName(), "State 2");
    list.Delete(0);
    EXPECT_EQ(Names(list), "State 3");
    EXPECT_EQ(ErrorOf([&] { list.Delete(1); }), "9 Subscript out of range");
}

TEST_F(StateListTest, KeepsNoMoreThanABagCanHold) {
    Fill({"small"});
    NamedState large = StateNamed("large");
    large.snapshot = ByteArray{std::vector<std::byte>(std::size_t{65} << 20)};
    EXPECT_EQ(ErrorOf([&] { list.Add(large); }), "380 Can't be kept: more than 64 megabytes.");
    EXPECT_EQ(Names(list), "small");
}

TEST_F(StateListTest, ComesBackFromABagWithOtherEntries) {
    Fill({"a", "b"});
    MemoryPropertyBag bag;
    bag.Write("DataCWritten", std::int32_t{1});
    list.Write(bag);
    StateList read;
    read.Add(StateNamed("goes"));
    read.Read(bag);
    ASSERT_EQ(Names(read), "a|b");
    const NamedState& state = read.At(1);
    EXPECT_EQ(state.captured, DateValue{45000.5});
    EXPECT_EQ(state.model + state.version, "M7718CB.03.40");
    EXPECT_EQ(state.snapshot, Value(ByteArray{{std::byte{7}}}));
    StateList().Write(bag);
    read.Read(bag);
    EXPECT_TRUE(read.States().empty());
}

TEST_F(StateListTest, ABagFromElsewhereChangesNothing) {
    Fill({"kept"});
    const auto packed = [](const std::string& name, const Value& date = DateValue{1}) {
        return ArrayValue{ElementKind::Any,
                          {{5, 0}},
                          {{name}, {date}, {std::string()}, {std::string()}, {EmptyValue{}}}};
    };
    const BagEntry version{"version", std::int32_t{1}};
    const std::vector<std::vector<BagEntry>> cases{
        {},
        {{"1", packed("a")}},
        {{"version", std::int32_t{2}}},
        {version, {"2", packed("a")}},
        {version, {"1", packed(" a")}},
        {version, {"1", packed("")}},
        {version, {"1", packed("a")}, {"2", packed("A")}},
        {version, {"1", packed("a", 1.0)}},
        {version, {"1", true}},
        {version, {"1", ArrayValue{ElementKind::Any, {{1, 0}}, {{std::string("a")}}}}},
    };
    MemoryPropertyBag bag;
    EXPECT_EQ(ErrorOf([&] { list.Read(bag); }), "321 The saved states are damaged.");
    for (const auto& entries : cases) {
        bag.Write("instrSetupStates", ByteArray{EncodeBag(entries)});
        EXPECT_TRUE(ErrorOf([&] { list.Read(bag); }).starts_with("3")) << entries.size();
        EXPECT_EQ(Names(list), "kept");
    }
    bag.Write("instrSetupStates", ByteArray{{std::byte{1}}});
    EXPECT_EQ(ErrorOf([&] { list.Read(bag); }), "321 These aren't saved properties.");
}

}  // namespace
}  // namespace krv::tests
