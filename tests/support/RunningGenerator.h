// RunningGenerator: a simulated generator on a free TCP port, served for as long as the object
// lives.
#pragma once

#include <string>
#include <thread>

#include "bench/instrument/GeneratorServer.h"

namespace krv::testing {

class RunningGenerator {
 public:
    explicit RunningGenerator(const bench::GeneratorSettings& settings = {})
        : m_server(settings, 0), m_thread([this] { m_server.Run(); }) {}
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
    bench::GeneratorServer m_server;
    std::thread m_thread;
};

}  // namespace krv::testing
