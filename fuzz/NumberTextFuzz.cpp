// Numbers in text, and text from numbers, against the C library. The first byte of an input chooses
// the decimal separator; the rest is the token.
#include <algorithm>
#include <bit>
#include <string>

#include "common/Error.h"
#include "fuzz/FuzzTarget.h"
#include "fuzz/NumberOracle.h"

namespace krv::fuzz {
namespace {

void CompareText(double value, NumberFormat format) {
    std::string expected(64, '\0');
    expected.resize(static_cast<std::size_t>(
        std::snprintf(expected.data(), expected.size(), "%.15G", value == 0 ? 0.0 : value)));
    std::replace(expected.begin(), expected.end(), '.', format.decimalSeparator);
    Require(NumberToText(value, format) == expected, "text has 15 significant digits");
}

void CompareRounding(double value) {
    const double rounded = std::nearbyint(value);
    Require(RoundHalfEven(value) == rounded, "rounding goes to the even neighbour");
    try {
        const std::int16_t narrow = ToInt16(value);
        Require(narrow == rounded, "a 16-bit integer keeps its value");
    } catch (const Error& error) {
        Require(error.Number() == ErrorNumber::Overflow && (rounded < -32768 || rounded > 32767),
                "only what does not fit overflows");
    }
}

void CompareWithOracle(const std::string& token, NumberFormat format) {
    const ParsedNumber expected = OracleNumber(token, format);
    const ParsedNumber parsed = ParseNumber(token, format);
    Require(parsed.error == expected.error, "the token is judged like the oracle judges it");
    if (parsed.error != NumberTextError::None) {
        return;
    }
    Require(
        std::bit_cast<std::uint64_t>(parsed.value) == std::bit_cast<std::uint64_t>(expected.value),
        "the value has the oracle's bits");
    Require(TextToDouble("  " + token + ' ', format) == expected.value, "blanks are ignored");
    CompareText(parsed.value, format);
    CompareRounding(parsed.value);
}

}  // namespace
}  // namespace krv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    krv::fuzz::CompareWithOracle({reinterpret_cast<const char*>(data) + 1, size - 1},
                                 krv::NumberFormat{(data[0] & 1U) != 0 ? ',' : '.'});
    return 0;
}
