// GeneratorSettings: model, equipment and faults of a simulated generator when it is switched on.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace krv::simulator {

// Of all models.
inline constexpr const char* MakerName = "Corvane";

struct GeneratorSettings {
    // One of suite::SupportedModels.
    std::string model = "M7718C";
    std::vector<std::string> options{"R2X"};
    std::string firmware = "B.03.40";
    // Without one, the number of the model's generator in process.
    std::optional<std::string> serialNumber{};
    // The size of the waveform memory, in points.
    std::uint64_t memoryPoints = std::uint64_t{64} << 20;
    // The folder that received waveforms are written to; none without a value.
    std::optional<std::filesystem::path> storeFolder = std::nullopt;
    // The file that what is received and answered is written to (see ConversationLog.h); none
    // without a value.
    std::optional<std::filesystem::path> transcriptFile = std::nullopt;
    // How long a client may hold memory for data that doesn't come; then its connection ends.
    std::chrono::milliseconds stallLimit{60000};
    // Faults switched on from the start, as "NAME" or "NAME=VALUE" (see Faults.h).
    std::vector<std::string> faults{};
};

// No two generators that one can reach at the same time have the same serial number unless they
// were given one: a generator in process has that of its model, a served one that of its port.
[[nodiscard]] std::string SerialNumberOf(const std::string& model);
[[nodiscard]] std::string SerialNumberAt(std::uint16_t port);

// Throws std::invalid_argument when the model isn't known, naming those that are, or when an
// option, the firmware revision or the serial number can't stand in a reply.
void RequireValid(const GeneratorSettings& settings);

}  // namespace krv::simulator
