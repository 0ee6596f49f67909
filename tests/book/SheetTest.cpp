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

TEST(CellText, ShowsDatesAndCurrenciesAsNumbers) {
    EXPECT_EQ(CellText(DateValue{45351.75}), "45351.75");
    EXPECT_EQ(CellText(CurrencyValue{-12500}), "-1.25");
    EXPECT_EQ(CellEntry(std::string("12")), "'12");
}

TEST(Selection, FollowsTheKeysTheMouseAndCode) {
    Selection selection;
    const auto shown = [&] {
        return AddressOf(selection.Areas(), AddressStyle::Relative) + " at " +
               AddressOf(CellArea{selection.ActiveCell().row, selection.ActiveCell().column},
                         AddressStyle::Relative);
    };
    selection.Step(-1, 0, false);
    EXPECT_EQ(shown(), "A1 at A1");
    selection.Step(0, 1, false);
    selection.Step(40, 0, true);
    EXPECT_EQ(shown(), "B1:B41 at B1");
    selection.Step(0, -1, true);
    EXPECT_EQ(shown(), "A1:B41 at B1");

    selection.MoveTo({4, 1});
    selection.ExtendTo({1, 2});
    EXPECT_EQ(shown(), "B2:C5 at B5");
    selection.MoveTo({0, 4}, true);
    selection.ExtendTo({0, 5});
    EXPECT_EQ(shown(), "B2:C5,E1:F1 at E1");
    EXPECT_TRUE(selection.Contains({1, 2}));
    EXPECT_FALSE(selection.Contains({1, 3}));
    selection.Select({{0, 0, 10, 1}, {0, 2, 10, 1}});
    EXPECT_EQ(shown(), "A1:A10,C1:C10 at A1");
}

}  // namespace
}  // namespace krv::tests
