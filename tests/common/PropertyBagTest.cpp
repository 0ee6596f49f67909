#include <gtest/gtest.h>

#include <string>

#include "common/Error.h"
#include "common/MemoryPropertyBag.h"

namespace krv {
namespace {

TEST(PropertyBag, KeepsTheLastValueOfANameInTheOrderOfFirstWriting) {
    MemoryPropertyBag bag;
    bag.Write("b", std::int32_t{1});
    bag.Write("a", true);
    bag.Write("b", std::string("two"));
    ASSERT_EQ(bag.Entries().size(), 2u);
    EXPECT_EQ(bag.Entries()[0], MemoryPropertyBag::Entry("b", std::string("two")));
    EXPECT_EQ(bag.Read("a", false), Value(true));
    EXPECT_EQ(bag.Read("A", std::int32_t{7}), Value(std::int32_t{7})) << "names are exact";
}

TEST(PropertyBag, ReadsBooleansFromWhatDocumentsKeep) {
    MemoryPropertyBag bag;
    bag.Write("minus one", std::int16_t{-1});
    bag.Write("zero", 0.0);
    bag.Write("text", std::string("yes"));
    EXPECT_TRUE(bag.ReadBoolean("minus one", false));
    EXPECT_FALSE(bag.ReadBoolean("zero", true));
    EXPECT_TRUE(bag.ReadBoolean("missing", true));
    try {
        static_cast<void>(bag.ReadBoolean("text", false));
        FAIL() << "a text is no boolean";
    } catch (const Error& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::TypeMismatch);
    }
}

}  // namespace
}  // namespace krv
