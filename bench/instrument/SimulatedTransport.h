// SimulatedTransport: a client's connection to a generator in the same process.
#pragma once

#include <memory>
#include <string>

#include "bench/instrument/ClientLink.h"
#include "suite/Transport.h"

namespace krv::bench {

class SimulatedTransport final : public server::Transport {
 public:
    SimulatedTransport(std::shared_ptr<Generator> generator, std::string address,
                       const server::TimeOuts& timeOuts);

    void Send(std::span<const std::byte> bytes) override;
    // A reply that never comes takes the time-out, as it does on a wire.
    std::size_t Receive(std::span<std::byte> bytes) override;
    [[nodiscard]] std::string Kind() const override { return "Simulated"; }

 private:
    void RequireOpen() const;

    ClientLink m_link;
    std::string m_address;
    server::TimeOuts m_timeOuts;
    bool m_open = true;
    // What is left of the reply that is being received.
    std::string m_reply;
};

}  // namespace krv::bench
