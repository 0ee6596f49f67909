// ScpiClient: one client of the generator and its conversation: messages in, replies out.
//
// Each client has one thread; many clients share a generator. The room that a client has reserved
// in the waveform memory is given back when the client ends, even in the middle of a block.
#pragma once

#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "simulator/commands/CommandTable.h"
#include "simulator/device/Generator.h"
#include "simulator/scpi/CodeBlock.h"
#include "simulator/scpi/ScpiParser.h"

namespace krv::simulator {

class ScpiClient final : private ScpiParser::Sink {
 public:
    // How many bytes of replies may wait for a client that asks and doesn't read.
    static constexpr std::size_t MaxWaitingBytes = std::size_t{16} << 20;

    explicit ScpiClient(std::shared_ptr<Generator> generator)
        : m_generator(std::move(generator)), m_parser(*this) {}
    ScpiClient(const ScpiClient&) = delete;
    ScpiClient& operator=(const ScpiClient&) = delete;

    // Carries out every command that these bytes complete.
    void Feed(std::span<const std::byte> bytes) { m_parser.Feed(bytes); }
    // What has come is a whole message even without a terminator, as a bus tells at its last byte.
    void EndMessage() { m_parser.EndMessage(); }
    // Forgets the message under way and the replies that wait. Errors stay.
    void Clear();
    [[nodiscard]] bool HasReply() const noexcept { return !m_replies.empty(); }
    // The oldest reply with its terminator, as the faults that were on at its message's end have
    // left it; nothing when none waits. The replies of one message are one, separated by ";".
    [[nodiscard]] std::optional<Faults::Outgoing> TakeReply();
    // Memory is put aside for data of which more must come.
    [[nodiscard]] bool HoldsMemory() const noexcept { return m_reservation.IsHeld(); }

 private:
    bool OnHeader(std::string_view header) override;
    void OnText(std::string_view text) override;
    void OnString(std::string_view text) override;
    void OnBlockStart(std::uint32_t length) override;
    void OnBlockData(std::span<const std::byte> bytes) override;
    void OnBlockEnd() override;
    void OnUnitEnd() override;
    void OnSyntaxError(ScpiError error) override;
    void OnMessageEnd() override;

    // The header from the tree's root. A later header of a message starts at the level of the one
    // before it.
    std::string ResolveHeader(std::string_view header);
    void ReserveBlock(std::uint32_t length);
    void BeginBytes(std::uint32_t length);
    // The next parameter's kind; nothing, after a failure is noted, when the command takes no more.
    std::optional<ParameterKind> NextKind();
    void RunCommand();
    // Appends the reply to those of the message. When there is no room for it the whole message
    // stays unanswered.
    void AddReply(const std::string& reply);
    // Keeps the first failure of a unit; the rest of the unit is only read over.
    void NoteFailure(ScpiError error, std::string detail = {});
    void Report(const CommandFailure& failure);
    void ClearUnit();

    std::shared_ptr<Generator> m_generator;
    ScpiParser m_parser;
    std::string m_path;
    const Command* m_command = nullptr;
    std::vector<Argument> m_arguments;
    std::optional<CommandFailure> m_failure;
    std::optional<CodeBlock> m_block;
    // A block that holds no codes.
    std::optional<std::string> m_bytes;
    WaveformMemory::Reservation m_reservation;
    std::optional<std::string> m_reply;
    bool m_isDeadlocked = false;
    std::deque<Faults::Outgoing> m_replies;
    // Bytes in m_replies.
    std::size_t m_waitingBytes = 0;
};

}  // namespace krv::simulator
