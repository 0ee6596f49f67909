// RunFixture: the steps of a run with a plan, data and codes that a test fills itself, on a real
// progress dialog and doubles of everything else.
#pragma once

#include <cstdint>
#include <string>

#include "tests/support/FakeExcel.h"
#include "tests/waveform/RunJournal.h"
#include "tests/waveform/Values.h"
#include "waveform/data/Channel.h"
#include "waveform/data/DacCodes.h"
#include "waveform/data/DownloadPlan.h"
#include "waveform/data/RunRecord.h"
#include "waveform/data/RunServices.h"
#include "waveform/run/Connection.h"

namespace krv::tests {

class RunFixture : public RunJournal, private waveform::RunUser {
 protected:
    const ports::Desktop platform = desktop.Services();
    FakeExcel excel;
    progress::frmCallback dialog{desktop.Screen, desktop.Screen};
    waveform::RunProgress rows{dialog};
    waveform::RunServices services{platform, rows, *this, &excel};
    waveform::DownloadPlan plan;
    waveform::WaveformData data;
    waveform::DacCodes codes;
    waveform::RunRecord record;
    // The counts of the channels that were read, e.g. "I3 Q2 ".
    std::string counts;

    RunFixture() {
        Connect("M7718C");
        plan.destination = "WAVE";
        dialog.ShowModeless();
        Watch(dialog);
    }

    // Asks for the model as a run does.
    void Connect(const std::string& model) {
        server->InstrumentModel = model;
        plan.instrument = waveform::TakeInstrument(server);
    }
    void CancelAt(int poll) { CancelAtPoll(poll, dialog); }

    ports::MessageAnswer Tell(const std::string& text, ports::MessageIcon icon,
                              ports::MessageButtons buttons) override {
        return platform.messageBoxes.Show({text, "Download", icon, buttons});
    }
    void ShowCount(waveform::ChannelRole channel, std::int32_t count) override {
        counts += "IQM"[static_cast<std::size_t>(channel)] + std::to_string(count) + ' ';
    }
    void CouldNotRead(const std::string& file) override { counts += "not " + file + ' '; }
    void FilesChanged() override { counts += "changed "; }
};

}  // namespace krv::tests
