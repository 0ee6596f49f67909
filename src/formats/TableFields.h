// The fields of a table's line, and the numbers in them.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "common/Numbers.h"

namespace krv::formats {

// Between the fields; a blank stands for any number of blanks and tabs.
enum class Separator : char { Blanks = ' ', Tab = '\t', Comma = ',', Semicolon = ';' };

// Takes the next field off the line, without blanks and quotes around it. A separator within
// parentheses or quotes belongs to the field. False at the line's end.
[[nodiscard]] bool TakeField(std::string_view& line, Separator separator, std::string_view& field);

// All fields; the empty one behind a last separator is none.
[[nodiscard]] std::vector<std::string_view> FieldsOf(std::string_view line, Separator separator);

// The separator that a line of values has.
[[nodiscard]] Separator SeparatorOf(std::string_view line) noexcept;

// How numbers are written between such: a decimal comma needs another separator.
[[nodiscard]] NumberFormat NumbersBetween(Separator separator) noexcept;
[[nodiscard]] bool IsRealNumber(std::string_view field, NumberFormat format);

struct ComplexNumber {
    double re = 0;
    double im = 0;
};
// "1+2i", "(1+2j)", "(1,2)", "i", "-2.5e-3j", with blanks anywhere between; nothing for any other
// text, a real number included.
[[nodiscard]] std::optional<ComplexNumber> ParseComplex(std::string_view text, NumberFormat format);

[[nodiscard]] std::string_view TrimWhite(std::string_view text) noexcept;

}  // namespace krv::formats
