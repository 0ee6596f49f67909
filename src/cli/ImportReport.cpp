#include "cli/ImportReport.h"

namespace krv::cli {

ImportReport ReportOf(const formats::ImportedWaveform& waveform) {
    return {waveform.format, waveform.Points(), waveform.sampleRate, waveform.fullScale,
            waveform.peak,   waveform.done,     waveform.warnings};
}

nlohmann::ordered_json ImportJson(const ImportReport& report) {
    return {
        {"format", report.format},
        {"points", report.points},
        {"sampleRate", report.sampleRate ? nlohmann::ordered_json(*report.sampleRate) : nullptr},
        {"fullScale", report.fullScale},
        {"peak", report.peak},
        {"done", report.done},
        {"warnings", report.warnings}};
}

}  // namespace krv::cli
