#include "waveform/dialog/InputValidation.h"

#include <array>
#include <cmath>
#include <limits>

#include "common/Text.h"
#include "waveform/data/DownloadPlan.h"

namespace krv::waveform {
namespace {

constexpr double LargestLong = 2147483647.0;

struct Rule {
    bool (*fails)(const DownloadInputs&);
    std::string_view message;
    // Said instead where the I source holds I and Q interleaved.
    std::string_view interleavedMessage;
};

bool IsEmpty(std::string_view text) {
    return TrimBlanks(text).empty();
}

bool IsNoNumber(std::string_view text, const DownloadInputs& inputs) {
    return !FieldNumber(text, inputs.numberFormat).has_value();
}

// The rules on values come after those on being numeric: what is no number has failed before.
double ValueOf(std::string_view text, const DownloadInputs& inputs) {
    return FieldNumber(text, inputs.numberFormat).value_or(0);
}

bool IsNoPointCount(std::string_view text, const DownloadInputs& inputs) {
    const double value = ValueOf(text, inputs);
    return value < 0 || value > LargestLong || value != RoundHalfEven(value);
}

constexpr std::array FileRules{
    Rule{[](const DownloadInputs& in) { return IsEmpty(in.iFileName); },
         "No File Name specified for I-Data.", "No File Name specified for the I and Q Data."},
    Rule{[](const DownloadInputs& in) { return !in.iFileExists; },
         "Invalid File Name specified for I-Data.",
         "Invalid File Name specified for I and Q Data."},
    Rule{[](const DownloadInputs& in) { return in.useQData && !in.qFileExists; },
         "Invalid File Name speicifed for Q-Data.",
         {}},
};

constexpr std::array RangeRules{
    Rule{[](const DownloadInputs& in) { return IsEmpty(in.iRange); },
         "No Data Range specified for I-Data.", "No Data Range specified for I and Q Data."},
    Rule{[](const DownloadInputs& in) { return IsNoNumber(in.iNumberPoints, in); },
         "Invalid Data Range specified for I-Data.",
         "Invalid Data Range specified for I and Q Data"},
    Rule{[](const DownloadInputs& in) { return in.useQData && IsNoNumber(in.qNumberPoints, in); },
         "Invalid Data Range specified for Q-Data.",
         {}},
};

constexpr std::array ScaleRules{
    Rule{[](const DownloadInputs& in) { return IsNoNumber(in.scaleFactor, in); },
         ScaleFactor::NotNumeric,
         {}},
    Rule{[](const DownloadInputs& in) {
             return std::abs(ValueOf(in.scaleFactor, in)) > ScaleFactor::LargestMagnitude;
         },
         ScaleFactor::TooLarge,
         {}},
};

constexpr std::array MarkerPulseRules{
    Rule{[](const DownloadInputs& in) { return IsNoNumber(in.markerStart, in); },
         "The Event Marker Starting Point is not numeric.",
         {}},
    Rule{[](const DownloadInputs& in) { return IsNoPointCount(in.markerStart, in); },
         "The Event Marker Starting Point must be a non-negative integer.",
         {}},
    Rule{[](const DownloadInputs& in) { return IsNoNumber(in.markerLength, in); },
         "The Event Marker Number of Points is not numeric.",
         {}},
    Rule{[](const DownloadInputs& in) { return IsNoPointCount(in.markerLength, in); },
         "The Event Marker Number of Points must be a non-negative integer.",
         {}},
    Rule{[](const DownloadInputs& in) {
             return LargestLong - ValueOf(in.markerLength, in) < ValueOf(in.markerStart, in);
         },
         "The Event Marker Starting Point plus the Event Marker Number of Points must be a "
         "non-negative integer.",
         {}},
};

template <class Rules>
std::string_view FirstFailure(const Rules& rules, const DownloadInputs& inputs) {
    for (const Rule& rule : rules) {
        if (rule.fails(inputs)) {
            const bool interleaved = inputs.iqInterleaved && !inputs.useQData;
            const bool own = interleaved && !rule.interleavedMessage.empty();
            return own ? rule.interleavedMessage : rule.message;
        }
    }
    return {};
}

// The scale factor of a spreadsheet waveform is tested only where the two pages' types disagree.
bool TestsScaleFactor(const DownloadInputs& inputs) {
    return inputs.waveformType < 1 ? inputs.fileSource
                                   : !inputs.fileSource && inputs.waveformTypeSS < 1;
}

// The file page's type alone decides, whatever the source.
bool TestsMarkerPulse(const DownloadInputs& inputs) {
    return inputs.waveformType < 1 && !inputs.markerFromFile;
}

}  // namespace

std::optional<double> FieldNumber(std::string_view text, NumberFormat format) {
    const ParsedNumber number = ParseNumber(TrimBlanks(text), format);
    switch (number.error) {
        case NumberTextError::None:
            return number.value;
        case NumberTextError::OutOfRange:
            return std::numeric_limits<double>::infinity();
        default:
            return std::nullopt;
    }
}

std::string_view FirstInputFailure(const DownloadInputs& inputs) {
    std::string_view failure =
        inputs.fileSource ? FirstFailure(FileRules, inputs) : FirstFailure(RangeRules, inputs);
    if (failure.empty() && TestsScaleFactor(inputs)) {
        failure = FirstFailure(ScaleRules, inputs);
    }
    if (failure.empty() && TestsMarkerPulse(inputs)) {
        failure = FirstFailure(MarkerPulseRules, inputs);
    }
    return failure;
}

}  // namespace krv::waveform
