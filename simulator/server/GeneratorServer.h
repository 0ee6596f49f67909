// GeneratorServer: the simulated generator behind a TCP port of this computer.
#pragma once

#include <cstdint>
#include <memory>

#include "simulator/device/GeneratorSettings.h"

namespace krv::simulator {

class Generator;

class GeneratorServer {
 public:
    // Listens on 127.0.0.1; clients that connect are served once Run is called. Throws
    // std::invalid_argument for settings that aren't valid (for an unknown model or fault the text
    // lists the known ones), Error when the port can't be listened on,
    // std::filesystem::filesystem_error when the folder for waveforms can't be made.
    GeneratorServer(const GeneratorSettings& settings, std::uint16_t port);
    // Serves a generator that other code uses, too. Throws Error as above.
    GeneratorServer(std::shared_ptr<Generator> generator, std::uint16_t port);
    // Run must have returned.
    ~GeneratorServer();
    GeneratorServer(const GeneratorServer&) = delete;
    GeneratorServer& operator=(const GeneratorServer&) = delete;

    // The port listened on, also when 0 was asked for.
    [[nodiscard]] std::uint16_t Port() const;
    // Serves the generator over VXI-11, too, at a free port of this computer that clients ask the
    // port mapper for; its own port is a given one or, for 0, a free one. Before Run. Throws Error
    // when the port mapper's can't be listened on.
    void ServeVxi11(std::uint16_t mapperPort);
    // Where VXI-11 is served.
    [[nodiscard]] std::uint16_t Vxi11Port() const;
    [[nodiscard]] std::uint16_t MapperPort() const;

    // Lets clients on this computer find what is served by multicast DNS. Before Run. Throws Error
    // when that isn't possible.
    void Announce();

    // Serves clients, each independently of the others, until Stop is called.
    void Run();
    // From any thread or from a signal handler, before or during Run, which returns within a tenth
    // of a second and closes all connections.
    void Stop() noexcept;

 private:
    class Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

}  // namespace krv::simulator
