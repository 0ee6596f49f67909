#include "simulator/server/SimulatedTransport.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <thread>
#include <utility>

#include "simulator/commands/ClientLink.h"
#include "suite/transport/TransportErrors.h"

namespace krv::simulator {
namespace {

class SimulatedTransport final : public suite::Transport {
 public:
    SimulatedTransport(std::shared_ptr<Generator> generator, std::string address,
                       const suite::TimeOuts& timeOuts)
        : m_link(std::move(generator), "a client in process"),
          m_address(std::move(address)),
          m_timeOuts(timeOuts) {}

    void Send(std::span<const std::byte> bytes, suite::MessagePart) override {
        RequireOpen();
        while (!bytes.empty()) {
            const auto piece = bytes.first(std::min(bytes.size(), m_link.PieceSize(bytes.size())));
            const ClientLink::AfterIntake after = m_link.TakeIn(piece);
            m_open = !after.disconnect;
            RequireOpen();
            std::this_thread::sleep_for(after.pause);
            bytes = bytes.subspan(piece.size());
        }
    }

    // A reply that never comes takes the whole time-out, as it does on a wire.
    std::size_t Receive(std::span<std::byte> bytes) override {
        RequireOpen();
        if (m_reply.empty()) {
            auto next = m_link.NextReply();
            const auto wait = next ? next->delay : m_timeOuts.inactivity;
            std::this_thread::sleep_for(std::min(wait, m_timeOuts.inactivity));
            if (wait >= m_timeOuts.inactivity || next->text.empty()) {
                throw suite::NoAnswerError(m_address, m_timeOuts.inactivity);
            }
            m_reply = std::move(next->text);
        }
        const std::size_t count = std::min(bytes.size(), m_reply.size());
        std::memcpy(bytes.data(), m_reply.data(), count);
        m_reply.erase(0, count);
        return count;
    }

    [[nodiscard]] std::string Kind() const override { return "Simulated"; }

 private:
    void RequireOpen() const {
        if (!m_open) {
            throw suite::ClosedError(m_address);
        }
    }

    ClientLink m_link;
    std::string m_address;
    suite::TimeOuts m_timeOuts;
    bool m_open = true;
    // What is left of the reply that is being received.
    std::string m_reply;
};

}  // namespace

void AddSimulatedTransport(suite::TransportRegistry& registry, const GeneratorSettings& settings) {
    registry.Add("sim", [settings](const std::string& model, const suite::TimeOuts& timeOuts) {
        const std::string address = "sim://" + model;
        GeneratorSettings own = settings;
        own.model = model;
        try {
            return std::make_unique<SimulatedTransport>(std::make_shared<Generator>(own), address,
                                                        timeOuts);
        } catch (const std::exception& refusal) {
            throw suite::ConnectError(address, refusal.what());
        }
    });
}

}  // namespace krv::simulator
