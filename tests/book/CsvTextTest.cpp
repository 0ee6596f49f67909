#include "bench/book/CsvText.h"

#include <gtest/gtest.h>

#include <bit>
#include <random>

#include "bench/book/CellText.h"
#include "common/Error.h"

namespace krv::tests {

using namespace bench;
namespace {

// Cells as "kind:text", with blanks between cells and "/" between rows.
std::string Show(const Sheet& sheet) {
    constexpr const char* Kinds[] = {"-", "?", "b", "i", "l", "f", "n", "c", "d", "e", "t"};
    std::string shown;
    for (std::int32_t row = 0; row < sheet.UsedRows(); ++row) {
        shown += row > 0 ? " /" : "";
        for (std::int32_t column = 0; column < sheet.UsedColumns(); ++column) {
            const Value value = sheet.At({row, column});
            shown += (shown.empty() ? "" : " ") + std::string(Kinds[value.index()]) + ":" +
                     CellText(value);
        }
    }
    return shown;
}

std::string ShowCsv(std::string_view text) {
    return Show(ReadCsv(text));
}

TEST(CsvText, ReadsCellsWithTheirKinds) {
    EXPECT_EQ(ShowCsv("1,-2.5e3,.5\r\nI,true,#N/A\r\n"), "n:1 n:-2500 n:0.5 / t:I b:TRUE e:#N/A");
    EXPECT_EQ(ShowCsv("\xEF\xBB\xBF\xC3\xA4,\"a, \"\"b\"\"\nc\""), "t:\xC3\xA4 t:a, \"b\"\nc");
    EXPECT_EQ(ShowCsv("1\n2\n3\r\n\n5"), "n:1 / n:2 / n:3 / -: / n:5");
    EXPECT_EQ(ShowCsv("\"1\",,' 7,nan,0x10,1e999"), "n:1 -: t: 7 t:nan t:0x10 t:1e999");
    EXPECT_EQ(ShowCsv(""), "");
}

TEST(CsvText, WritesWhatItReads) {
    const std::vector<Value> values{1e300,
                                    5e-324,
                                    0.1 + 0.2,
                                    -1.0 / 3,
                                    true,
                                    ErrorCodeValue{CellError::DivisionByZero},
                                    std::string("a,b;c\td"),
                                    std::string("say \"hi\"\r\n twice "),
                                    std::string("1.5"),
                                    std::string("TRUE"),
                                    std::string("'quoted"),
                                    std::string("#N/A"),
                                    std::string(" blanks "),
                                    std::string("\xE2\x82\xAC")};
    Sheet sheet;
    std::int32_t row = 0;
    for (const Value& value : values) {
        sheet.Set({row++, 2}, value);
    }
    // Every bit of a double counts.
    std::mt19937_64 random(7);
    for (int doubles = 0; doubles < 2000; ++doubles) {
        sheet.Set({row++, 2}, std::bit_cast<double>(random() & ~(std::uint64_t{1} << 62)));
    }
    const Sheet again = ReadCsv(WriteCsv(sheet));
    for (std::int32_t at = 0; at < row; ++at) {
        ASSERT_EQ(again.At({at, 2}), sheet.At({at, 2})) << at;
    }
}

}  // namespace
}  // namespace krv::tests
