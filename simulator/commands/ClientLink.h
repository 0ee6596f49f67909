// ClientLink: one client's byte stream as the generator's faults let it through. The code that
// moves the bytes (over a socket, or in process) follows what TakeIn and NextReply return. One
// thread.
#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "simulator/commands/ScpiClient.h"
#include "simulator/device/Faults.h"
#include "suite/log/ConversationLog.h"

namespace krv::simulator {

class ClientLink {
 public:
    // The client's name is for the transcript.
    explicit ClientLink(std::shared_ptr<Generator> generator,
                        std::string_view clientName = "a client")
        : m_generator(std::move(generator)),
          m_client(m_generator),
          m_conversation(m_generator->Transcript(), "connected by " + std::string(clientName)) {}

    struct AfterIntake {
        // The connection ends here, without the replies that are waiting.
        bool disconnect = false;
        // How long to wait before more is taken in.
        std::chrono::microseconds pause{0};
    };

    // The most bytes to take in at once.
    [[nodiscard]] std::size_t PieceSize(std::size_t capacity) const {
        return m_generator->ActiveFaults().PieceSize(capacity);
    }
    AfterIntake TakeIn(std::span<const std::byte> bytes);
    // The next reply to send, after its delay; nothing when there is none to send now.
    [[nodiscard]] std::optional<Faults::Outgoing> NextReply();
    // As of ScpiClient.
    void EndMessage();
    void Clear();
    [[nodiscard]] bool HasReply() const noexcept { return m_client.HasReply(); }
    [[nodiscard]] bool HoldsMemory() const noexcept { return m_client.HoldsMemory(); }

 private:
    std::shared_ptr<Generator> m_generator;
    ScpiClient m_client;
    suite::LoggedConversation m_conversation;
};

}  // namespace krv::simulator
