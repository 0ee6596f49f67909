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
        : m_server(settings, port), m_thread([this] { m_server.Run(); }) {}
    // A generator that the test goes on turning.
    explicit RunningGenerator(std::shared_ptr<simulator::Generator> generator)
        : m_server(std::move(generator), 0), m_thread([this] { m_server.Run(); }) {}
    ~RunningGenerator() {
        m_server.Stop();
        m_thread.join();
    }
    RunningGenerator(const RunningGenerator&) = delete;
    RunningGenerator& operator=(const RunningGenerator&) = delete;

    [[nodiscard]] std::uint16_t Port() const { return m_server.Port(); }
    [[nodiscard]] std::string HostAndPort() const { return "127.0.0.1:" + std::to_string(Port()); }
    [[nodiscard]] std::string Address() const { return "tcp://" + HostAndPort(); }

 private:
    simulator::GeneratorServer m_server;
    std::thread m_thread;
};

}  // namespace krv::tests
