// RunningGenerator: a simulated generator on a free TCP port, or on a given one, served for as long
// as the object lives.
#pragma once

#include <memory>
#include <string>
#include <thread>
#include <utility>

#include "simulator/device/Generator.h"
#include "simulator/server/GeneratorServer.h"

namespace krv::tests {

class RunningGenerator {
 public:
    explicit RunningGenerator(const simulator::GeneratorSettings& settings = {},
                              std::uint16_t port = 0)
        : RunningGenerator(std::make_shared<simulator::Generator>(settings), port) {}
    // A generator that the test goes on turning.
    explicit RunningGenerator(std::shared_ptr<simulator::Generator> generator,
                              std::uint16_t port = 0)
        : m_generator(std::move(generator)),
          m_server(m_generator, port),
          m_thread([this] { m_server.Run(); }) {}
    ~RunningGenerator() {
        m_server.Stop();
        m_thread.join();
    }
    RunningGenerator(const RunningGenerator&) = delete;
    RunningGenerator& operator=(const RunningGenerator&) = delete;

    [[nodiscard]] simulator::Generator& Device() const { return *m_generator; }
    [[nodiscard]] std::uint16_t Port() const { return m_server.Port(); }
    [[nodiscard]] std::string HostAndPort() const { return "127.0.0.1:" + std::to_string(Port()); }
    [[nodiscard]] std::string Address() const { return "tcp://" + HostAndPort(); }

 private:
    std::shared_ptr<simulator::Generator> m_generator;
    simulator::GeneratorServer m_server;
    std::thread m_thread;
};

}  // namespace krv::tests
