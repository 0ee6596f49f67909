// InstrumentPanel: what a user otherwise does at the instrument's front panel, by commands: set the
// output, play waveforms, manage the waveform memory.
//
// Each member waits for the instrument. It throws Error when the connection fails, and with the
// instrument's own errors when the instrument refuses.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "suite/scpi/ScpiReply.h"

namespace krv::suite {

class ScpiInstrument;

// What the instrument does with its waveforms.
struct PlayState {
    // It plays, or waits for the trigger that playing begins with.
    bool isOn = false;
    bool isWaiting = false;
    // What plays in place of the selected waveform, e.g. "Sync*1,Data*20"; empty for nothing.
    std::string sequence;
};

class InstrumentPanel {
 public:
    explicit InstrumentPanel(std::shared_ptr<ScpiInstrument> instrument)
        : m_instrument(std::move(instrument)) {}

    // In hertz.
    [[nodiscard]] double Frequency();
    void SetFrequency(double hertz);
    // In dBm.
    [[nodiscard]] double Level();
    void SetLevel(double dBm);
    // Points a second.
    [[nodiscard]] double SampleClock();
    void SetSampleClock(double hertz);
    [[nodiscard]] bool IsOutputOn();
    void SwitchOutput(bool on);

    // An instrument that knows no triggers or sequences has none.
    [[nodiscard]] PlayState Playing();
    // The waveform is a part of the sequence that plays.
    [[nodiscard]] bool PlaysInSequence(const std::string& name);
    // Selects the waveform and plays it.
    void Play(const std::string& name);
    // The waveform stays selected.
    void Stop();
    // Stops playing, and selects none.
    void Deselect();

    [[nodiscard]] MemoryContent Memory();
    void Delete(const std::string& name);
    // A waveform of the copy's name is replaced.
    void Copy(const std::string& name, const std::string& copyName);
    void Rename(const std::string& name, const std::string& newName);

 private:
    [[nodiscard]] double AskNumber(const std::string& query);
    [[nodiscard]] bool AskSwitch(const std::string& query);
    // Empty where the instrument refuses the query.
    [[nodiscard]] std::string AskIfKnown(const std::string& query);

    std::shared_ptr<ScpiInstrument> m_instrument;
};

}  // namespace krv::suite
