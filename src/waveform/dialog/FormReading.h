// What the download dialog's fields hold when a run starts, for the validation and for the run.
#pragma once

#include <string>

#include "waveform/data/DownloadPlan.h"
#include "waveform/dialog/InputValidation.h"

namespace krv::waveform {

class frmDataTransfer;

[[nodiscard]] SourceKind SourceOf(const frmDataTransfer& dialog);

// What the I values are read from, in short: the file's name without its folder, or the range.
[[nodiscard]] std::string SourceName(const frmDataTransfer& dialog);

// Needs the dialog's IQInterleaved and UseQData.
[[nodiscard]] DownloadInputs ReadInputs(const frmDataTransfer& dialog);

// The fields have passed the validation.
[[nodiscard]] DownloadPlan ReadPlan(const frmDataTransfer& dialog, RunMode mode,
                                    InstrumentInUse instrument);

}  // namespace krv::waveform
