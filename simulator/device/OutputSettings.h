// What the generator puts out, besides waveforms, and how far a model can go.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace krv::simulator {

// Where I and Q go: to the modulator, to the outputs at the back, or to both.
enum class IqRoute : std::uint8_t { Modulator, Output, Both };
// What a marker does: nothing, a pulse at an output, or blanking the RF output.
enum class MarkerRoute : std::uint8_t { None, Event1, Event2, Blanking };
// What a waveform waits for before it is played: nothing, *TRG, or the Trigger key.
enum class TriggerSource : std::uint8_t { Immediate, Bus, External };

inline constexpr std::size_t MarkerCount = 2;

struct OutputLimits {
    double lowestFrequencyHz;
    double highestFrequencyHz;
    double lowestLevelDbm;
    double highestLevelDbm;
    double lowestSampleClockHz;
    double highestSampleClockHz;
};

// Of one of suite::SupportedModels.
[[nodiscard]] const OutputLimits& OutputLimitsOf(std::string_view model) noexcept;

struct OutputSettings {
    double frequencyHz = 1e9;
    double levelDbm = -20;
    bool isOn = false;
    // How many points of a waveform are played in a second.
    double sampleClockHz = 100e6;
    IqRoute iqRoute = IqRoute::Modulator;
    std::array<MarkerRoute, MarkerCount> markerRoutes{MarkerRoute::Event1, MarkerRoute::Event2};
    TriggerSource triggerSource = TriggerSource::Immediate;
};

}  // namespace krv::simulator
