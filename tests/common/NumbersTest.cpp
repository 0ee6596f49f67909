#include "common/Numbers.h"

#include <bit>
#include <cfenv>
#include <cmath>
#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "common/Error.h"
#include "fuzz/NumberOracle.h"
#include "tests/support/ErrorOf.h"

namespace krv::tests {
namespace {

constexpr NumberFormat Comma{','};
constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr double NotANumber = std::numeric_limits<double>::quiet_NaN();

// The parser and the C library's conversion must agree to the last bit.
void ExpectLikeStrtod(const std::string& token, NumberFormat format = {}) {
    const ParsedNumber expected = fuzz::OracleNumber(token, format);
    const ParsedNumber parsed = ParseNumber(token, format);
    ASSERT_EQ(parsed.error, expected.error) << token;
    if (expected.error != NumberTextError::None) {
        return;
    }
    EXPECT_EQ(std::bit_cast<std::uint64_t>(parsed.value),
              std::bit_cast<std::uint64_t>(expected.value))
        << token << " gave " << parsed.value << ", not " << expected.value;
}

std::string Printed(const char* format, double value) {
    std::string text(2000, '\0');
    text.resize(static_cast<std::size_t>(std::snprintf(text.data(), text.size(), format, value)));
    return text;
}

TEST(ParseNumber, AgreesWithStrtodOnRandomDoublesInManyForms) {
    std::mt19937_64 random(20240611);
    for (int round = 0; round < 50000; ++round) {
        const auto value = std::bit_cast<double>(random());
        if (value - value != 0) {
            continue;
        }
        for (const char* format : {"%.17g", "%.15g", "%.6g", "%.18e", "%.3E", "%+.16e"}) {
            ExpectLikeStrtod(Printed(format, value));
        }
    }
}

TEST(ParseNumber, AgreesWithStrtodAtSubnormalsAndAtTheEndsOfTheRange) {
    std::mt19937_64 random(99);
    for (int round = 0; round < 20000; ++round) {
        ExpectLikeStrtod(Printed("%.17g", std::bit_cast<double>(random() >> (12 + random() % 52))));
        ExpectLikeStrtod(
            Printed("%.17g", std::bit_cast<double>(0x7FE0000000000000 + (random() >> 12))));
    }
    std::istringstream tokens(
        "4.9406564584124654e-324 2.4703282292062327e-324 2.4703282292062328e-324 "
        "2.2250738585072011e-308 2.2250738585072014e-308 1.7976931348623157e308 "
        "1.7976931348623158e308 1.7976931348623159e308 1e308 1e309 1e-400 -1e-400 "
        "0e999999999999999999999 -0 0.0e-5 1e99999999999999999999 -1e400 1e-99999999999999999999 "
        "9007199254740993 9007199254740992.999 18446744073709551616 "
        "0.000000000000000000000000000000000000000000000000001e51 100000000000000000000000e-23 "
        "000000000000000000000000000000000000000000000000001");
    for (std::string token; tokens >> token;) {
        ExpectLikeStrtod(token);
    }
}

// Values exactly between two doubles, and a digit far behind that decides.
TEST(ParseNumber, AgreesWithStrtodOnHalfwayCases) {
    std::mt19937_64 random(5);
    for (int round = 0; round < 3000; ++round) {
        const std::uint64_t mantissa = (std::uint64_t{1} << 52) | (random() >> 12);
        const std::uint64_t halfway = (2 * mantissa + 1) << (random() % 10);
        ExpectLikeStrtod(std::to_string(halfway));
        ExpectLikeStrtod(std::to_string(halfway) + "." + std::string(900, '0') + "1");
        ExpectLikeStrtod(std::to_string(halfway - 1) + "." + std::string(900, '9'));
    }
    // 2^53 + 1 lies halfway; whatever follows it, however late, tips the balance.
    for (const std::size_t zeros : {1U, 30U, 700U, 767U, 768U, 800U, 5000U}) {
        const std::string halfway = "9007199254740993." + std::string(zeros, '0');
        ExpectLikeStrtod(halfway);
        ExpectLikeStrtod(halfway + "1");
        ExpectLikeStrtod(halfway + "1e-3");
    }
}

TEST(ParseNumber, TakesATokenOfManyDigitsWithoutTheStandardForm) {
    const std::string zeros(5000, '0');
    const auto value = [](const std::string& token) { return ParseNumber(token, Comma).value; };
    EXPECT_EQ(value("9007199254740993," + zeros), 9007199254740992.0);
    EXPECT_EQ(value("9007199254740993," + zeros + "1"), 9007199254740994.0);
    EXPECT_EQ(value("0," + zeros + "1D5001"), 1.0);
    EXPECT_EQ(value("1" + zeros + "d-5000"), 1.0);
    EXPECT_EQ(value("1" + zeros + "d-99999"), 0.0);
    EXPECT_EQ(ParseNumber("1" + zeros + "d-4600").error, NumberTextError::OutOfRange);
}

TEST(ParseNumber, AcceptsEveryFormOfSignSeparatorAndExponentLetter) {
    for (const auto& [tokens, format] : {
             std::pair("+1 -1 5. .5 -.5 1e3 1E3 1d3 1D+3 1.5d-3 +2.5e+1 5.e1 1d400 1d-400",
                       NumberFormat{}),
             std::pair("1,5 ,5 5, 1.5 -1,5D2 0,1 +0,30000000000000004 -1,0e309", Comma),
         }) {
        std::istringstream stream(tokens);
        for (std::string token; stream >> token;) {
            EXPECT_NE(ParseNumber(token, format).error, NumberTextError::NotNumeric) << token;
            ExpectLikeStrtod(token, format);
        }
    }
}

TEST(ParseNumber, RefusesWhatIsNoDecimalNumber) {
    std::istringstream tokens(
        ". + - +. e5 .e5 1e 1e+ 1e- 1ee5 1e5. 1e5e5 1..5 1.5.2 --1 +-1 1- 1+1 1,5 1,000 1.000,5 "
        "nan NaN inf -inf infinity 0x10 0x1p3 &H10 1f 1L $1 1% (1) 1_000 1'000 \xEF\xBB\xBF"
        "1 "
        "\xD9\xA1 \xE2\x88\x92"
        "1 #N/A abc");
    for (std::string token; tokens >> token;) {
        EXPECT_EQ(ParseNumber(token).error, NumberTextError::NotNumeric) << token;
    }
    for (const std::string_view token : {"", " 1", "1 ", "1\t"}) {
        EXPECT_EQ(ParseNumber(token).error, NumberTextError::NotNumeric) << token;
    }
    EXPECT_EQ(ParseNumber(std::string_view("1\0", 2)).error, NumberTextError::NotNumeric);
    for (const char* token : {"1,5,2", "1.5,2", "1,5.2", ",", "1,000,000"}) {
        EXPECT_EQ(ParseNumber(token, Comma).error, NumberTextError::NotNumeric) << token;
    }
}

TEST(TextToDouble, IgnoresBlanksAtTheEndsAndTellsBadTextFromARangeError) {
    EXPECT_EQ(TextToDouble("  12.5 "), 12.5);
    EXPECT_EQ(TextToDouble(" 12,5", Comma), 12.5);
    EXPECT_EQ(ErrorNumberOf([] { return TextToDouble("12a"); }), ErrorNumber::TypeMismatch);
    EXPECT_EQ(ErrorNumberOf([] { return TextToDouble("  "); }), ErrorNumber::TypeMismatch);
    EXPECT_EQ(ErrorNumberOf([] { return TextToDouble("1e999"); }), ErrorNumber::Overflow);
    for (const char* text : {"", "1 2", "\t1", "Error"}) {
        EXPECT_EQ(ErrorNumberOf([&] { return TextToDouble(text); }), ErrorNumber::TypeMismatch)
            << text;
    }
}

// As the C library rounds in the usual mode, whatever the mode is.
TEST(Rounding, GoesToTheNearestWholeNumberAndHalvesToTheEvenOne) {
    std::istringstream values(
        "0.5 1.5 2.5 -0.5 -1.5 -2.5 0.49999999999999994 2.4 2.6 -2.6 1000000000000000.5 "
        "1000000000000001.5 4503599627370495.5 9007199254740993 1e300");
    for (double value = 0; values >> value;) {
        const double expected = std::nearbyint(value);
        for (const int mode : {FE_TONEAREST, FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO}) {
            std::fesetround(mode);
            const double rounded = RoundHalfEven(value);
            std::fesetround(FE_TONEAREST);
            EXPECT_EQ(rounded, expected) << value << " in mode " << mode;
        }
    }
    EXPECT_EQ(RoundHalfEven(2.5), 2);
    EXPECT_EQ(RoundHalfEven(-Infinity), -Infinity);
}

TEST(Rounding, IntoIntegersOverflowsJustBeyondWhatFits) {
    EXPECT_EQ(ToInt16(32767.4999), 32767);
    EXPECT_EQ(ToInt16(-32768.5), -32768);
    EXPECT_EQ(ToInt32(2147483647.4), 2147483647);
    EXPECT_EQ(ToInt32(-2147483648.5), -2147483647 - 1);
    for (const double value : {32767.5, -32768.51, 1e300, NotANumber, -Infinity}) {
        EXPECT_EQ(ErrorNumberOf([&] { return ToInt16(value); }), ErrorNumber::Overflow) << value;
    }
    for (const double value : {2147483647.5, -2147483648.51, NotANumber, Infinity}) {
        EXPECT_EQ(ErrorNumberOf([&] { return ToInt32(value); }), ErrorNumber::Overflow) << value;
    }
}

TEST(NumberToText, ShowsUpToFifteenDigitsAndExponentsOutsideTheMiddleRange) {
    const std::vector<std::pair<double, std::string>> cases{
        {0, "0"},
        {-0.0, "0"},
        {1, "1"},
        {-1.5, "-1.5"},
        {100, "100"},
        {0.1, "0.1"},
        {1.0 / 3, "0.333333333333333"},
        {2.0 / 3, "0.666666666666667"},
        {0.30000000000000004, "0.3"},
        {123456789.125, "123456789.125"},
        {999999999999999, "999999999999999"},
        {999999999999999.9, "1E+15"},
        {1e15, "1E+15"},
        {1e20, "1E+20"},
        {-1.25e300, "-1.25E+300"},
        {0.0001, "0.0001"},
        {0.00001, "1E-05"},
        {4.9406564584124654e-324, "4.94065645841247E-324"},
    };
    for (const auto& [value, text] : cases) {
        EXPECT_EQ(NumberToText(value), text);
    }
    EXPECT_EQ(NumberToText(-2.5, Comma), "-2,5");
    EXPECT_EQ(NumberToText(1.5e-7, Comma), "1,5E-07");
}

}  // namespace
}  // namespace krv::tests
