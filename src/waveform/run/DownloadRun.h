// DownloadRun: the order of steps and messages of a run, inside the progress dialog's activation.
//
// A step that fails or is cancelled ends the run; it has shown why. What the instrument or the
// connection throws goes on to the caller as Error.
#pragma once

#include "waveform/data/Channel.h"
#include "waveform/data/DacCodes.h"
#include "waveform/data/DownloadPlan.h"
#include "waveform/data/RunRecord.h"
#include "waveform/data/RunServices.h"

namespace krv::waveform {

// What a run works on and leaves behind. The codes of an earlier run are given back first.
struct RunResults {
    WaveformData& data;
    DacCodes& codes;
    RunRecord& record;
};

// Sets up both rows of the progress dialog, before the fields are validated.
void BeginRun(SourceKind source, RunMode mode, RunProgress& progress);

class DownloadRun {
 public:
    // All of these outlive the run.
    DownloadRun(const DownloadPlan& plan, const RunServices& services, const RunResults& results)
        : m_plan(plan), m_services(services), m_results(results) {}

    // The steps after the validation of the fields; true when the run reached the end of its mode.
    [[nodiscard]] bool Run();

 private:
    [[nodiscard]] bool Prepare();
    [[nodiscard]] bool CheckDualArbOption();
    [[nodiscard]] bool Download();

    const DownloadPlan& m_plan;
    const RunServices& m_services;
    RunResults m_results;
};

}  // namespace krv::waveform
