#include "common/Numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "common/DecimalConversion.h"
#include "common/Error.h"
#include "common/NearestRounding.h"
#include "common/Text.h"

namespace krv {
namespace {

// As many digits as always fit into 64 bits.
constexpr std::size_t IntegerDigits = 19;

// Exponents in the text are followed up to here; anything beyond is out of range or zero whatever
// the digits say.
constexpr std::int64_t ExponentLimit = std::int64_t{1} << 60;

constexpr bool IsDigit(char character) noexcept {
    return character >= '0' && character <= '9';
}

constexpr bool IsSign(char character) noexcept {
    return character == '+' || character == '-';
}

// A token taken apart: [sign] digits [separator digits] [exponent].
struct Decimal {
    bool isNumeric = false;
    bool isNegative = false;
    // The run of digits with the separator in it, without the sign and the exponent.
    std::string_view digits;
    std::size_t integerDigits = 0;
    std::size_t fractionDigits = 0;
    // The digits read as an integer; wrapped around when there are more than IntegerDigits.
    std::uint64_t integer = 0;
    std::int64_t exponent = 0;
    // Separator and exponent letter are those that the standard library knows, too.
    bool isStandardForm = true;
};

const char* ScanDigits(const char* at, const char* end, std::uint64_t& integer) noexcept {
    for (; at != end && IsDigit(*at); ++at) {
        integer = integer * 10 + static_cast<std::uint64_t>(*at - '0');
    }
    return at;
}

// The exponent after its letter; null when it is not one.
const char* ScanExponent(const char* at, const char* end, std::int64_t& exponent) noexcept {
    const bool negative = at != end && *at == '-';
    if (at != end && IsSign(*at)) {
        ++at;
    }
    if (at == end) {
        return nullptr;
    }
    for (; at != end && IsDigit(*at); ++at) {
        exponent = std::min(exponent * 10 + (*at - '0'), ExponentLimit / 10);
    }
    exponent = negative ? -exponent : exponent;
    return at;
}

Decimal Scan(std::string_view token, char decimalSeparator) noexcept {
    Decimal result;
    const char* at = token.data();
    const char* const end = at + token.size();
    if (at != end && IsSign(*at)) {
        result.isNegative = *at == '-';
        ++at;
    }
    const char* const first = at;
    at = ScanDigits(at, end, result.integer);
    result.integerDigits = static_cast<std::size_t>(at - first);
    if (at != end && (*at == '.' || *at == decimalSeparator)) {
        result.isStandardForm = *at == '.';
        const char* const fraction = ++at;
        at = ScanDigits(at, end, result.integer);
        result.fractionDigits = static_cast<std::size_t>(at - fraction);
    }
    result.digits = {first, static_cast<std::size_t>(at - first)};
    if (result.integerDigits + result.fractionDigits == 0) {
        return result;
    }
    if (at != end && (*at == 'e' || *at == 'E' || *at == 'd' || *at == 'D')) {
        result.isStandardForm = result.isStandardForm && (*at == 'e' || *at == 'E');
        at = ScanExponent(at + 1, end, result.exponent);
    }
    result.isNumeric = at == end;
    return result;
}

// The significant digits of a decimal, d1 d2 d3..., where the value is 0.d1d2d3... times ten to the
// power of `exponent`.
class SignificantDigits {
 public:
    // No value lies between two doubles' midpoints with more digits than this; whatever follows
    // only matters for being zero or not.
    static constexpr std::size_t Most = 800;

    explicit SignificantDigits(const Decimal& decimal) noexcept
        : m_exponent(decimal.exponent + static_cast<std::int64_t>(decimal.integerDigits)) {
        for (const char character : decimal.digits) {
            if (IsDigit(character)) {
                Add(character);
            }
        }
        if (m_dropped) {
            m_text[m_size++] = '1';
        }
    }

    [[nodiscard]] bool IsZero() const noexcept { return m_size == 0; }
    // Far outside the double range this alone decides between too large and too small.
    [[nodiscard]] bool IsLarge() const noexcept { return m_exponent > 0; }

    // "d1d2d3...e123" in the form of the standard library; valid while this object lives.
    std::string_view Write() noexcept {
        constexpr std::int64_t Beyond = 9999;
        const std::int64_t exponent =
            std::clamp(m_exponent - static_cast<std::int64_t>(m_size), -Beyond, Beyond);
        m_text[m_size] = 'e';
        const auto written =
            std::to_chars(m_text.data() + m_size + 1, m_text.data() + m_text.size(), exponent);
        return {m_text.data(), static_cast<std::size_t>(written.ptr - m_text.data())};
    }

