// The simulated generator behind a TCP port or in process.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "suite/Transport.h"

namespace krv::bench {

struct GeneratorSettings {
    std::string model = "M7718C";
    std::vector<std::string> options{"R2X"};
    std::string firmware = "B.03.40";
    std::string serialNumber = "US00000001";
    // The size of the waveform memory, in points.
    std::uint64_t memoryPoints = std::uint64_t{64} << 20;
    // Where each received waveform is written as files; nothing writes none.
    std::optional<std::filesystem::path> storeFolder;
    // Faults switched on from the start, as "NAME" or "NAME=VALUE".
    std::vector<std::string> faults;
};

// Throws std::invalid_argument, naming the fault and those there are, when a fault isn't known.
class GeneratorServer {
 public:
    GeneratorServer(const GeneratorSettings& settings, std::uint16_t port);
    ~GeneratorServer();

    // The port listened on, also when 0 was asked for; always on 127.0.0.1.
    [[nodiscard]] std::uint16_t Port() const;
    // Serves clients until Stop is called, from a signal handler or from another thread.
    void Run();
    void Stop() noexcept;

 private:
    class Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

// Adds `sim://MODEL`: each opened session talks to a generator of its own model in process.
void AddSimulatedTransport(server::TransportRegistry& registry,
                           const GeneratorSettings& settings = {});

}  // namespace krv::bench
