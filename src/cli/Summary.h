// What the command line prints of a run that has succeeded.
#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "cli/Arguments.h"
#include "cli/DownloadDestination.h"
#include "waveform/dialog/frmDataTransfer.h"

namespace krv::cli {

struct FinishedRun {
    const WaveformArguments& arguments;
    const waveform::frmDataTransfer& dialog;
    // Of the instrument, or the one converted for; blanks trimmed.
    std::string model;
    // The instrument held a waveform of the destination's name before.
    bool hasReplaced = false;
    // The dialog's files are made of an imported one: markers count its points.
    bool isImported = false;
    // Once the waveform plays.
    std::optional<PlayOutcome> played;
};

// The lines of the summary. A point is a pair of I and Q values.
void PrintSummary(const FinishedRun& run, std::ostream& out);

// Sentences about what the user may not have meant.
[[nodiscard]] std::vector<std::string> WarningsOf(const FinishedRun& run);

}  // namespace krv::cli
