#include "waveform/readers/MarkerPulse.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <string>
#include <utility>

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

InternalValues BuildMarkerPulse(std::int16_t start, std::int16_t length, std::int32_t count) {
    if (start < 0 || length < 0 || count < 0) {
        throw Error(ErrorNumber::SubscriptOutOfRange);
    }
    const std::size_t size = static_cast<std::size_t>(count) + 1;
    // Fresh pages read as zero, so only the pulse itself is written.
    SampleBuffer<std::int16_t> markers(size);
    markers.Resize(size);
    const std::size_t first = std::min(static_cast<std::size_t>(start), size);
    const auto pulse =
        markers.Span().subspan(first, std::min(static_cast<std::size_t>(length), size - first));
    std::ranges::fill(pulse, std::int16_t{1});
    const CodeRange range{static_cast<std::int16_t>(pulse.size() == size ? 1 : 0),
                          static_cast<std::int16_t>(pulse.empty() ? 0 : 1)};
    return {SharedCodes(std::move(markers)), false, range};
}

}  // namespace krv::waveform
