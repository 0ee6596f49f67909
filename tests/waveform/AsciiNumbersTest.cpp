#include "waveform/readers/AsciiNumbers.h"

#include <bit>
#include <cstdio>
#include <iterator>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace krv::tests {

using namespace waveform;
namespace {

// What a conversion came to, values as their bits.
struct Outcome {
    std::vector<std::uint64_t> bits;
    std::size_t stoppedAt = 0;
    NumberTextError error = NumberTextError::None;

    bool operator==(const Outcome&) const = default;
};

// Token by token, with the conversion for single numbers.
Outcome Oracle(const std::string& text, std::size_t room, NumberFormat format) {
    Outcome outcome;
    const auto skip = [&](bool separators, std::size_t at) {
        while (at < text.size() && IsSeparator(text[at]) == separators) {
            ++at;
        }
        return at;
    };
    while (true) {
        outcome.stoppedAt = skip(true, outcome.stoppedAt);
        const std::size_t end = skip(false, outcome.stoppedAt);
        if (end == text.size() || outcome.bits.size() == room) {
            return outcome;
        }
        const ParsedNumber number = ParseNumber(
            std::string_view(text).substr(outcome.stoppedAt, end - outcome.stoppedAt), format);
        outcome.error = number.error;
        if (number.error != NumberTextError::None) {
            return outcome;
        }
        outcome.bits.push_back(std::bit_cast<std::uint64_t>(number.value));
        outcome.stoppedAt = end;
    }
}

Outcome Converted(const std::string& text, std::size_t room, NumberFormat format) {
    // Exactly as long as the text, so that a sanitizer notices what is read behind it.
    const auto copy = std::make_unique<char[]>(text.size());
    text.copy(copy.get(), text.size());
    std::vector<double> values(room);
    const ConvertedNumbers converted = ConvertNumbers({copy.get(), text.size()}, values, format);
    Outcome outcome{{}, text.size() - converted.rest.size(), converted.error};
    for (std::size_t at = 0; at < converted.count; ++at) {
        outcome.bits.push_back(std::bit_cast<std::uint64_t>(values[at]));
    }
    return outcome;
}

void ExpectLikeTheOracle(const std::string& text, std::size_t room, NumberFormat format = {}) {
    const Outcome expected = Oracle(text, room, format);
    EXPECT_TRUE(Converted(text, room, format) == expected) << text;
}

std::string Printed(const char* format, double value) {
    char text[400];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

// A number in one of the forms that programs write.
std::string RandomNumber(std::mt19937_64& random) {
    static constexpr const char* Forms[] = {"%.6f",  "%.3f",  "%.0f",  "%.17g", "%.15g", "%.9e",
                                            "%.17e", "%.18f", "%.19f", "%+.8f", "%.4E"};
    const auto form = random() % (std::size(Forms) + 3);
    const auto digits = [&random] { return std::to_string(random() >> random() % 64); };
    if (form < std::size(Forms)) {
        const double magnitude = std::uniform_real_distribution<double>(-1, 1)(random);
        return Printed(Forms[form], std::ldexp(magnitude, static_cast<int>(random() % 24) - 12));
    }
    const std::string exponent = "e" + std::to_string(static_cast<int>(random() % 160) - 80);
    const std::string ends[] = {"", '.' + digits(), exponent};
    return digits() + ends[form - std::size(Forms)];
}

TEST(ConvertNumbers, GivesTheSameBitsForNumbersOfEveryForm) {
    std::mt19937_64 random(6);
    for (int round = 0; round < 40; ++round) {
        std::string text;
        for (int count = 0; count < 2000; ++count) {
            const auto blanks = static_cast<std::size_t>(1 + random() % 90 / 80);
            text += RandomNumber(random) + (random() % 2 == 0 ? "\r\n" : std::string(blanks, ' '));
        }
        ExpectLikeTheOracle(text, 2000);
    }
}

// Each token stands in front of every number of characters that a look ahead may take.
TEST(ConvertNumbers, JudgesEveryTokenLikeTheConversionForSingleNumbers) {
    std::istringstream words(
        "+.5 -5. 5 - + . +. --1 +-1 1- 1.2.3 1,5 1,5.2 1.5,2 .e5 1e 1e+ 1e5 1E-5 1d+05 -1.25D2 "
        "1e5. 1e0005 1e12345 1f5 e5 abc 1x x1 0x10 nan -inf 1\x1B 1/ 1: \xB1 -0 -0.0e9 "
        "9007199254740993 9007199254740992.5 9999999999999999999 18446744073709551616 "
        "0.9999999999999999999 1.9999999999999999999 00.9999999999999999999 12345678.5 1234567.5 "
        "123456789012345678.9 1e22 1e23 8.5e-23 1e-64 1e65 1e400 4.35 0.3e-5");
    std::vector<std::string> tokens(std::istream_iterator<std::string>(words), {});
    tokens.insert(tokens.end(),
                  {std::string("1\0002", 3), std::string("\0", 1), std::string(64, '1'),
                   "0." + std::string(61, '0') + "1", std::string(200, '0') + "7"});
    for (const std::string& token : tokens) {
        for (std::size_t behind = 0; behind < 20; ++behind) {
            const std::string text = "-2.25 " + token + std::string(behind, ' ') + "3";
            ExpectLikeTheOracle(text, 100);
            ExpectLikeTheOracle(text + "\r\n", 100, NumberFormat{','});
        }
    }
}

TEST(ConvertNumbers, TellsEveryCharacterFromASeparatorAndADigit) {
    for (int character = 0; character < 256; ++character) {
        std::string text(100, ' ');
        for (std::size_t at = 0; at < 80; at += 5) {
            text[at] = static_cast<char>(character);
            text[at + 2] = '7';
        }
        ExpectLikeTheOracle(text, 100);
    }
}

TEST(ConvertNumbers, StopsWhereTheRoomEnds) {
    std::string text;
    for (int number = 0; number < 60; ++number) {
        text += std::to_string(number * number) + (number % 3 == 0 ? "\r\n" : " ");
    }
    for (std::size_t room = 0; room < 62; ++room) {
        ExpectLikeTheOracle(text, room);
    }
}

}  // namespace
}  // namespace krv::tests
