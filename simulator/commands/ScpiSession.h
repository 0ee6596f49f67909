// ScpiSession: one client's conversation with the generator: messages in, replies out.
//
// One thread for each session; many sessions share a generator. What a session holds of the shared
// memory is given back when it ends, also in the middle of a block.
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

class ScpiSession final : private ScpiParser::Sink {
 public:
    // What may wait for a client that asks and doesn't listen.
    static constexpr std::size_t MaxWaitingBytes = std::size_t{16} << 20;

    explicit ScpiSession(std::shared_ptr<Generator> generator)
        : m_generator(std::move(generator)), m_parser(*this) {}
    ScpiSession(const ScpiSession&) = delete;
    ScpiSession& operator=(const ScpiSession&) = delete;

    // Carries out whatever is complete.
    void Feed(std::span<const std::byte> bytes) { m_parser.Feed(bytes); }
    // The oldest reply with its terminator. The replies of one message are one, separated by ";".
    // The faults that were on at the message's end have been at it.
    [[nodiscard]] std::optional<Faults::Outgoing> TakeOutgoing();
    [[nodiscard]] std::optional<std::string> TakeReply();

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

    // The header from the tree's root; later headers of a message go on where the one before was.
    std::string ResolveHeader(std::string_view header);
    void ReserveBlock(std::uint32_t length);
    void BeginBytes(std::uint32_t length);
    // The next parameter's kind; nothing, after a failure is noted, when the command takes no more.
    std::optional<ParameterKind> NextKind();
    void RunCommand();
    // Puts it behind those of the message. Where there is no room the message is answered no more.
    void AddReply(const std::string& reply);
    // The first failure of a unit counts; the rest of the unit is only read over.
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
    // In them.
    std::size_t m_waitingBytes = 0;
};

}  // namespace krv::simulator
