#include <gtest/gtest.h>

#include <string>

#include "common/MemoryPropertyBag.h"
#include "tests/support/ErrorOf.h"

namespace krv::tests {
namespace {

struct Conversion {
    int line;
    Value value;
    // What each kind of reading gives, or the error's number.
    std::string asBoolean;
    std::string asLong;
    std::string asText;
};

template <class Read>
std::string ResultOf(const Read& read) {
    std::string result;
    const std::int32_t error = ErrorNumberOf([&] { return result = read(); });
    return error == 0 ? result : "error " + std::to_string(error);
}

TEST(PropertyBag, ConvertsWhatDocumentsKeep) {
    const Conversion conversions[] = {
        {__LINE__, true, "true", "-1", "error 13"},
        {__LINE__, std::int16_t{-1}, "true", "-1", "error 13"},
        {__LINE__, 0.0, "false", "0", "error 13"},
        {__LINE__, 2.5, "true", "2", "error 13"},
        {__LINE__, 3e9, "true", "error 6", "error 13"},
        {__LINE__, std::string("FALSE"), "false", "error 13", "FALSE"},
        {__LINE__, std::string("True"), "true", "error 13", "True"},
        {__LINE__, std::string(" -2 "), "true", "-2", " -2 "},
        {__LINE__, std::string("yes"), "error 13", "error 13", "yes"},
        {__LINE__, NullValue{}, "error 13", "error 13", "error 13"},
        {__LINE__, ErrorCodeValue{2042}, "error 13", "error 13", "error 13"},
    };
    for (const Conversion& conversion : conversions) {
        SCOPED_TRACE(conversion.line);
        MemoryPropertyBag bag;
        bag.Write("key", conversion.value);
        EXPECT_EQ(ResultOf([&]() -> std::string {
                      return bag.ReadBoolean("key", false) ? "true" : "false";
                  }),
                  conversion.asBoolean);
        EXPECT_EQ(ResultOf([&] { return std::to_string(bag.ReadLong("key", 9)); }),
                  conversion.asLong);
        EXPECT_EQ(ResultOf([&] { return bag.ReadText("key", "x"); }), conversion.asText);
    }
    MemoryPropertyBag empty;
    EXPECT_TRUE(empty.ReadBoolean("key", true));
    EXPECT_EQ(empty.ReadLong("key", 9), 9);
    EXPECT_EQ(empty.ReadText("key", "x"), "x");
}

}  // namespace
}  // namespace krv::tests
