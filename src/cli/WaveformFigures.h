// WaveformFigures: the figures of an imported waveform, as lines of text and as JSON.
#pragma once

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>

#include "analysis/Measures.h"
#include "analysis/Signal.h"
#include "formats/Import.h"

namespace krv::cli {

// The waveform as shares of full scale.
[[nodiscard]] analysis::Signal SignalOf(std::shared_ptr<const formats::ImportedWaveform> waveform);

struct WaveformFigures {
    std::size_t points = 0;
    std::optional<double> sampleRate;
    analysis::Measures measures;
    // Holds 99 % of the power; a share of the sample rate.
    double occupiedShare = 0;
};
[[nodiscard]] WaveformFigures FiguresOf(const analysis::Signal& signal);

void PrintFigures(const WaveformFigures& figures, std::ostream& out);
[[nodiscard]] nlohmann::ordered_json FiguresJson(const WaveformFigures& figures);

}  // namespace krv::cli
