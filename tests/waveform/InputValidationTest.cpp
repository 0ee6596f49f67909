#include "waveform/dialog/InputValidation.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace krv::tests {

using namespace waveform;
namespace {

using Change = std::function<void(DownloadInputs&)>;

struct Case {
    const char* when;
    Change change;
    const char* message;
};

waveform::DownloadInputs GoodFiles() {
    DownloadInputs inputs;
    inputs.iFileName = "i.txt";
    inputs.iFileExists = true;
    inputs.scaleFactor = "100";
    inputs.markerStart = "0";
    inputs.markerLength = "0";
    return inputs;
}

waveform::DownloadInputs GoodRanges() {
    DownloadInputs inputs = GoodFiles();
    inputs.fileSource = false;
    inputs.iFileName.clear();
    inputs.iFileExists = false;
    inputs.iRange = "A1:A10";
    inputs.iNumberPoints = "10";
    return inputs;
}

void Check(const DownloadInputs& good, const std::vector<Case>& cases) {
    ASSERT_EQ(FirstInputFailure(good), "");
    for (const Case& each : cases) {
        SCOPED_TRACE(each.when);
        DownloadInputs inputs = good;
        each.change(inputs);
        EXPECT_EQ(FirstInputFailure(inputs), each.message);
    }
}

TEST(InputValidation, NamesTheFirstFileThatIsMissing) {
    Check(GoodFiles(), {
                           {"blanks only", [](auto& in) { in.iFileName = "  "; },
                            "No File Name specified for I-Data."},
                           {"empty, interleaved",
                            [](auto& in) { in.iFileName.clear(), in.iqInterleaved = true; },
                            "No File Name specified for the I and Q Data."},
                           {"no such file", [](auto& in) { in.iFileExists = false; },
                            "Invalid File Name specified for I-Data."},
                           {"no such file, interleaved",
                            [](auto& in) { in.iFileExists = false, in.iqInterleaved = true; },
                            "Invalid File Name specified for I and Q Data."},
                           {"no Q file", [](auto& in) { in.useQData = true; },
                            "Invalid File Name speicifed for Q-Data."},
                           {"Q file", [](auto& in) { in.useQData = in.qFileExists = true; }, ""},
                           {"everything wrong: the I file first",
                            [](auto& in) { in = DownloadInputs{}, in.useQData = true; },
                            "No File Name specified for I-Data."},
                           {"Q file before the scale factor",
                            [](auto& in) { in.useQData = true, in.scaleFactor = "x"; },
                            "Invalid File Name speicifed for Q-Data."},
                       });
}

TEST(InputValidation, NamesTheFirstRangeThatIsNone) {
    Check(GoodRanges(),
          {
              {"empty", [](auto& in) { in.iRange = " "; }, "No Data Range specified for I-Data."},
              {"empty, interleaved", [](auto& in) { in.iRange = "", in.iqInterleaved = true; },
               "No Data Range specified for I and Q Data."},
              {"refused", [](auto& in) { in.iNumberPoints = "Error"; },
               "Invalid Data Range specified for I-Data."},
              {"refused, interleaved",
               [](auto& in) { in.iNumberPoints = "Error", in.iqInterleaved = true; },
               "Invalid Data Range specified for I and Q Data"},
              {"refused, interleaved model with a Q range",
               [](auto& in) { in.iNumberPoints = "", in.iqInterleaved = in.useQData = true; },
               "Invalid Data Range specified for I-Data."},
              {"Q refused", [](auto& in) { in.useQData = true, in.qNumberPoints = "Error"; },
               "Invalid Data Range specified for Q-Data."},
              {"Q resolved", [](auto& in) { in.useQData = true, in.qNumberPoints = "10"; }, ""},
              {"Q text without use", [](auto& in) { in.qNumberPoints = "Error"; }, ""},
          });
}

TEST(InputValidation, LimitsTheScaleFactor) {
    constexpr const char* NotNumeric = "The Scale factor is not numeric.";
    constexpr const char* TooLarge = "The magnitude of the Scale Factor must be <= 100.";
    const std::vector<std::pair<const char*, const char*>> factors{
        {"100", ""},          {"-100", ""},        {" 12.5 ", ""},     {"100.0001", TooLarge},
        {"-101", TooLarge},   {"1e999", TooLarge}, {"", NotNumeric},   {"ten", NotNumeric},
        {"&H10", NotNumeric}, {"5 %", NotNumeric}, {"nan", NotNumeric}};
    for (const auto& [factor, message] : factors) {
        DownloadInputs inputs = GoodFiles();
        inputs.scaleFactor = factor;
        EXPECT_EQ(FirstInputFailure(inputs), message) << factor;
    }
    DownloadInputs comma = GoodFiles();
    comma.scaleFactor = "99,5";
    EXPECT_EQ(FirstInputFailure(comma), NotNumeric);
    comma.numberFormat.decimalSeparator = ',';
    EXPECT_EQ(FirstInputFailure(comma), "");
}

TEST(InputValidation, WantsMarkerFieldsThatCountPoints) {
    constexpr const char* StartText = "The Event Marker Starting Point is not numeric.";
    constexpr const char* StartValue =
        "The Event Marker Starting Point must be a non-negative integer.";
    constexpr const char* LengthText = "The Event Marker Number of Points is not numeric.";
    constexpr const char* LengthValue =
        "The Event Marker Number of Points must be a non-negative integer.";
    constexpr const char* Sum =
        "The Event Marker Starting Point plus the Event Marker Number of Points must be a "
        "non-negative integer.";
    struct MarkerCase {
        const char* start;
        const char* length;
        const char* message;
    };
    const std::vector<MarkerCase> cases{
        {"0", "0", ""},
        {" 7 ", "3e2", ""},
        {"", "0", StartText},
        {"x", "x", StartText},
        {"-1", "0", StartValue},
        {"2.5", "0", StartValue},
        {"2147483648", "0", StartValue},
        {"1e400", "0", StartValue},
        {"0", "", LengthText},
        {"0", "-0.5", LengthValue},
        {"0", "1.25", LengthValue},
        {"0", "2147483648", LengthValue},
        {"2147483647", "0", ""},
        {"2147483647", "1", Sum},
        {"1", "2147483647", Sum},
        {"0", "2147483647", ""},
    };
    for (const MarkerCase& each : cases) {
        DownloadInputs inputs = GoodFiles();
        inputs.markerStart = each.start;
        inputs.markerLength = each.length;
        EXPECT_EQ(FirstInputFailure(inputs), each.message) << each.start << " + " << each.length;
        inputs.markerFromFile = true;
        EXPECT_EQ(FirstInputFailure(inputs), "") << "with a marker file";
    }
}

// Which of the two groups is tested hangs on the source and both pages' types.
TEST(InputValidation, TestsTheFieldsOfTheTypeInUse) {
    struct TypeCase {
        bool files;
        int type;
        int typeSS;
        bool scaleIsTested;
        bool markersAreTested;
    };
    const std::vector<TypeCase> cases{
        {true, 0, 0, true, true},   {true, 0, 2, true, true},    {true, 1, 0, false, false},
        {true, 2, 2, false, false}, {false, 0, 0, false, true},  {false, 0, 1, false, true},
        {false, 1, 0, true, false}, {false, 2, -1, true, false}, {false, 2, 1, false, false},
        {true, -1, -1, true, true},
    };
    for (const TypeCase& each : cases) {
        DownloadInputs inputs = each.files ? GoodFiles() : GoodRanges();
        inputs.waveformType = each.type;
        inputs.waveformTypeSS = each.typeSS;
        inputs.markerStart = "x";
        EXPECT_EQ(!FirstInputFailure(inputs).empty(), each.markersAreTested)
            << "markers " << each.files << each.type << each.typeSS;
        inputs.scaleFactor = "x";
        EXPECT_EQ(FirstInputFailure(inputs) == "The Scale factor is not numeric.",
                  each.scaleIsTested)
            << "scale " << each.files << each.type << each.typeSS;
    }
}

}  // namespace
}  // namespace krv::tests
