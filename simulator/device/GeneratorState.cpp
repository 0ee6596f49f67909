#include "simulator/device/GeneratorState.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "common/BagContents.h"
#include "common/Error.h"

namespace krv::simulator {
namespace {

template <class Choice>
std::int16_t NumberOf(Choice choice) {
    return static_cast<std::int16_t>(choice);
}

// The settings in the order in which they stand in a block. The kinds of the values are part of
// the format.
std::vector<BagEntry> SettingsOf(Generator& generator) {
    const OutputSettings& output = generator.Output();
    const StatusRegisters& status = generator.Status();
    return {
        {"model", generator.Settings().model},
        {"frequency", output.frequencyHz},
        {"level", output.levelDbm},
        {"output", output.isOn},
        {"waveform", generator.SelectedName()},
        {"playing", generator.IsPlaying()},
        {"eventEnable", std::int16_t{status.eventEnable}},
        {"serviceRequestEnable", std::int16_t{status.serviceRequestEnable}},
        {"operationEnable", static_cast<std::int16_t>(status.operationEnable)},
        {"questionableEnable", static_cast<std::int16_t>(status.questionableEnable)},
        {"sampleClock", output.sampleClockHz},
        {"iqRoute", NumberOf(output.iqRoute)},
        {"marker1Route", NumberOf(output.markerRoutes[0])},
        {"marker2Route", NumberOf(output.markerRoutes[1])},
        {"triggerSource", NumberOf(output.triggerSource)},
        {"playsSequence", generator.PlaysSequence()},
        {"sequence", SequenceText(generator.PlayedSequence())},
    };
}

std::vector<BagEntry> Decoded(std::span<const std::byte> block) {
    try {
        return DecodeBag(block);
    } catch (const Error& error) {
        throw CommandFailure(ScpiError::InvalidBlockData, error.Description());
    }
}

// States of generators that lacked what follows end there.
constexpr std::size_t SampleClockEntry = 10;
constexpr std::size_t IqRouteEntry = 11;
constexpr std::size_t PlaysSequenceEntry = 15;
constexpr std::size_t SequenceEntry = 16;

// The state with what it lacks as it is now, but that without a sequence a waveform is played.
std::vector<BagEntry> Completed(std::vector<BagEntry> state, const std::vector<BagEntry>& present) {
    bool same = state.size() == SampleClockEntry || state.size() == IqRouteEntry ||
                state.size() == present.size();
    for (std::size_t index = 0; same && index < state.size(); ++index) {
        same = state[index].first == present[index].first &&
               state[index].second.index() == present[index].second.index();
    }
    if (!same) {
        throw CommandFailure(ScpiError::InvalidBlockData, "this is not an instrument state");
    }
    const bool lacksSequence = state.size() <= PlaysSequenceEntry;
    state.insert(state.end(), present.begin() + static_cast<std::ptrdiff_t>(state.size()),
                 present.end());
    if (lacksSequence) {
        state[PlaysSequenceEntry].second = false;
    }
    return state;
}

double Within(double value, double lowest, double highest) {
    if (!(value >= lowest && value <= highest)) {
        throw CommandFailure(ScpiError::DataOutOfRange, "a setting of the state");
    }
    return value;
}

// The enable registers of the state, and the rest as it is.
StatusRegisters WithEnables(StatusRegisters status, const std::vector<BagEntry>& state) {
    const auto enable = [&state](std::size_t entry, unsigned highest) {
        const double value = std::get<std::int16_t>(state[entry].second);
        return static_cast<unsigned>(Within(value, 0, highest));
    };
    status.eventEnable = static_cast<std::uint8_t>(enable(6, 0xFF));
    status.serviceRequestEnable =
        static_cast<std::uint8_t>(enable(7, 0xFF) & StatusRegisters::ServiceReasons);
    status.operationEnable = static_cast<std::uint16_t>(enable(8, StatusRegisters::HighestEnable));
    status.questionableEnable =
        static_cast<std::uint16_t>(enable(9, StatusRegisters::HighestEnable));
    return status;
}

template <class Choice>
Choice ChoiceIn(const BagEntry& entry, Choice last) {
    return static_cast<Choice>(Within(std::get<std::int16_t>(entry.second), 0, NumberOf(last)));
}

OutputSettings OutputIn(const std::vector<BagEntry>& state, const OutputLimits& limits) {
    const auto number = [&state](std::size_t entry, double lowest, double highest) {
        return Within(std::get<double>(state[entry].second), lowest, highest);
    };
    OutputSettings output;
    output.frequencyHz = number(1, limits.lowestFrequencyHz, limits.highestFrequencyHz);
    output.levelDbm = number(2, limits.lowestLevelDbm, limits.highestLevelDbm);
    output.isOn = std::get<bool>(state[3].second);
    output.sampleClockHz =
        number(SampleClockEntry, limits.lowestSampleClockHz, limits.highestSampleClockHz);
    output.iqRoute = ChoiceIn(state[IqRouteEntry], IqRoute::Both);
    output.markerRoutes = {ChoiceIn(state[12], MarkerRoute::Blanking),
                           ChoiceIn(state[13], MarkerRoute::Blanking)};
    output.triggerSource = ChoiceIn(state[14], TriggerSource::External);
    return output;
}

// What is played, as a state has it.
struct PlayedState {
    std::string waveform;
    Sequence sequence;
    bool playsSequence;
    bool isPlaying;
};

// Throws CommandFailure unless all of it can be played.
PlayedState PlayedIn(Generator& generator, const std::vector<BagEntry>& state) {
    PlayedState played{std::get<std::string>(state[4].second),
                       ParseSequence(std::get<std::string>(state[SequenceEntry].second)),
                       std::get<bool>(state[PlaysSequenceEntry].second),
                       std::get<bool>(state[5].second)};
    const bool isNothing = played.playsSequence ? played.sequence.empty() : played.waveform.empty();
    if (played.isPlaying && isNothing) {
        throw CommandFailure(ScpiError::InvalidBlockData, "this is not an instrument state");
    }
    if (!played.waveform.empty()) {
        static_cast<void>(generator.WaveformNamed(played.waveform));
    }
    for (const Segment& segment : played.sequence) {
        static_cast<void>(generator.WaveformNamed(segment.name));
    }
    return played;
}

}  // namespace

std::string CapturedState(Generator& generator) {
    const std::vector<std::byte> block = EncodeBag(SettingsOf(generator));
    return {reinterpret_cast<const char*>(block.data()), block.size()};
}

void RestoreState(Generator& generator, std::span<const std::byte> block) {
    const std::vector<BagEntry> present = SettingsOf(generator);
    const std::vector<BagEntry> state = Completed(Decoded(block), present);
    if (state[0].second != present[0].second) {
        throw CommandFailure(ScpiError::SettingsConflict,
                             "a state of model " + std::get<std::string>(state[0].second));
    }
    const OutputSettings output = OutputIn(state, generator.Limits());
    const StatusRegisters status = WithEnables(generator.Status(), state);
    PlayedState played = PlayedIn(generator, state);
    // Nothing of what follows can fail.
    generator.SetPlaying(false);
    generator.Select(played.waveform);
    generator.SetSequence(std::move(played.sequence));
    generator.PlaySequence(played.playsSequence);
    generator.Output() = output;
    generator.SetPlaying(played.isPlaying);
    generator.Status() = status;
}

}  // namespace krv::simulator
