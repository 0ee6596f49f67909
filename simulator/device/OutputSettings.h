// What the generator puts out, besides waveforms.
#pragma once

namespace krv::simulator {

struct OutputSettings {
    double frequencyHz = 1e9;
    double levelDbm = -20;
    bool isOn = false;
    // How many points of a waveform are played in a second.
    double sampleClockHz = 100e6;
};

namespace OutputLimit {
inline constexpr double LowestFrequencyHz = 250e3;
inline constexpr double HighestFrequencyHz = 20e9;
inline constexpr double LowestLevelDbm = -136;
inline constexpr double HighestLevelDbm = 25;
inline constexpr double LowestSampleClockHz = 1;
inline constexpr double HighestSampleClockHz = 100e6;
}  // namespace OutputLimit

}  // namespace krv::simulator
