// The fetch step of a run, which decides what must be read again and reads it.
#pragma once

#include "waveform/data/Channel.h"
#include "waveform/data/DownloadPlan.h"
#include "waveform/data/RunServices.h"

namespace krv::waveform {

// Brings the data up to what the plan needs. True when all of it is there. A failure has been shown
// to the user, a cancel has not; in both cases nothing that failed is marked loaded, and what was
// loaded before from other files stays.
[[nodiscard]] bool FetchWaveformData(const DownloadPlan& plan, const RunServices& services,
                                     WaveformData& data);

}  // namespace krv::waveform
