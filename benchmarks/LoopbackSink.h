// LoopbackSink: takes in what a client sends it over the loopback interface, and throws it away.
// Bytes that end with the query *OPC? are answered with 1, so that a client knows when all has
// come.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace krv::benchmarks {

class LoopbackSink {
 public:
    LoopbackSink();
    ~LoopbackSink();
    LoopbackSink(const LoopbackSink&) = delete;
    LoopbackSink& operator=(const LoopbackSink&) = delete;

    // "tcp://127.0.0.1:PORT"; one client at a time.
    [[nodiscard]] std::string Address() const;
    [[nodiscard]] std::uint16_t Port() const;

 private:
    class Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

// The yardstick: a connection to a sink that sends in pieces of 1 MiB with the system's defaults.
class PlainSender {
 public:
    explicit PlainSender(const LoopbackSink& sink);
    ~PlainSender();
    PlainSender(const PlainSender&) = delete;
    PlainSender& operator=(const PlainSender&) = delete;

    // Returns when the sink has taken in everything.
    void Send(std::span<const std::byte> bytes);

 private:
    class Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

}  // namespace krv::benchmarks
