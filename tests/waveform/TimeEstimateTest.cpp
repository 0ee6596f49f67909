#include "waveform/run/TimeEstimate.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "common/Error.h"
#include "tests/waveform/RunFixture.h"

namespace krv::tests {

using namespace waveform;
namespace {

TEST(TimeEstimate, TellsTheTimeInTheUnitThatSuitsIt) {
    struct Case {
        std::int32_t seconds;
        const char* time;
    };
    const TransferRate rate{"LAN", 87500, 1};
    for (const Case& test : std::vector<Case>{{3, "3 seconds."},
                                              {59, "59 seconds."},
                                              {60, "1 minutes."},
                                              {61, "1,02 minutes."},
                                              {90, "1,5 minutes."},
                                              {118, "1,97 minutes."},
                                              {119, "2 minutes."},
                                              {123, "2 minutes."},
                                              {3599, "60 minutes."},
                                              {3700, "61,7 minutes."}}) {
        EXPECT_EQ(EstimateText(rate, test.seconds, {','}),
                  std::string("Estimated download time, assuming\r\nLAN connection at 87500 bytes "
                              "per second:\r\n") +
                      test.time);
    }
}

TEST(TimeEstimate, TakesTheRateFromTheSession) {
    struct Case {
        const char* what;
        bool serial;
        int baud, bits, stop;
        std::uint64_t points;
        std::int32_t seconds;
        const char* text;
    };
    constexpr const char* Gpib = "GPIB connection at 87500 bytes per second:";
    constexpr const char* Serial = "GPIB connection at 9600 bits per second:";
    const std::vector<Case> cases{
        {"no codes", false, 0, 0, 0, 0, 3, Gpib},
        {"one byte short of a second", false, 0, 0, 0, 43749, 3, Gpib},
        {"a second", false, 0, 0, 0, 43750, 4, Gpib},
        {"the largest waveform", false, 0, 0, 0, 134217728, 3070, Gpib},
        {"8N1", true, 9600, 8, 1, 960, 5, Serial},
        {"8N1.5", true, 9600, 8, 2, 4800, 13, Serial},
        {"7N2", true, 9600, 7, 3, 4800, 13, Serial},
        {"another stop bit code", true, 9600, 8, 7, 960, 5, Serial},
        {"unknown", true, 0, 8, 1, 960, 0, "GPIB connection is unknown."},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(test.what);
        const auto server = FakeServer::Make();
        server->IsSerial = test.serial;
        server->Baud = test.baud;
        server->Bits = test.bits;
        server->Stop = test.stop;
        const TransferRate rate = ReadTransferRate(*server);
        EXPECT_EQ(rate.IsKnown(), test.seconds != 0);
        if (rate.IsKnown()) {
            EXPECT_EQ(EstimateSeconds(test.points, rate), test.seconds);
        }
        const std::string text = EstimateText(rate, 1, {});
        const std::string start = std::string("Estimated download time, assuming\r\n") + test.text;
        EXPECT_EQ(text, rate.IsKnown() ? start + "\r\n1 seconds." : start);
    }
}

TEST(TimeEstimate, NamesAConnectionOfUnknownKindByItsAddress) {
    const auto server = FakeServer::Make();
    server->Kind.clear();
    EXPECT_EQ(EstimateText(ReadTransferRate(*server), 3, {}),
              "Estimated download time, assuming\r\n"
              "tcp://127.0.0.1:5025 connection at 87500 bytes per second:\r\n3 seconds.");
}

TEST(TimeEstimate, OverflowsBeyondTheSecondsItCanHold) {
    const TransferRate slow{"RS-232", 1, 11};
    EXPECT_THROW(static_cast<void>(EstimateSeconds(std::uint64_t{1} << 28, slow)), Error);
}

class EstimateStep : public RunFixture {
 protected:
    bool Estimate(RunMode mode, std::size_t iPoints, std::size_t qPoints = 0) {
        plan.mode = mode;
        codes.i = Shared(Codes(iPoints));
        codes.q = Shared(Codes(qPoints));
        journal.clear();
        return EstimateDownloadTime(plan, codes, services, record);
    }
};

TEST_F(EstimateStep, ADownloadAsksOnlyWhereItTakesElevenSeconds) {
    EXPECT_TRUE(Estimate(RunMode::Download, 349999));
    EXPECT_EQ(record.expectedSeconds, 10);
    EXPECT_EQ(Of("["), Lines{});
    const Lines question{
        "[!] Download: Estimated download time, assuming | GPIB connection at 87500 bytes per "
        "second: | 11 seconds. |  | Do you want to continue? (Yes/No)"};
    desktop.MessageBoxes.Answers = {ports::MessageAnswer::No};
    EXPECT_FALSE(Estimate(RunMode::Download, 350000));
    EXPECT_EQ(Of("["), question);
    EXPECT_TRUE(Estimate(RunMode::Download, 350000));
    EXPECT_EQ(Of("["), question);
    EXPECT_EQ(record.estimatedSeconds, 11);
}

TEST_F(EstimateStep, AValidationAlwaysShowsTheEstimate) {
    EXPECT_TRUE(Estimate(RunMode::Validate, 10));
    EXPECT_EQ(journal, (Lines{"row2 \"Estimating download time...\"", "bar2 50/100",
                              "Download: Estimated download time, assuming | GPIB connection at "
                              "87500 bytes per second: | 3 seconds. (OK)"}));
}

TEST_F(EstimateStep, AnUnknownRateIsAskedAboutAndLeavesTheLastEstimate) {
    server->IsSerial = true;
    server->Baud = 0;
    record.expectedSeconds = 7;
    EXPECT_TRUE(Estimate(RunMode::Download, 10));
    EXPECT_EQ(Of("["), Lines{"[!] Download: Estimated download time, assuming | GPIB connection is "
                             "unknown. |  | Do you want to continue? (Yes/No)"});
    EXPECT_EQ(record.expectedSeconds, 7);
    EXPECT_EQ(record.estimatedSeconds, -1);
}

}  // namespace
}  // namespace krv::tests
