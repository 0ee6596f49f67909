#include "cli/Summary.h"

#include <ostream>

#include "waveform/data/ModelFamily.h"

namespace krv::cli {
namespace {

bool HoldsPairs(const FinishedRun& run) {
    return waveform::IsSentInterleaved(run.model) && !run.dialog.UseQData;
}

std::string From(const std::string& file) {
    return file.empty() ? "\n" : " from " + file + '\n';
}

void PrintData(const FinishedRun& run, std::ostream& out) {
    const waveform::frmDataTransfer& dialog = run.dialog;
    const std::size_t values = dialog.Codes.i.Size();
    if (HoldsPairs(run)) {
        out << "I and Q data: " << values / 2 << " points";
    } else {
        out << "I data:       " << values << " points";
    }
    out << From(dialog.TextIFileName.Text);
    if (dialog.UseQData) {
        out << "Q data:       " << dialog.Codes.q.Size() << " points"
            << From(dialog.TextQFileName.Text);
    }
}

void PrintMarkers(const FinishedRun& run, std::ostream& out) {
    const waveform::frmDataTransfer& dialog = run.dialog;
    out << "Markers:      " << dialog.Codes.markers.Size() << " values";
    const std::string file = dialog.chkMarkerSource.Value ? dialog.TextMarker.Text.Get() : "";
    out << (file.empty() ? "" : " from " + file);
    const bool isSent = run.arguments.command != WaveformCommand::Convert;
    out << (isSent && !waveform::IsSentInterleaved(run.model)
                ? ", not sent: the " + run.model + " takes no markers\n"
                : "\n");
}

// The value behind the marker pulse; 0 without a pulse.
int PulseEnd(const FinishedRun& run) {
    const waveform::MarkerPulse& pulse = run.dialog.Data.pulse;
    return run.dialog.chkMarkerSource.Value || pulse.length == 0 ? 0 : pulse.start + pulse.length;
}

}  // namespace

void PrintSummary(const FinishedRun& run, std::ostream& out) {
    const waveform::DacCodes& codes = run.dialog.Codes;
    PrintData(run, out);
    PrintMarkers(run, out);
    out << "Codes:        " << codes.smallest << " to " << codes.largest
        << (codes.isNewModel ? ", 16-bit\n" : ", 14-bit offset binary\n");
    switch (run.arguments.command) {
        case WaveformCommand::Check:
            out << "Valid for:    " << run.model << '\n';
            break;
        case WaveformCommand::Download:
            out << "Written to:   " << run.dialog.LastRun.destinationName << " in the " << run.model
                << (run.hasReplaced ? ", in place of an earlier waveform\n" : "\n");
            if (run.played) {
                out << "Playing:      "
                    << (run.played->isWaiting ? "when the instrument is triggered" : "yes")
                    << (run.played->isOutputOn ? "\n" : ", the RF output is off\n");
            }
            break;
        case WaveformCommand::Convert:
            out << "Written to:   " << run.arguments.outputFolder << ", for the " << run.model
                << '\n';
            break;
    }
}

std::vector<std::string> WarningsOf(const FinishedRun& run) {
    const waveform::frmDataTransfer& dialog = run.dialog;
    const std::size_t values = dialog.Codes.i.Size();
    std::vector<std::string> warnings;
    if (run.arguments.waveformType == waveform::WaveformTypeIndex::Internal16 && !dialog.UseQData &&
        !waveform::IsSentInterleaved(run.model)) {
        warnings.push_back("The " + run.model +
                           " takes I and Q in separate arrays: every value counts as I data.");
    }
    const std::size_t markers = dialog.Codes.markers.Size();
    const std::size_t markable = run.isImported && HoldsPairs(run) ? values / 2 : values;
    if (dialog.chkMarkerSource.Value && markers != markable) {
        warnings.push_back("The marker file holds " + std::to_string(markers) +
                           " values, the I file " + std::to_string(markable) + '.');
    }
    if (static_cast<std::size_t>(PulseEnd(run)) > values) {
        warnings.push_back("The marker pulse extends past the last of " + std::to_string(values) +
                           " values.");
    }
    return warnings;
}

}  // namespace krv::cli
