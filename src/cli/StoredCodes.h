// The codes that an instrument holds, as it sends them back.
#pragma once

#include <optional>
#include <string>

#include "ports/suite/WaveformReadback.h"
#include "suite/scpi/ScpiInstrument.h"
#include "waveform/data/DacCodes.h"

namespace krv::cli {

// I, Q and markers of a waveform whose sizes and checksums the instrument has told. Throws Error
// where what comes isn't that, and std::bad_alloc.
[[nodiscard]] waveform::DacCodes FetchCodes(suite::ScpiInstrument& instrument,
                                            const std::string& name,
                                            const ports::StoredWaveform& stored);

// In hertz; nothing where the instrument's answer is no frequency.
[[nodiscard]] std::optional<double> SampleClockOf(suite::ScpiInstrument& instrument);

}  // namespace krv::cli
