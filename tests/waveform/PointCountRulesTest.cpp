#include "waveform/checks/PointCountRules.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace krv::tests {

using namespace waveform;
namespace {

constexpr const char* OldAtLeast16 = "The I (or I and Q)-Data must contain at least 16 points.";
constexpr const char* OldEven = "The I-Data must contain an even number of points.";
constexpr const char* OldQAtLeast16 = "The Q-Data must contain at least 16 points.";
constexpr const char* OldQEven = "The Q-Data must contain an even number of points.";
constexpr const char* NewAtLeast60 = "The I and Q-Data must contain at least 60 points.";
constexpr const char* NewEven = "The I and Q Data must contain an even number of points.";
constexpr const char* SameNumber = "The I- and Q-Data should contain the same number of points.";
constexpr const char* PulseTooLong =
    "The Event Marker Starting Point plus the Event Marker Number of Points exceeds the number of "
    "points in the waveform.";

constexpr int NoQ = -1;

struct Row {
    const char* family;
    int iCount;
    int qCount;
    std::vector<std::string> sentences;
    bool refused;
};

std::string Joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += (text.empty() ? "" : "\r\n") + line;
    }
    return text;
}

waveform::PointCounts CountsOf(const Row& row) {
    PointCounts counts;
    counts.newModel = row.family[0] == 'n';
    counts.fromFiles = false;
    counts.useQ = row.qCount != NoQ;
    counts.iCount = row.iCount;
    // What an earlier download has left there must not matter when Q takes no part.
    counts.qCount = counts.useQ ? row.qCount : 101;
    return counts;
}

TEST(PointCountRules, EachRuleFiresAtItsLimitInItsOrder) {
    const std::vector<Row> rows{
        {"old", 16, NoQ, {}, false},
        {"old", 14, NoQ, {OldAtLeast16}, true},
        {"old", 15, NoQ, {OldAtLeast16, OldEven}, true},
        {"old", 17, NoQ, {OldEven}, true},
        {"old", 0, NoQ, {OldAtLeast16}, true},
        {"old", 16, 16, {}, false},
        {"old", 16, 18, {SameNumber}, false},
        {"old", 16, 14, {OldQAtLeast16, SameNumber}, true},
        {"old", 16, 17, {OldQEven, SameNumber}, true},
        {"old", 15, 15, {OldAtLeast16, OldEven, OldQAtLeast16, OldQEven}, true},
        {"new", 120, NoQ, {}, false},
        {"new", 118, NoQ, {NewAtLeast60}, true},
        {"new", 119, NoQ, {NewEven, NewAtLeast60}, true},
        {"new", 121, NoQ, {NewEven}, true},
        {"new", 60, 60, {}, false},
        {"new", 61, 61, {}, false},
        {"new", 59, 61, {NewAtLeast60, SameNumber}, true},
        {"new", 60, 61, {NewEven, SameNumber}, true},
        {"new", 100, 102, {SameNumber}, false},
        {"new", 2147483647, 2147483647, {}, false},
    };
    for (const Row& row : rows) {
        const PointCountReport report = CheckPointCounts(CountsOf(row));
        SCOPED_TRACE(std::string(row.family) + ' ' + std::to_string(row.iCount) + '/' +
                     std::to_string(row.qCount));
        EXPECT_EQ(report.text, Joined(row.sentences));
        EXPECT_EQ(report.refused, row.refused);
    }
}

TEST(PointCountRules, PulseMustExceedBothCounts) {
    PointCounts counts{.newModel = false,
                       .iCount = 20,
                       .markerPulse = true,
                       .markerStart = 10,
                       .markerLength = 10};
    const auto warned = [&] {
        const PointCountReport report = CheckPointCounts(counts);
        EXPECT_FALSE(report.refused);
        return report.text.find(PulseTooLong) != std::string::npos;
    };
    EXPECT_FALSE(warned());
    counts.markerLength = 11;
    EXPECT_TRUE(warned());
    counts.qCount = 22;
    EXPECT_TRUE(warned()) << "a Q count left over from an earlier download";
    counts.useQ = true;
    EXPECT_FALSE(warned());
    counts.qCount = 18;
    EXPECT_TRUE(warned());
    counts.scalable = false;
    EXPECT_FALSE(warned()) << "codes of an old model";
    counts = {.newModel = true, .iCount = 120, .markerPulse = true, .markerStart = 121};
    EXPECT_FALSE(warned()) << "no pulse";
    counts.markerStart = counts.markerLength = 32767;
    EXPECT_TRUE(warned());
    counts.fromFiles = false;
    EXPECT_FALSE(warned());
    counts.fromFiles = true;
    counts.markerPulse = false;
    EXPECT_FALSE(warned());
}

}  // namespace
}  // namespace krv::tests
