// The rules that the dialog's fields must pass before a run reads anything.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "common/Numbers.h"

namespace krv::waveform {

// The fields as they stand when a run starts; texts as typed.
struct DownloadInputs {
    bool fileSource = true;
    // The connected model takes I and Q interleaved in one source.
    bool iqInterleaved = false;
    // A separate Q source takes part.
    bool useQData = false;
    std::string iFileName;
    bool iFileExists = false;
    bool qFileExists = false;
    std::string iRange;
    // What the count boxes of the ranges read: a number, "Error" or nothing.
    std::string iNumberPoints;
    std::string qNumberPoints;
    // List indexes of the two waveform type boxes.
    int waveformType = 0;
    int waveformTypeSS = 0;
    std::string scaleFactor;
    bool markerFromFile = false;
    std::string markerStart;
    std::string markerLength;
    NumberFormat numberFormat;
};

// Nothing for what is no number; infinity for a number beyond the double range, which every limit
// then refuses.
[[nodiscard]] std::optional<double> FieldNumber(std::string_view text, NumberFormat format);

// The message of the first rule that fails; empty when all pass.
[[nodiscard]] std::string_view FirstInputFailure(const DownloadInputs& inputs);

}  // namespace krv::waveform