 private:
    void Add(char digit) noexcept {
        if (m_size == 0 && digit == '0') {
            --m_exponent;
        } else if (m_size < Most) {
            m_text[m_size++] = digit;
        } else {
            m_dropped = m_dropped || digit != '0';
        }
    }

    std::array<char, Most + 16> m_text;
    std::size_t m_size = 0;
    std::int64_t m_exponent;
    bool m_dropped = false;
};

bool ConvertStandardForm(std::string_view text, double& value) noexcept {
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    return result.ec == std::errc() && std::isfinite(value);
}

ParsedNumber ConvertSlowly(const Decimal& decimal, std::string_view unsignedToken) noexcept {
    ParsedNumber result;
    if (decimal.isStandardForm && ConvertStandardForm(unsignedToken, result.value)) {
        return result;
    }
    // The standard library reports too small a value like one too large, and knows neither other
    // separators nor the letter d.
    SignificantDigits digits(decimal);
    if (digits.IsZero()) {
        return {};
    }
    if (!decimal.isStandardForm && ConvertStandardForm(digits.Write(), result.value)) {
        return result;
    }
    return {0.0, digits.IsLarge() ? NumberTextError::OutOfRange : NumberTextError::None};
}

template <class Integer>
Integer ToInteger(double value) {
    const double rounded = RoundHalfEven(value);
    if (!(rounded >= std::numeric_limits<Integer>::min() &&
          rounded <= std::numeric_limits<Integer>::max())) {
        throw Error(ErrorNumber::Overflow);
    }
    return static_cast<Integer>(rounded);
}

// From here on a double has no fraction.
constexpr double NoFraction = 4503599627370496.0;

}  // namespace

ParsedNumber ParseNumber(std::string_view token, NumberFormat format) noexcept {
    const NearestRounding nearest;
    const Decimal decimal = Scan(token, format.decimalSeparator);
    if (!decimal.isNumeric) {
        return {0.0, NumberTextError::NotNumeric};
    }
    ParsedNumber result;
    const bool isWhole = decimal.integerDigits + decimal.fractionDigits <= IntegerDigits;
    const std::int64_t power = decimal.exponent - static_cast<std::int64_t>(decimal.fractionDigits);
    if (!isWhole || !DecimalToDouble(decimal.integer, power, result.value)) {
        const auto signLength = static_cast<std::size_t>(decimal.digits.data() - token.data());
        result = ConvertSlowly(decimal, token.substr(signLength));
    }
    if (decimal.isNegative) {
        result.value = -result.value;
    }
    return result;
}

double TextToDouble(std::string_view text, NumberFormat format) {
    const ParsedNumber number = ParseNumber(TrimBlanks(text), format);
    if (number.error == NumberTextError::NotNumeric) {
        throw Error(ErrorNumber::TypeMismatch);
    }
    if (number.error == NumberTextError::OutOfRange) {
        throw Error(ErrorNumber::Overflow);
    }
    return number.value;
}

double RoundHalfEven(double value) noexcept {
    if (!(std::fabs(value) < NoFraction)) {
        return value;
    }
    auto whole = static_cast<std::int64_t>(value);
    const double rest = std::fabs(value - static_cast<double>(whole));
    if (rest > 0.5 || (rest == 0.5 && whole % 2 != 0)) {
        whole += value < 0 ? -1 : 1;
    }
    return std::copysign(static_cast<double>(whole), value);
}

std::int16_t ToInt16(double value) {
    return ToInteger<std::int16_t>(value);
}

std::int32_t ToInt32(double value) {
    return ToInteger<std::int32_t>(value);
}

double RoundDecimals(double value, int decimals) noexcept {
    const double power = ExactPowersOfTen[static_cast<std::size_t>(std::clamp(decimals, 0, 15))];
    const double scaled = value * power;
    return std::fabs(scaled) < NoFraction ? RoundHalfEven(scaled) / power : value;
}

std::string NumberToText(double value, NumberFormat format) {
    constexpr int SignificantDigitsShown = 15;
    if (value == 0) {
        return "0";
    }
    std::array<char, 32> buffer;
    const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                       std::chars_format::general, SignificantDigitsShown);
    std::string text(buffer.data(), written.ptr);
    std::replace(text.begin(), text.end(), 'e', 'E');
    std::replace(text.begin(), text.end(), '.', format.decimalSeparator);
    return text;
}

}  // namespace krv
