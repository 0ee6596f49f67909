// WaveformFigures: an imported waveform as what is measured and drawn, and its figures as JSON.
#pragma once

#include <memory>
#include <nlohmann/json.hpp>

#include "analysis/Figures.h"
#include "analysis/Signal.h"
#include "formats/Import.h"

namespace krv::cli {

// The waveform as shares of full scale.
[[nodiscard]] analysis::Signal SignalOf(std::shared_ptr<const formats::ImportedWaveform> waveform);

[[nodiscard]] nlohmann::ordered_json FiguresJson(const analysis::Figures& figures);

}  // namespace krv::cli
