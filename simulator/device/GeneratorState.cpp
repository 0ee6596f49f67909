#include "simulator/device/GeneratorState.h"

#include "common/BagContents.h"
#include "common/Error.h"

namespace krv::simulator {
namespace {

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
    };
}

std::vector<BagEntry> Decoded(std::span<const std::byte> block) {
    try {
        return DecodeBag(block);
    } catch (const Error& error) {
        throw CommandFailure(ScpiError::InvalidBlockData, error.Description());
    }
}

// States of generators without a sample clock end before it.
constexpr std::size_t SampleClockEntry = 10;

void RequireSameShape(const std::vector<BagEntry>& state, std::span<const BagEntry> expected) {
    if (state.size() == SampleClockEntry) {
        expected = expected.first(SampleClockEntry);
    }
    bool same = state.size() == expected.size();
    for (std::size_t index = 0; same && index < expected.size(); ++index) {
        same = state[index].first == expected[index].first &&
               state[index].second.index() == expected[index].second.index();
    }
    if (!same) {
        throw CommandFailure(ScpiError::InvalidBlockData, "this is not an instrument state");
    }
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

}  // namespace

std::string CapturedState(Generator& generator) {
    const std::vector<std::byte> block = EncodeBag(SettingsOf(generator));
    return {reinterpret_cast<const char*>(block.data()), block.size()};
}

void RestoreState(Generator& generator, std::span<const std::byte> block) {
    const std::vector<BagEntry> state = Decoded(block);
    const std::vector<BagEntry> present = SettingsOf(generator);
    RequireSameShape(state, present);
    if (state[0].second != present[0].second) {
        throw CommandFailure(ScpiError::SettingsConflict,
                             "a state of model " + std::get<std::string>(state[0].second));
    }
    const OutputSettings output{
        Within(std::get<double>(state[1].second), OutputLimit::LowestFrequencyHz,
               OutputLimit::HighestFrequencyHz),
        Within(std::get<double>(state[2].second), OutputLimit::LowestLevelDbm,
               OutputLimit::HighestLevelDbm),
        std::get<bool>(state[3].second),
        Within(std::get<double>(
                   (state.size() > SampleClockEntry ? state : present)[SampleClockEntry].second),
               OutputLimit::LowestSampleClockHz, OutputLimit::HighestSampleClockHz)};
    const std::string waveform = std::get<std::string>(state[4].second);
    const bool isPlaying = std::get<bool>(state[5].second);
    const StatusRegisters status = WithEnables(generator.Status(), state);
    if (waveform.empty() && isPlaying) {
        throw CommandFailure(ScpiError::InvalidBlockData, "this is not an instrument state");
    }
    // The last that can fail, and it does so before it changes anything.
    generator.Select(waveform);
    generator.SetPlaying(isPlaying);
    generator.Output() = output;
    generator.Status() = status;
}

}  // namespace krv::simulator
