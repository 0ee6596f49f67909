// SimulatedTransport: a client's connection to a generator in the same process.
#pragma once

#include <memory>
#include <string>

#include "simulator/server/ClientLink.h"
#include "suite/transport/Transport.h"

namespace krv::simulator {

class SimulatedTransport final : public suite::Transport {
 public:
    SimulatedTransport(std::shared_ptr<Generator> generator, std::string address,
                       const suite::TimeOuts& timeOuts);

    void Send(std::span<const std::byte> bytes) override;
    // A reply that never comes takes the time-out, as it does on a wire.
    std::size_t Receive(std::span<std::byte> bytes) override;
    [[nodiscard]] std::string Kind() const override { return "Simulated"; }

 private:
    void RequireOpen() const;

    ClientLink m_link;
    std::string m_address;
    suite::TimeOuts m_timeOuts;
    bool m_open = true;
    // What is left of the reply that is being received.
    std::string m_reply;
};

}  // namespace krv::simulator
