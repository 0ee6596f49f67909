#include "formats/TableFields.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace krv::formats {
namespace {

constexpr std::string_view White = " \t\f\x1A";

bool IsWhite(char character) noexcept {
    return character == ' ' || character == '\t';
}

// Where the field that the line begins with ends.
std::size_t FieldEnd(std::string_view line, Separator separator) {
    const char mark = static_cast<char>(separator);
    int depth = 0;
    bool isQuoted = false;
    for (std::size_t at = 0; at < line.size(); ++at) {
        const char character = line[at];
        isQuoted = isQuoted != (character == '"');
        depth += character == '(' ? 1 : character == ')' && depth > 0 ? -1 : 0;
        const bool isMark = separator == Separator::Blanks ? IsWhite(character) : character == mark;
        if (isMark && depth == 0 && !isQuoted) {
            return at;
        }
    }
    return line.size();
}

// A number that may be left out in front of the imaginary unit: "", "+" and "-" are ones.
std::optional<double> Factor(std::string_view text, NumberFormat format) {
    if (text.empty() || text == "+" || text == "-") {
        return text == "-" ? -1.0 : 1.0;
    }
    const ParsedNumber number = ParseNumber(text, format);
    return number.error == NumberTextError::None ? std::optional(number.value) : std::nullopt;
}

// Where the imaginary part's sign stands: the last sign that belongs to no exponent.
std::size_t ImaginarySign(std::string_view text) noexcept {
    for (std::size_t at = text.size(); at-- > 1;) {
        const bool isSign = text[at] == '+' || text[at] == '-';
        const char before = text[at - 1];
        const bool isExponent = before == 'e' || before == 'E' || before == 'd' || before == 'D';
        if (isSign && !isExponent) {
            return at;
        }
    }
    return 0;
}

std::optional<ComplexNumber> ParsePair(std::string_view text, NumberFormat format) {
    const std::size_t comma = text.find(',');
    const ParsedNumber re = ParseNumber(text.substr(0, comma), format);
    const ParsedNumber im = ParseNumber(text.substr(comma + 1), format);
    if (re.error != NumberTextError::None || im.error != NumberTextError::None) {
        return std::nullopt;
    }
    return ComplexNumber{re.value, im.value};
}

}  // namespace

std::string_view TrimWhite(std::string_view text) noexcept {
    const std::size_t first = text.find_first_not_of(White);
    if (first == std::string_view::npos) {
        return text.substr(text.size());
    }
    return text.substr(first, text.find_last_not_of(White) + 1 - first);
}

bool TakeField(std::string_view& line, Separator separator, std::string_view& field) {
    if (separator == Separator::Blanks) {
        line = TrimWhite(line);
    }
    if (line.empty()) {
        return false;
    }
    const std::size_t end = FieldEnd(line, separator);
    field = TrimWhite(line.substr(0, end));
    if (field.size() >= 2 && field.front() == '"' && field.back() == '"') {
        field = TrimWhite(field.substr(1, field.size() - 2));
    }
    line.remove_prefix(std::min(end + 1, line.size()));
    return true;
}

std::vector<std::string_view> FieldsOf(std::string_view line, Separator separator) {
    std::vector<std::string_view> fields;
    line = TrimWhite(line);
    std::string_view field;
    while (TakeField(line, separator, field)) {
        fields.push_back(field);
    }
    return fields;
}

Separator SeparatorOf(std::string_view line) noexcept {
    line = TrimWhite(line);
    for (const Separator separator : {Separator::Tab, Separator::Semicolon, Separator::Comma}) {
        if (FieldEnd(line, separator) < line.size()) {
            return separator;
        }
    }
    return Separator::Blanks;
}

NumberFormat NumbersBetween(Separator separator) noexcept {
    const bool mayHaveCommas = separator == Separator::Tab || separator == Separator::Semicolon;
    return {mayHaveCommas ? ',' : '.'};
}

bool IsRealNumber(std::string_view field, NumberFormat format) {
    return ParseNumber(field, format).error == NumberTextError::None;
}

std::optional<ComplexNumber> ParseComplex(std::string_view text, NumberFormat format) {
    std::string plain;
    std::ranges::copy_if(text, std::back_inserter(plain), [](char c) { return !IsWhite(c); });
    std::string_view rest = plain;
    const bool isInParentheses = rest.size() > 2 && rest.front() == '(' && rest.back() == ')';
    if (isInParentheses) {
        rest = rest.substr(1, rest.size() - 2);
        if (rest.find(',') != std::string_view::npos && format.decimalSeparator != ',') {
            return ParsePair(rest, format);
        }
    }
    if (rest.empty() || std::string_view("iIjJ").find(rest.back()) == std::string_view::npos) {
        return std::nullopt;
    }
    rest.remove_suffix(1);
    const std::size_t sign = ImaginarySign(rest);
    const auto re = sign == 0 ? std::optional(0.0) : Factor(rest.substr(0, sign), format);
    const auto im = Factor(rest.substr(sign), format);
    return re && im ? std::optional(ComplexNumber{*re, *im}) : std::nullopt;
}

}  // namespace krv::formats
