#include "waveform/checks/DacConversion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cfenv>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "waveform/checks/DacKernels.h"
#include "waveform/readers/AsciiNumbers.h"

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace krv::tests {

using namespace waveform;
namespace {

constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr double NotANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double Smallest = std::numeric_limits<double>::denorm_min();
constexpr double Largest = std::numeric_limits<double>::max();

// --- the oracle: slow, and built on floor and comparisons instead of the library's rounding ------

double NearestEven(double value) {
    const double below = std::floor(value);
    const double rest = value - below;
    const bool up = rest > 0.5 || (rest == 0.5 && std::fmod(below, 2.0) != 0);
    return up ? below + 1 : below;
}

std::string CodeText(double code) {
    return std::to_string(static_cast<int>(code));
}

// The code as text, or "bad" where the rules allow none.
std::string OracleRounded(double value, CodeBounds bounds) {
    const double code = std::isfinite(value) ? NearestEven(value) : Infinity;
    if (code < bounds.low || code > bounds.high) {
        return "bad";
    }
    return CodeText(code > 32767 ? code - 65536 : code);
}

std::string OracleScaled(double value, double peak, double percent, bool newModel) {
    // Stored between the steps, so that each is rounded to double and none is fused.
    volatile double factor = 1 / peak;
    volatile double share = percent / 100;
    factor = factor * share;
    factor = factor * (newModel ? 32767.499 : 8191.499);
    volatile double product = value * factor;
    product = newModel ? product : product + 8192;
    return OracleRounded(product, NewQBounds);
}

std::string OracleFinal(FinalStep step, int code) {
    const bool offsetBinary = code >= 0 && code <= 16383;
    switch (step) {
        case FinalStep::OffsetToSigned:
            return offsetBinary ? CodeText((code - 8192) * 4) : "bad";
        case FinalStep::OffsetKept:
            return offsetBinary ? CodeText(code) : "bad";
        case FinalStep::SignedToOffset:
            return CodeText(std::min(NearestEven(code / 4.0) + 8192, 16383.0));
        default:
            return CodeText(code);
    }
}

// --- what the conversions make of one value, in the same form ------------------------------------

std::string Rounded(double value, CodeBounds bounds) {
    std::int16_t code = 0;
    CodeRange range;
    return RoundToCodes({&value, 1}, bounds, {&code, 1}, range) ? "bad" : CodeText(code);
}

std::string Scaled(double value, double peak, double percent, bool newModel) {
    std::int16_t code = 0;
    const Scaling scaling = ScalingFor(peak, percent, newModel);
    CodeRange range;
    return ScaleToCodes({&value, 1}, scaling, {&code, 1}, range) ? "bad" : CodeText(code);
}

// In two passes and in one, which must agree.
std::string Final(FinalStep step, int code) {
    auto result = static_cast<std::int16_t>(code);
    CodeRange range{result, result};
    const auto bad = ApplyFinalStep(step, {&result, 1}, range);
    EXPECT_EQ(range.smallest, result);
    EXPECT_EQ(range.largest, result);
    const double value = code;
    std::int16_t atOnce = 0;
    CodeRange found;
    EXPECT_EQ(RoundToFinalCodes({&value, 1}, IBounds, step, {&atOnce, 1}, found), !bad);
    EXPECT_EQ(found.smallest, bad ? CodeRange().smallest : result);
    EXPECT_EQ(found.largest, bad ? CodeRange().largest : result);
    EXPECT_TRUE(bad || atOnce == result) << atOnce;
    return bad ? "bad" : CodeText(result);
}

// Values around every boundary of the rules, halfway cases, and far from any.
std::vector<double> HardValues() {
    std::vector<double> values{0.0,      -0.0,    Infinity, -Infinity, NotANumber, Smallest,
                               -Largest, Largest, 1e10,     -1e10,     4294967296, 0x1p52 + 1};
    for (const double near :
         {0.0, 15.0, 8192.0, 16383.0, 32767.0, 32768.0, 65535.0, 2147483647.0}) {
        for (const double step : {0.0, 0.25, 0.5, 0.75, 1.0, 1.5, 2.5}) {
            for (const double value : {near + step, near - step}) {
                values.insert(values.end(), {value, -value, std::nextafter(value, Infinity),
                                             std::nextafter(value, -Infinity)});
            }
        }
    }
    return values;
}

TEST(DacConversion, RoundsAndBoundsLikeTheOracle) {
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> anywhere(-70000, 70000);
    std::vector<double> values = HardValues();
    for (int count = 0; count < 5000; ++count) {
        values.push_back(anywhere(random));
        values.push_back(std::floor(anywhere(random)) + 0.5);
    }
    for (const CodeBounds bounds : {IBounds, OldQBounds, NewQBounds, MarkerBounds}) {
        for (const double value : values) {
            ASSERT_EQ(Rounded(value, bounds), OracleRounded(value, bounds))
                << value << " in " << bounds.low << ".." << bounds.high;
        }
    }
}

TEST(DacConversion, ScalesLikeTheOracle) {
    std::mt19937_64 random(11);
    std::uniform_real_distribution<double> unit(-1, 1);
    std::uniform_int_distribution<int> exponent(-990, 1020);
    for (int count = 0; count < 20000; ++count) {
        const double peak = std::ldexp(1 + std::abs(unit(random)), exponent(random));
        const double percent = count % 7 == 0 ? 100 : 200 * unit(random);
        // Every other value is one that lands next to a half.
        const double code = std::floor(40000 * unit(random)) + 0.5;
        const double value = count % 2 == 0 ? peak * unit(random) : code * peak / 32767.499;
        for (const bool newModel : {true, false}) {
            ASSERT_EQ(Scaled(value, peak, percent, newModel),
                      OracleScaled(value, peak, percent, newModel))
                << value << " of " << peak << " at " << percent;
        }
    }
}

TEST(DacConversion, PeaksOfAnySizeReachFullScaleAndNeverOverflow) {
    for (const double peak : {0.5, 1.0, 3.0, 1e-300, 1.8e-304, 1.7e-304, 2.3e-308, 1e-310, Smallest,
                              3 * Smallest, 1e300, Largest, Largest / 3}) {
        SCOPED_TRACE(peak);
        EXPECT_EQ(Scaled(peak, peak, 100, true), "32767");
        EXPECT_EQ(Scaled(-peak, peak, 100, true), "-32767");
        EXPECT_EQ(Scaled(peak, peak, -100, true), "-32767");
        EXPECT_EQ(Scaled(0, peak, 100, true), "0");
        EXPECT_EQ(Scaled(peak, peak, 0, true), "0");
        EXPECT_EQ(Scaled(peak, peak, 100, false), "16383");
        EXPECT_EQ(Scaled(-peak, peak, 100, false), "1");
        EXPECT_EQ(Scaled(-0.0, peak, 100, false), "8192");
        EXPECT_EQ(Scaled(peak, peak, 150, true), "bad");
        EXPECT_EQ(Scaled(peak, peak, 1e308, true), "bad");
    }
    EXPECT_EQ(Scaled(2 * Smallest, 3 * Smallest, 100, true), "21845");
    EXPECT_EQ(Scaled(0, 0, 100, true), "0");
    EXPECT_EQ(Scaled(0, 0, 100, false), "8192");
}

TEST(DacConversion, TheThreadsRoundingModeStaysAndDoesNotCount) {
    const auto results = [] {
        std::array<double, 1> number{};
        // Several, since the last ones are left to ParseNumber.
        static_cast<void>(ConvertNumbers("0.1 0.1 0.1 0.1 ", number, {}));
        const double half = 2.5;
        std::int16_t atOnce = 0;
        CodeRange found;
        static_cast<void>(
            RoundToFinalCodes({&half, 1}, IBounds, FinalStep::None, {&atOnce, 1}, found));
        std::ostringstream text;
        text << Scaled(1, 1, 100, true) << ' ' << Scaled(-1, 1, 100, true) << ' '
             << Scaled(0.3, 1, -70, false) << ' ' << Rounded(2.5, IBounds) << ' '
             << Rounded(-0.7, IBounds) << ' ' << std::hexfloat << ScalingFor(3, 7, true).factor
             << ' ' << number[0] << ' ' << ParseNumber("0.1").value << ' ' << atOnce;
        return text.str();
    };
    const std::string expected = results();
    for (const int mode : {FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO}) {
        std::fesetround(mode);
        const std::string found = results();
        EXPECT_EQ(std::fegetround(), mode);
        std::fesetround(FE_TONEAREST);
        EXPECT_EQ(found, expected);
    }
#ifdef __SSE2__
    // Set alone, as 64-bit hosts set it.
    _MM_SET_ROUNDING_MODE(_MM_ROUND_UP);
    const std::string found = results();
    EXPECT_EQ(_MM_GET_ROUNDING_MODE(), unsigned{_MM_ROUND_UP});
    _MM_SET_ROUNDING_MODE(_MM_ROUND_NEAREST);
    EXPECT_EQ(found, expected);
#endif
}

TEST(DacConversion, FinalStepsAgreeWithTheOracleForEveryCode) {
    for (const FinalStep step : {FinalStep::None, FinalStep::OffsetToSigned, FinalStep::OffsetKept,
                                 FinalStep::SignedToOffset}) {
        for (int code = INT16_MIN; code <= INT16_MAX; ++code) {
            ASSERT_EQ(Final(step, code), OracleFinal(step, code)) << code;
        }
    }
    EXPECT_EQ(FinalStepFor(true, true), FinalStep::OffsetToSigned);
    EXPECT_EQ(FinalStepFor(true, false), FinalStep::OffsetKept);
    EXPECT_EQ(FinalStepFor(false, true), FinalStep::None);
    EXPECT_EQ(FinalStepFor(false, false), FinalStep::SignedToOffset);
}

#if KRV_HAS_SSE2
// Vectors of exactly the length, starting anywhere in a register, with a hard value in each place.
TEST(DacConversion, VectorAndPlainLoopsAgreeAtEveryLengthAndPlace) {
    const std::vector<double> hard = HardValues();
    std::mt19937_64 random(3);
    std::uniform_real_distribution<double> anywhere(-40000, 40000);
    const kernels::CodeRule scale{0.9, 8192};
    const kernels::CodeRule wide{.low = IBounds.low, .high = IBounds.high};
    std::size_t turn = 0;
    for (std::size_t length = 0; length <= 70; ++length) {
        for (std::size_t start = 0; start < 8; ++start) {
            std::vector<double> storage(start + length);
            std::ranges::generate(storage, [&] { return anywhere(random); });
            if (length > 0 && start % 2 == 1) {
                storage[start + turn % length] = hard[turn % hard.size()];
            }
            ++turn;
            const auto values = std::span(storage).subspan(start);
            const auto finish = static_cast<kernels::Finish>(turn % 3);
            for (const kernels::CodeRule& rule : {scale, wide, kernels::CodeRule{}}) {
                std::vector<std::int16_t> plain(start + length);
                std::vector<std::int16_t> vector(start + length);
                const auto expected =
                    kernels::scalar::Convert(values, rule, std::span(plain).subspan(start), finish);
                const auto actual =
                    kernels::sse2::Convert(values, rule, std::span(vector).subspan(start), finish);
                ASSERT_EQ(expected.good, actual.good);
                ASSERT_EQ(expected.smallest, actual.smallest);
                ASSERT_EQ(expected.largest, actual.largest);
                ASSERT_EQ(plain, vector) << "length " << length << ", start " << start;
            }
            const auto plain = kernels::scalar::FindExtremes(values);
            const auto vector = kernels::sse2::FindExtremes(values);
            ASSERT_EQ(plain.finite, vector.finite);
            if (plain.finite) {
                ASSERT_EQ(std::memcmp(&plain.minimum, &vector.minimum, sizeof(double)), 0);
                ASSERT_EQ(std::memcmp(&plain.maximum, &vector.maximum, sizeof(double)), 0);
            }
        }
    }
}
#endif

}  // namespace
}  // namespace krv::tests
