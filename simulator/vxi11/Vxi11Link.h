// Vxi11Link: a link of a VXI-11 connection: its conversation of SCPI messages, and the reply that
// is being read. Its number is free when it ends. One thread.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include "simulator/commands/ClientLink.h"
#include "simulator/vxi11/Vxi11Links.h"

namespace krv::simulator {

class Vxi11Link {
 public:
    Vxi11Link(std::shared_ptr<Vxi11Links> links, std::uint32_t number,
              std::shared_ptr<Generator> generator, const std::string& clientName)
        : m_links(std::move(links)), m_number(number), m_client(std::move(generator), clientName) {}
    ~Vxi11Link() { m_links->Close(m_number); }
    Vxi11Link(const Vxi11Link&) = delete;
    Vxi11Link& operator=(const Vxi11Link&) = delete;

    ClientLink::AfterIntake Write(std::span<const std::byte> bytes, bool isEnd);
    void Clear();
    [[nodiscard]] bool HasReply() const noexcept { return !m_reply.empty() || m_client.HasReply(); }
    [[nodiscard]] bool HoldsMemory() const noexcept { return m_client.HoldsMemory(); }

    // Whether there is something to read for a client that has waited so long.
    [[nodiscard]] bool IsReadable(std::chrono::milliseconds waited);
    struct Piece {
        std::string text;
        bool isFull = false;
        bool endsAtCharacter = false;
        bool isEnd = false;
    };
    // The next piece of a reply that is readable, up to and with the character if there is one.
    [[nodiscard]] Piece Read(std::size_t most, std::optional<char> endCharacter);

 private:
    std::shared_ptr<Vxi11Links> m_links;
    std::uint32_t m_number;
    ClientLink m_client;
    // What is left of the reply that is being read, and how long it lets a client wait.
    std::string m_reply;
    std::chrono::milliseconds m_delay{0};
};

}  // namespace krv::simulator
