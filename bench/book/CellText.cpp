#include "bench/book/CellText.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <type_traits>

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

// Year, month and day of a day number that counts from 1899-12-30, by way of the calendar's
// 400-year cycle that begins on the first of March.
std::string TextOfDate(double date) {
    constexpr std::int64_t DaysTo1899 = 693899;
    constexpr std::int64_t DaysOfCycle = 146097;
    constexpr int SecondsOfDay = 86400;
    // Whole seconds, so that the last instant of a day doesn't show as the day's hour 24.
    const auto seconds = static_cast<std::int64_t>(std::llround(date * SecondsOfDay));
    const std::int64_t days = DaysTo1899 + seconds / SecondsOfDay - (seconds % SecondsOfDay < 0);
    const std::int64_t ofDay = (seconds % SecondsOfDay + SecondsOfDay) % SecondsOfDay;
    const std::int64_t cycle = (days >= 0 ? days : days - DaysOfCycle + 1) / DaysOfCycle;
    const std::int64_t ofCycle = days - cycle * DaysOfCycle;
    const std::int64_t year = (ofCycle - ofCycle / 1460 + ofCycle / 36524 - ofCycle / 146096) / 365;
    const std::int64_t ofYear = ofCycle - (365 * year + year / 4 - year / 100);
    const std::int64_t month = (5 * ofYear + 2) / 153;
    const std::int64_t day = ofYear - (153 * month + 2) / 5 + 1;
    const bool nextYear = month >= 10;
    std::array<char, 64> text;
    const auto number = [](std::int64_t value) { return static_cast<int>(value); };
    std::snprintf(
        text.data(), text.size(), ofDay == 0 ? "%04d-%02d-%02d" : "%04d-%02d-%02d %02d:%02d:%02d",
        number(cycle * 400 + year + (nextYear ? 1 : 0)), number(nextYear ? month - 9 : month + 3),
        number(day), number(ofDay / 3600), number(ofDay / 60 % 60), number(ofDay % 60));
    return text.data();
}

std::string ShortestText(double number) {
    std::array<char, 32> buffer;
    const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
    return UpperCase({buffer.data(), static_cast<std::size_t>(written.ptr - buffer.data())});
}

}  // namespace

Value ParseCellText(std::string_view text, NumberFormat format) {
    const std::string_view trimmed = TrimBlanks(text);
    const ParsedNumber number = ParseNumber(trimmed, format);
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
            } else if constexpr (std::is_same_v<Held, DateValue>) {
                return TextOfDate(held.days);
            } else if constexpr (std::is_same_v<Held, CurrencyValue>) {
                return NumberToText(static_cast<double>(held.tenThousandths) / CurrencyUnit);
            } else if constexpr (std::is_arithmetic_v<Held>) {
                return NumberToText(static_cast<double>(held));
            } else {
                return {};  // nothing, or an array, which no cell holds
            }
        },
        value);
}

std::string CellEntry(const Value& value, NumberFormat format) {
    const Value plain = PlainValue(value);
    if (const auto* number = std::get_if<double>(&plain)) {
        return ShortestText(*number);
    }
    if (const auto* text = std::get_if<std::string>(&plain)) {
        const bool isPlainText = ParseCellText(*text, format) == plain;
        return isPlainText ? *text : "'" + *text;
    }
    return CellText(plain);
}

Value PlainValue(const Value& value) {
    if (const auto* date = std::get_if<DateValue>(&value)) {
        return date->days;
    }
    if (const auto* currency = std::get_if<CurrencyValue>(&value)) {
        return static_cast<double>(currency->tenThousandths) / CurrencyUnit;
    }
    return value;
}

}  // namespace krv::bench
