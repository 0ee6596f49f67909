// What the generator puts out, besides waveforms.
#pragma once

namespace krv::simulator {

struct OutputSettings {
    double frequencyHz = 1e9;
    double levelDbm = -20;
    bool isOn = false;
};

namespace OutputLimit {
inline constexpr double LowestFrequencyHz = 250e3;
inline constexpr double HighestFrequencyHz = 20e9;
inline constexpr double LowestLevelDbm = -136;
inline constexpr double HighestLevelDbm = 25;
}  // namespace OutputLimit

}  // namespace krv::simulator
