#include "bench/book/Sheet.h"

#include <gtest/gtest.h>

#include <limits>

#include "bench/book/CellText.h"
#include "bench/book/Selection.h"

namespace krv::tests {

using namespace bench;
namespace {

TEST(Sheet, KeepsKindsAndGivesBackWhatIsCleared) {
    Sheet sheet;
    sheet.Set({2, 1}, std::int16_t{7});
    sheet.Set({1048575, 3}, std::string("far"));
    sheet.Set({0, 3}, DateValue{45000.5});
    EXPECT_EQ(sheet.At({2, 1}), Value(7.0));
    EXPECT_EQ(sheet.At({1048575, 3}), Value(std::string("far")));
    EXPECT_EQ(sheet.At({0, 3}), Value(DateValue{45000.5}));
    EXPECT_EQ(sheet.At({1, 1}), Value());
    EXPECT_EQ(sheet.At({0, 16383}), Value());

    sheet.Set({1048575, 3}, EmptyValue{});
    EXPECT_EQ(sheet.UsedRows(), 3);
    sheet.Set({0, 3}, 1.0);
    EXPECT_EQ(sheet.At({0, 3}), Value(1.0));
    sheet.Set({0, 3}, std::numeric_limits<double>::infinity());
    EXPECT_EQ(sheet.At({0, 3}), Value(ErrorCodeValue{CellError::Number}));

    sheet.Clear({0, 2, SheetLimit::Rows, 5});
    EXPECT_EQ(sheet.UsedColumns(), 2);
    sheet.Clear(WholeSheet);
    EXPECT_EQ(sheet.UsedRows(), 0);
}

}  // namespace
}  // namespace krv::tests
