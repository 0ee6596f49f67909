#include "waveform/readers/MarkerField.h"

#include <limits>
#include <string>

#include "common/Error.h"
#include "common/Text.h"

namespace krv::waveform {

std::int16_t MarkerFieldValue(std::string_view field, std::string_view text, NumberFormat format) {
    constexpr std::int16_t Largest = std::numeric_limits<std::int16_t>::max();
    const ParsedNumber number = ParseNumber(TrimBlanks(text), format);
    const std::string name = "The " + std::string(field);
    if (number.error == NumberTextError::NotNumeric) {
        throw Error(ErrorNumber::TypeMismatch, name + " is not numeric.");
    }
    const double rounded = RoundHalfEven(number.value);
    if (rounded < 0) {
        throw Error(ErrorNumber::Overflow, name + " must be a non-negative integer.");
    }
    if (number.error == NumberTextError::OutOfRange || rounded > Largest) {
        throw Error(ErrorNumber::Overflow, "Overflow:  " + name + " must not be greater than " +
                                               std::to_string(Largest) + '.');
    }
    return ToInt16(number.value);
}

}  // namespace krv::waveform
