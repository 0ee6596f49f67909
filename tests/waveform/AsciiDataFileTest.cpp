#include "waveform/readers/AsciiDataFile.h"

#include <string>
#include <utility>
#include <vector>

#include "tests/waveform/ReaderFixture.h"

namespace krv::tests {

using namespace waveform;
namespace {

class AsciiDataFileTest : public ReaderFixture {
 protected:
    std::string Read(const std::string& content) {
        Files.Put("data", content);
        return Outcome([&] { return ReadAsciiDataFile(File, Services()); });
    }
    // The same whatever the size of the blocks, and so wherever a number is cut.
    std::string ReadInBlocks(const std::string& content) {
        const std::string whole = Read(content);
        for (const std::size_t bytes : {1U, 2U, 3U, 5U, 7U, 16U, 512U}) {
            BlockBytes = bytes;
            EXPECT_EQ(Read(content), whole) << bytes << " bytes at once: " << content;
        }
        BlockBytes = std::size_t{256} << 10;
        return whole;
    }
    static std::string Lines(int count) {
        std::string text;
        for (int line = 1; line <= count; ++line) {
            text += std::to_string(line) + "\r\n";
        }
        return text;
    }
};

TEST_F(AsciiDataFileTest, ReadsNumbersSeparatedByAnyWhiteSpace) {
    const std::vector<std::pair<std::string, std::string>> cases{
        {"1\r\n2\r\n3\r\n", "1 2 3"},
        {" \t1\t\t2  3\n\n\n4 5\r\n", "1 2 3 4 5"},
        {"\r\n\r\n1\r\n   \r\n2\r\n\r\n", "1 2"},
        {"1\r\n2\r\n\x1A", "1 2"},
        {"1\x1A 2\r\n \x1A \r\n3", "1 2 3"},
        {"1\r\n2 3\r\n4", "1 2 3 4"},
        {"-1.5 +2 .5 5. 1e3 1D-1 2d2", "-1.5 2 0.5 5 1000 0.1 200"},
    };
    for (const auto& [content, values] : cases) {
        EXPECT_EQ(ReadInBlocks(content), values) << content;
    }
    EXPECT_EQ(Read("\xEF\xBB\xBF"
                   "1 2"),
              "1 2")
        << "as some editors mark UTF-8";
    EXPECT_EQ(Read("1 \xEF\xBB\xBF"
                   "2")
                  .substr(0, 9),
              "error 13:");
}

TEST_F(AsciiDataFileTest, RefusesTextThatIsNotAllNumbersAndTellsWhere) {
    const std::vector<std::pair<std::string, int>> cases{
        {"1\r\n2\r\nabc\r\n", 3}, {"1 2\r\n3 4\r\nx", 5},       {"", 1},
        {" \r\n\t\r\n\x1A", 1},   {std::string("1\0 2", 4), 1}, {std::string("1 \0 2", 5), 2},
        {"1\r\n1,000", 2},
    };
    for (const auto& [content, line] : cases) {
        EXPECT_EQ(ReadInBlocks(content),
                  "error 13: PREFIX | Invalid data at line " + std::to_string(line))
            << content;
    }
}

TEST_F(AsciiDataFileTest, ANumberBeyondTheRangeOfADoubleIsAnOverflow) {
    EXPECT_EQ(ReadInBlocks("1\n1e308\n-1e309\n"),
              "error 6: Overflow in the I-File:  a number must lie between "
              "-1.79769313486231E+308 and 1.79769313486231E+308. | Invalid data at line 3");
    EXPECT_EQ(Read("1e-400 1"), "0 1");
}

TEST_F(AsciiDataFileTest, AnEmptyPrefixSuppressesTheLine) {
    File.errorPrefix.clear();
    EXPECT_EQ(Read("1\n2\nabc"), "error 13: Type mismatch");
    EXPECT_EQ(Read("1e999"), "error 6: Overflow");
    EXPECT_EQ(Read(""), "error 13: Type mismatch");
}

TEST_F(AsciiDataFileTest, AFileWithoutSeparatorsIsRefusedWithoutHoldingAllOfIt) {
    EXPECT_EQ(Read(std::string(3 << 20, '1')), "error 13: PREFIX | Invalid data at line 1");
    EXPECT_EQ(Progress.Questions, 0);
}

TEST_F(AsciiDataFileTest, LooksUpAtTheCheckpoints) {
    std::vector<std::string> expected{"Reading I-File... (1 points)"};
    for (int at = 1000; at <= 50000; at += at < 20000 ? 1000 : 10000) {
        expected.push_back("Reading I-File... (" + std::to_string(at) + " points)");
    }
    Clock.StepMs = 1000;
    Read(Lines(50500));
    EXPECT_EQ(Progress.Messages, expected);
    EXPECT_EQ(Progress.Questions, 24);
    EXPECT_EQ(Progress.Bar.front(), "0/1000");
    EXPECT_EQ(Progress.Bar.back(), "1000/1000");
    EXPECT_EQ(Progress.Bar.size(), 26U);
}

TEST_F(AsciiDataFileTest, ShowsProgressAtMostEvery100Milliseconds) {
    Clock.StepMs = 50;  // two steps make 100, which is not more than 100
    Read(Lines(9500));
    EXPECT_EQ(Progress.Messages,
              (std::vector<std::string>{
                  "Reading I-File... (1 points)", "Reading I-File... (3000 points)",
                  "Reading I-File... (6000 points)", "Reading I-File... (9000 points)"}));
    EXPECT_EQ(Progress.Questions, 10);
}

TEST_F(AsciiDataFileTest, RefusesMorePointsThanItCanCount) {
    Files.Put("data", "1 2 3 4");
    const auto read = [&](std::int32_t maximum) {
        return Outcome([&] { return ReadAsciiDataFile(File, Services(), maximum); });
    };
    EXPECT_EQ(read(4), "1 2 3 4");
    EXPECT_EQ(read(3),
              "error 6: The I-File (data) contains more than 3 points. | This exceeds the "
              "maximum number of points supported.");
}

TEST_F(AsciiDataFileTest, ReservesAtMostTwiceWhatTheValuesNeed) {
    const auto repeated = [](const std::string& number, int count) {
        std::string text;
        for (int value = 0; value < count; ++value) {
            text += number;
        }
        return text;
    };
    const std::string longNumbers = repeated("-0.123456789012345\r\n", 60000);
    Files.Put("data", longNumbers);
    const Channel even = ReadAsciiDataFile(File, Services());
    EXPECT_EQ(even.Count(), 60000);
    EXPECT_LE(even.Numbers()->Capacity(), 2 * even.Numbers()->Size());
    // Many more follow than the beginning lets expect.
    Files.Put("data", longNumbers + repeated("7 ", 200000));
    const Channel more = ReadAsciiDataFile(File, Services());
    EXPECT_EQ(more.Count(), 260000);
    EXPECT_LE(more.Numbers()->Capacity(), 2 * more.Numbers()->Size());
    EXPECT_EQ(more.Numbers()->Span()[59999], -0.123456789012345);
    EXPECT_EQ(more.Numbers()->Span()[259999], 7);
}

TEST_F(AsciiDataFileTest, RecordsTheDateAndNoticesAFileThatChangesWhileItIsRead) {
    Files.Put("data", "1 2", 77);
    EXPECT_EQ(ReadAsciiDataFile(File, Services()).date.ticks, 77);

    const std::string changed =
        "error 75: The file was changed while it was being read.  Please try again.";
    const auto readAs = [&](std::int64_t reportedSize) {
        Files.Put("data", Lines(5000)).reportedSize = reportedSize;
        return Outcome([&] { return ReadAsciiDataFile(File, Services()); });
    };
    BlockBytes = 64;
    EXPECT_EQ(readAs(100), changed) << "grown";
    EXPECT_EQ(readAs(0), changed) << "grown from nothing";
    EXPECT_EQ(readAs(1000000), changed) << "cut";
    Progress.OnQuestion = [&] { Files.Entries["data"].date = 78; };
    EXPECT_EQ(readAs(-1), changed) << "written";
}

}  // namespace
}  // namespace krv::tests
