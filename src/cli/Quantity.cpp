#include "cli/Quantity.h"

#include <array>
#include <span>

#include "cli/ExitCode.h"
#include "common/Text.h"

namespace krv::cli {
namespace {

struct Unit {
    std::string_view name;
    double factor;
};

// The largest first; the last one is meant where none is written.
constexpr std::array<Unit, 4> FrequencyUnits{{{"GHz", 1e9}, {"MHz", 1e6}, {"kHz", 1e3}, {"Hz", 1}}};
constexpr std::array<Unit, 1> LevelUnits{{{"dBm", 1}}};

double Parse(std::string_view option, std::string_view text, std::span<const Unit> units,
             std::string_view example, NumberFormat format) {
    std::string_view digits = TrimBlanks(text);
    double factor = 1;
    for (const Unit& unit : units) {
        if (digits.size() > unit.name.size() &&
            UpperCase(digits.substr(digits.size() - unit.name.size())) == UpperCase(unit.name)) {
            digits = TrimBlanks(digits.substr(0, digits.size() - unit.name.size()));
            factor = unit.factor;
            break;
        }
    }
    const ParsedNumber number = ParseNumber(digits, format);
    if (number.error != NumberTextError::None) {
        throw UsageError(std::string(option) +
                         " takes a number with or without a unit, for example " +
                         std::string(example) + ", not \"" + std::string(text) + "\".");
    }
    return number.value * factor;
}

}  // namespace

double ParseFrequency(std::string_view option, std::string_view text, NumberFormat format) {
    return Parse(option, text, FrequencyUnits, "2.4GHz", format);
}

double ParseLevel(std::string_view option, std::string_view text, NumberFormat format) {
    return Parse(option, text, LevelUnits, "-10dBm", format);
}

std::string FrequencyText(double hertz) {
    const Unit* fitting = &FrequencyUnits.back();
    for (const Unit& unit : FrequencyUnits) {
        if (hertz >= unit.factor) {
            fitting = &unit;
            break;
        }
    }
    return NumberToText(hertz / fitting->factor) + ' ' + std::string(fitting->name);
}

}  // namespace krv::cli
