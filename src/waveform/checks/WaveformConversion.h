// The check step of a run, from raw values or cells to DAC codes.
#pragma once

#include <optional>

#include "waveform/data/Channel.h"
#include "waveform/data/DacCodes.h"
#include "waveform/data/DownloadPlan.h"
#include "waveform/data/RunServices.h"

namespace krv::waveform {

// The codes, which share the memory of values that are codes already. Nothing for a violated rule,
// a bad value, a declined warning or a cancel; all but a cancel have been shown to the user.
[[nodiscard]] std::optional<DacCodes> CheckAndConvertWaveform(const DownloadPlan& plan,
                                                              const WaveformData& data,
                                                              const RunServices& services);

}  // namespace krv::waveform
