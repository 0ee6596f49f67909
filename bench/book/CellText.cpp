#include "bench/book/CellText.h"

#include <array>
#include <charconv>
#include <type_traits>

#include "common/Numbers.h"
#include "common/Text.h"

namespace krv::bench {
namespace {

struct ErrorName {
    std::string_view text;
    std::int32_t code;
};
constexpr std::array<ErrorName, 7> ErrorNames{{{"#NULL!", CellError::Null},
                                               {"#DIV/0!", CellError::DivisionByZero},
                                               {"#VALUE!", CellError::WrongValue},
                                               {"#REF!", CellError::Reference},
                                               {"#NAME?", CellError::Name},
                                               {"#NUM!", CellError::Number},
                                               {"#N/A", CellError::NotAvailable}}};

// Currency counts ten-thousandths.
constexpr double CurrencyUnit = 10000;

std::string TextOfError(std::int32_t code) {
    for (const ErrorName& name : ErrorNames) {
        if (name.code == code) {
            return std::string(name.text);
        }
    }
    return "#ERROR " + std::to_string(code);
}

// Dates and currencies as the numbers that they stand for.
Value PlainValue(const Value& value) {
    if (const auto* date = std::get_if<DateValue>(&value)) {
        return date->days;
    }
    if (const auto* currency = std::get_if<CurrencyValue>(&value)) {
        return static_cast<double>(currency->tenThousandths) / CurrencyUnit;
    }
    return value;
}

std::string ShortestText(double number) {
    std::array<char, 32> buffer;
    const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
    return UpperCase({buffer.data(), static_cast<std::size_t>(written.ptr - buffer.data())});
}

}  // namespace

Value ParseCellText(std::string_view text) {
    const std::string_view trimmed = TrimBlanks(text);
    const ParsedNumber number = ParseNumber(trimmed, {});
    if (number.error == NumberTextError::None) {
        return number.value;
    }
    if (text.empty()) {
        return EmptyValue{};
    }
    if (text.front() == '\'') {
        return std::string(text.substr(1));
    }
    if (EqualIgnoringCase(trimmed, "TRUE") || EqualIgnoringCase(trimmed, "FALSE")) {
        return EqualIgnoringCase(trimmed, "TRUE");
    }
    for (const ErrorName& name : ErrorNames) {
        if (trimmed == name.text) {
            return ErrorCodeValue{name.code};
        }
    }
    return std::string(text);
}

std::string CellText(const Value& value) {
    return std::visit(
        [](const auto& held) -> std::string {
            using Held = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<Held, bool>) {
                return held ? "TRUE" : "FALSE";
            } else if constexpr (std::is_same_v<Held, std::string>) {
                return held;
            } else if constexpr (std::is_same_v<Held, ErrorCodeValue>) {
                return TextOfError(held.code);
            } else if constexpr (std::is_arithmetic_v<Held>) {
                return NumberToText(static_cast<double>(held));
            } else {
                return {};  // nothing, or an array, which no cell holds
            }
        },
        PlainValue(value));
}

std::string CellEntry(const Value& value) {
    const Value plain = PlainValue(value);
    if (const auto* number = std::get_if<double>(&plain)) {
        return ShortestText(*number);
    }
    if (const auto* text = std::get_if<std::string>(&plain)) {
        const bool isPlainText = ParseCellText(*text) == plain;
        return isPlainText ? *text : "'" + *text;
    }
    return CellText(plain);
}

}  // namespace krv::bench
