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

TEST(CellText, ShowsDatesAndCurrencies) {
    EXPECT_EQ(CellText(DateValue{0}), "1899-12-30");
    EXPECT_EQ(CellText(DateValue{-1.0}), "1899-12-29");
    EXPECT_EQ(CellText(DateValue{36585}), "2000-02-29");
    EXPECT_EQ(CellText(DateValue{45351.75}), "2024-02-29 18:00:00");
    EXPECT_EQ(CellText(DateValue{45351.9999999}), "2024-03-01");
    EXPECT_EQ(CellText(CurrencyValue{-12500}), "-1.25");
    EXPECT_EQ(PlainValue(DateValue{45351.75}), Value(45351.75));
    EXPECT_EQ(PlainValue(CurrencyValue{-12500}), Value(-1.25));
}

// A1:A5 and A8 are filled, and C3.
class SelectionTest : public ::testing::Test {
 protected:
    SelectionTest() {
        for (const std::int32_t row : {0, 1, 2, 3, 4, 7}) {
            m_sheet.Set({row, 0}, double{1});
        }
        m_sheet.Set({2, 2}, std::string("x"));
    }
    [[nodiscard]] std::string Shown() const {
        return AddressOf(m_selection.Areas(), {false, false}) + " at " +
               AddressOf(CellArea{m_selection.ActiveCell().row, m_selection.ActiveCell().column},
                         {false, false});
    }
    Sheet m_sheet;
    Selection m_selection;
};

TEST_F(SelectionTest, FollowsTheKeys) {
    const auto after = [this](auto&& key) {
        key();
        return Shown();
    };
    const auto step = [this](Direction direction, std::int32_t cells, bool extend) {
        return [=, this] { m_selection.Step(direction, cells, extend); };
    };
    const auto jump = [this](Direction direction, bool extend) {
        return [=, this] { m_selection.Jump(m_sheet, direction, extend); };
    };
    EXPECT_EQ(after(step(Direction::Up, 1, false)), "A1 at A1");
    EXPECT_EQ(after(step(Direction::Right, 1, false)), "B1 at B1");
    EXPECT_EQ(after(step(Direction::Down, 40, true)), "B1:B41 at B1");
    EXPECT_EQ(after(step(Direction::Left, 1, true)), "A1:B41 at B1");
    EXPECT_EQ(after(step(Direction::Left, 1, false)), "A1 at A1");
    EXPECT_EQ(after(jump(Direction::Down, true)), "A1:A5 at A1");
    EXPECT_EQ(after(jump(Direction::Down, true)), "A1:A8 at A1");
    EXPECT_EQ(after(jump(Direction::Down, true)), "A:A at A1");
    EXPECT_EQ(after(jump(Direction::Up, true)), "A1:A8 at A1");
    m_selection.MoveTo({2, 0});
    EXPECT_EQ(after(jump(Direction::Right, false)), "C3 at C3");
    EXPECT_EQ(after(jump(Direction::Right, false)), "XFD3 at XFD3");
    EXPECT_EQ(after(jump(Direction::Left, false)), "C3 at C3");
}

TEST_F(SelectionTest, FollowsTheMouseAndCode) {
    m_selection.MoveTo({4, 1});
    m_selection.ExtendTo({1, 2});
    EXPECT_EQ(Shown(), "B2:C5 at B5");
    m_selection.MoveTo({0, 4}, true);
    m_selection.ExtendTo({0, 5});
    EXPECT_EQ(Shown(), "B2:C5,E1:F1 at E1");
    EXPECT_TRUE(m_selection.Contains({1, 2}));
    EXPECT_FALSE(m_selection.Contains({1, 3}));
    m_selection.SelectColumns(1, false);
    m_selection.SelectColumns(3, true);
    EXPECT_EQ(Shown(), "B:D at B1");
    m_selection.SelectRows(5, false);
    m_selection.SelectRows(3, true);
    m_selection.SelectRows(9, false, true);
    EXPECT_EQ(Shown(), "4:6,10:10 at A10");
    m_selection.Select({{0, 0, 10, 1}, {0, 2, 10, 1}});
    EXPECT_EQ(Shown(), "A1:A10,C1:C10 at A1");
    m_selection.Step(Direction::Down, 1, true);
    EXPECT_EQ(Shown(), "A1:A11,C1:C10 at A1");
}

}  // namespace
}  // namespace krv::tests
