// Tables as people write them, and what is said of those that can't be read.
#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "formats/Roles.h"
#include "tests/formats/FormatsFixture.h"

namespace krv::tests {
namespace {

using TextTableTest = FormatsFixture;

TEST_F(TextTableTest, TakesWhatSpreadsheetsAndProgramsWrite) {
    const std::pair<std::string, const char*> cases[] = {
        {"I,Q\n1,2\n3,4\n", "1 2 | 3 4"},
        {"Q,I\r\n\"1\",\"2.5\"\r\n", "2.5 1"},
        // A decimal comma between commas stands in quotes, which need not begin in the first line.
        {"I,Q\n\"0,5\",\"0,25\"\n\"-1,234\",1\n", "0.5 0.25 | -1.234 1"},
        {"1,0\n\"0,5\",\"0,25\"\n", "1 0 | 0.5 0.25"},
        {"I;Q\r1,5;2\r3;4", "1.5 2 | 3 4"},
        {"0.5,1\n2,3,\n", "0.5 1 | 2 3"},
        {"1e-3  -2\n\n# more\n 3\t4 \n", "0.001 -2 | 3 4"},
        {"a title\nI (V), Q (V)\n 1 , 2.5 \n", "1 2.5"},
        {"Q,I\nmV,mV\n1,2\n", "2 1"},
        {"Marker,Q,I\n0,1,2\n15,3,4\n", "2 1 | 4 3"},
        {"% I Q\n1 2\n", "1 2"},
        {"1+2i\n-i\n3 - 4i\n5\n", "1 2 | 0 -1 | 3 -4 | 5 0"},
        {"-i\n1+2i\n", "0 -1 | 1 2"},
        {"(1,2)\n(3,-4e-1)\n", "1 2 | 3 -0.4"},
        {"t;z\n0;1,5-2,5e-1j\n1;i\n", "1.5 -0.25 | 0 1"},
        {std::string("\xFE\xFF\0I\0\n\0"
                     "7\0\n",
                     10),
         "7"},
        // Columns without names: point numbers or times in front are no data.
        {"0,1.5,2\n1,3,4\n2,5,6\n3,7,8\n", "1.5 2 | 3 4 | 5 6 | 7 8"},
        {"0.5\n1\n1.5\n2\n", "0.5 | 1 | 1.5 | 2"},
    };
    for (const auto& [content, points] : cases) {
        EXPECT_EQ(Points(content), points) << content;
    }
}

TEST_F(TextTableTest, SaysWhereAndWhyItCannotBeRead) {
    const std::pair<std::string, const char*> cases[] = {
        {"", "data.txt: The file is empty."},
        {"# words\n", "data.txt: It holds no table of numbers."},
        {"I|Q\n1|2\n",
         "data.txt: It holds no table of numbers: line 2, '1|2', isn't numbers between commas, "
         "semicolons, tabs or blanks."},
        {"I,Q\n1,2\n3,x\xC3\xA4\n", "data.txt, line 3, column 3: 'x\\xC3\\xA4' is not a number."},
        {"I,Q\n1,2\n\xC3\xA4,4\n", "data.txt, line 3, column 1: '\\xC3\\xA4' is not a number."},
        {"I,Q\n1,2\n3,,\n", "data.txt, line 3, column 3: A value is missing."},
        {"I,Q\n1,2\n3\n",
         "data.txt, line 3, column 2: The line has fewer values than the first one."},
        {"I,Q\n1,2\n3,4,5\n",
         "data.txt, line 3, column 5: The line has more values than the first one."},
        {"I,Q\n1,2\n3,1e999\n", "data.txt, line 3, column 3: '1e999' is too large."},
        {"1,x\n3,4\n", "data.txt, line 1, column 3: 'x' is not a number."},
        {"i\n-i\n1-i\n",
         "data.txt, line 1, column 1: 'i' may be a value or the name of the column. Write 0+1i for "
         "the value."},
        {"0,5\n1,5\n",
         "data.txt, line 1: The comma may stand between two values or in one number. "
         "Say that these are two columns by naming them, as in FILE:1,2."},
        {"\"1,234\",\"-56,789\"\n",
         "data.txt, line 1: The commas in quotes may stand in front of decimals or of thousands. "
         "Write the numbers with decimal points."},
        {"1.5,2\n\"0,5\",1\n", "data.txt, line 2, column 2: '0,5' is not a number."},
        {"\"1,234\",2\n0.5,1\n", "data.txt, line 1, column 2: '1,234' is not a number."},
        {"1,2\n\"0,5\",1\n1,2,3,4\n",
         "data.txt, line 3, column 5: The line has more values than the first one."},
        {"a,1\nb,2\n", "data.txt, line 1, column 1: 'a' is not a number."},
        {"I,Q\nx,2\n3,4\n5,6\n", "data.txt, line 2, column 1: 'x' is not a number."},
        {"x,2\nI,Q\n3,4\n", "data.txt, line 1, column 1: 'x' is not a number."},
        {"a,1\nb\n3,4\n5,6\n", "data.txt, line 1, column 1: 'a' is not a number."},
        {"Length,2\nt,I\n0,1\n1,x\n", "data.txt, line 4, column 3: 'x' is not a number."},
        {"1 1,5\n", "data.txt, line 1, column 1: '1 1' is not a number."},
        {"1;2;3\n",
         "data.txt: Say which columns are I and Q, as in FILE:1,2. There are column 1, "
         "column 2, column 3."},
        {"time,I\n0,1\n0,2\n", "data.txt: The times in column 1 'time' don't rise."},
        {"I,Marker\n1,16\n", "data.txt, point 0: The marker is 16, not an integer from 0 to 15."},
        {std::string((std::size_t{1} << 20U) + 10, '7'),
         "data.txt, line 1: The line is too long: this is no table."},
    };
    for (const auto& [content, error] : cases) {
        EXPECT_EQ(Points(content), error) << content.substr(0, 40);
    }
}

TEST(Roles, ShowColumnsInOneLine) {
    formats::About about;
    about.columns = {{"a\nkrv: Done", 0, false, 0}, {"Zeit (\xC2\xB5s)", 0, false, 0}};
    EXPECT_EQ(formats::DescribeColumn(about, 0), "column 1 'a?krv: Done'");
    EXPECT_EQ(formats::DescribeColumn(about, 1), "column 2 'Zeit (\xC2\xB5s)'");
}

TEST_F(TextTableTest, ColumnsAreNamedByNameOrNumber) {
    const std::string table = "a (V),b,c\n1,2,3\n4,5,6\n";
    const std::string there = " There are column 1 'a (V)', column 2 'b', column 3 'c'.";
    const std::pair<std::vector<std::string>, std::string> cases[] = {
        {{"b"}, "2 | 5"},
        {{"A", "2"}, "1 2 | 4 5"},
        {{"c", "a (V)"}, "3 1 | 6 4"},
        {{"3", "", "2"}, "3 | 6"},
        {{"4"}, "data.txt: There is no column '4'." + there},
        {{"x"}, "data.txt: There is no column 'x'." + there},
        {{"1", "2", "3", "1"}, "data.txt: Name a column for I, and then those for Q and markers."},
    };
    for (const auto& [columns, points] : cases) {
        Options.columns = columns;
        EXPECT_EQ(Points(table), points);
    }
    Options.columns = {"1", "2"};
    EXPECT_EQ(Points("0,5\n1,5\n"), "0 5 | 1 5");
}

TEST_F(TextTableTest, ColumnsThatAreLeftOutAreTold) {
    const auto told = [this](const std::string& heading, const std::string& lines) {
        const auto warnings = Import("a", heading + '\n' + lines).warnings;
        return warnings.empty() ? std::string() : warnings.front();
    };
    const std::string name = ". To take others, name the columns of I, Q and markers, as in FILE:";
    EXPECT_EQ(told("Time,I,Q,Marker 1", "0,0.5,1,0\n1,0.5,2,1\n"),
              "Left out: column 4 'Marker 1'" + name + "I,Q,Marker 1.");
    EXPECT_EQ(told("I,Q,M1,M2", "0,0.5,1,0\n1,0.5,0,1\n"),
              "Left out: column 3 'M1', column 4 'M2'" + name + "I,Q,M1.");
    EXPECT_EQ(told("time_ms,I,Q", "0,0.5,1\n1,0.5,2\n2,0.5,2\n3,0.5,2\n"),
              "Left out: column 1 'time_ms'" + name +
                  "I,Q. A column of times is called Time, as in Time (ms).");
    EXPECT_EQ(told("I,I", "0,0.5\n1,0.5\n"), "Left out: column 2 'I'" + name + "I,2.");
    EXPECT_EQ(told("I,Trigger", "0,1\n1,0\n"),
              "Left out: column 2 'Trigger'" + name + "I,,Trigger.");
    EXPECT_EQ(told("t,I,Q,M", "0,0.5,1,0\n1,0.5,0,1\n"), "");
    Options.columns = {"I"};
    EXPECT_EQ(told("I,Q", "0,1\n1,0\n"), "");
}

TEST_F(TextTableTest, TimesGiveTheRateAndAreHeldAgainstEachOther) {
    const formats::ImportedWaveform even = Import("t.csv", "Time [ns];I\n0;1\n2,5;2\n5;3\n7,5;4\n");
    EXPECT_EQ(even.sampleRate, 400e6);
    EXPECT_TRUE(even.warnings.empty());
    const formats::ImportedWaveform uneven = Import("t.csv", "t,I\n0,1\n1,2\n3,3\n4,4\n");
    EXPECT_EQ(uneven.sampleRate, 0.75);
    EXPECT_EQ(uneven.warnings,
              std::vector<std::string>{"The steps of time are uneven: from 1 s to 2 s, in front of "
                                       "point 2. The sample rate is that of their mean."});
    EXPECT_EQ(Import("t.csv", "0 1\n1 2\n2 3\n3 5\n").sampleRate, std::nullopt);
    EXPECT_EQ(Import("t.csv", "Time (msec),I\n0,1\n1,2\n").sampleRate, 1000);
    const formats::ImportedWaveform unknown = Import("t.csv", "Time (days),I\n0,1\n1,2\n");
    EXPECT_EQ(unknown.sampleRate, std::nullopt);
    EXPECT_EQ(unknown.warnings,
              std::vector<std::string>{"The times in column 1 'Time (days)' tell no sample rate: "
                                       "their unit is none of s, ms, us, ns and ps."});
}

TEST_F(TextTableTest, OscilloscopesWriteOfTheRecordAndOfUnits) {
    const struct {
        std::string table;
        const char* done;
        std::vector<std::string> warnings;
    } cases[] = {
        {"Model,X1\nRecord Length,2\nSample Interval,1e-3\n\nLabels,,\n"
         "TIME,CH1,CH2\n0,0.1,0.2\n1e-3,0.3,0.4\n",
         "I from column 2 'CH1', Q from column 3 'CH2', time from column 1 'TIME'.",
         {"Left out: 4 lines above the headings."}},
        {"x-axis,1,2\nsecond,Volt,Volt\n-1E-03,0.1,0.2\n0E-03,0.3,0.4\n",
         "I from column 2 '1 (Volt)', Q from column 3 '2 (Volt)', time from column 1 'x-axis "
         "(second)'.",
         {}},
        {"Time,A,B\nmsec,V,V\n-1,0.1,0.2\n0,0.3,0.4\n",
         "I from column 2 'A (V)', Q from column 3 'B (V)', time from column 1 'Time (msec)'.",
         {}},
        {"Time;A;B\n(ms);(V);(mV)\n\n-1;0,1;0,2\n0;0,3;0,4\n",
         "I from column 2 'A (V)', Q from column 3 'B (mV)', time from column 1 'Time (ms)'.",
         {}},
    };
    for (const auto& [table, done, warnings] : cases) {
        EXPECT_EQ(Points(table), "0.1 0.2 | 0.3 0.4");
        const formats::ImportedWaveform waveform = Import("scope.csv", table);
        EXPECT_EQ(waveform.sampleRate, 1000) << table;
        EXPECT_EQ(waveform.done.front(), done);
        EXPECT_EQ(waveform.warnings, warnings) << table;
    }
    Options.columns = {"1", "2"};
    EXPECT_EQ(Points(cases[1].table), "-0.001 0.1 | 0 0.3");
}

// Blocks end anywhere in a line, and lines anywhere in a block.
TEST_F(TextTableTest, ReadsLongTablesWhole) {
    std::string table = "I,Q\n";
    for (int k = 0; k < 100000; ++k) {
        table += std::to_string(k) + ".25," + std::to_string(-k) + (k % 3 == 0 ? "\r\n" : "\n");
    }
    const formats::ImportedWaveform waveform = Import("long.csv", table);
    ASSERT_EQ(waveform.Points(), 100000U);
    for (std::size_t k = 0; k < waveform.Points(); ++k) {
        ASSERT_EQ(waveform.i[k], static_cast<double>(k) + 0.25);
        ASSERT_EQ(waveform.q[k], -static_cast<double>(k));
    }
}

}  // namespace
}  // namespace krv::tests
