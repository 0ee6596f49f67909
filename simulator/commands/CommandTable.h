// The generator's commands as data: what each is called, what it takes, what it does.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "simulator/device/Generator.h"

namespace krv::simulator {

enum class ParameterKind : std::uint8_t {
    // A waveform's name, in quotes or not.
    Name,
    // Text in quotes.
    String,
    // A whole number.
    Integer,
    // ON, OFF, 1 or 0.
    Boolean,
    // A number with or without a unit behind it: Hz, kHz, MHz, GHz; dBm.
    Frequency,
    Level,
    // One of the words that a command lists.
    Word,
    // A definite-length block of 16-bit codes.
    Codes,
    // A definite-length block of bytes that are no codes.
    Block
};

struct ParameterForm {
    ParameterKind kind;
    bool optional = false;
};

using Argument = std::variant<std::string, std::int32_t, bool, double, CodeArray>;

// The arguments of a command, the generator that it works on and its reply. The generator's lock is
// held while the command runs.
class CommandContext {
 public:
    CommandContext(Generator& generator, std::vector<Argument>& arguments, bool replyWaiting)
        : m_generator(generator), m_arguments(arguments), m_replyWaiting(replyWaiting) {}

    [[nodiscard]] Generator& Device() noexcept { return m_generator; }
    [[nodiscard]] bool Has(std::size_t index) const noexcept { return index < m_arguments.size(); }
    [[nodiscard]] const std::string& Text(std::size_t index) const {
        return std::get<std::string>(m_arguments.at(index));
    }
    [[nodiscard]] std::int32_t Integer(std::size_t index) const {
        return std::get<std::int32_t>(m_arguments.at(index));
    }
    [[nodiscard]] bool Boolean(std::size_t index) const {
        return std::get<bool>(m_arguments.at(index));
    }
    // In hertz or dBm.
    [[nodiscard]] double Number(std::size_t index) const {
        return std::get<double>(m_arguments.at(index));
    }
    [[nodiscard]] CodeArray TakeCodes(std::size_t index) {
        return std::move(std::get<CodeArray>(m_arguments.at(index)));
    }
    // An earlier command of the message has a reply that isn't sent yet.
    [[nodiscard]] bool ReplyWaiting() const noexcept { return m_replyWaiting; }

    void Reply(std::string reply) { m_reply = std::move(reply); }
    [[nodiscard]] const std::optional<std::string>& GivenReply() const noexcept { return m_reply; }

 private:
    Generator& m_generator;
    std::vector<Argument>& m_arguments;
    bool m_replyWaiting;
    std::optional<std::string> m_reply;
};

struct Command {
    // In the notation of HeaderPattern.h.
    std::string_view header;
    std::vector<ParameterForm> parameters;
    // Throws CommandFailure.
    void (*run)(CommandContext& context);
    // How many codes of a block make a point of the waveform memory; 0 for as many as in the
    // waveform that the first argument names.
    std::uint8_t codesPerPoint = 1;
    // The command doesn't take the instrument from local to remote operation.
    bool keepsLocal = false;
};

struct CommandClause {
    std::string_view title;
    std::vector<Command> commands;
};

[[nodiscard]] const std::vector<CommandClause>& CommandTable();
// Null when there is none.
[[nodiscard]] const Command* FindCommand(std::string_view header);
// E.g. `ARBitrary:DATA:IQ <name>,<codes>[,<codes>]`.
[[nodiscard]] std::string CommandSyntax(const Command& command);

// A definite-length block of the bytes.
[[nodiscard]] std::string BlockReply(std::string_view bytes);

// The clauses, each in a file of its own.
[[nodiscard]] CommandClause CommonCommands();
[[nodiscard]] CommandClause SystemCommands();
[[nodiscard]] CommandClause StatusCommands();
[[nodiscard]] CommandClause OutputCommands();
[[nodiscard]] CommandClause ArbitraryCommands();
[[nodiscard]] CommandClause TriggerCommands();
[[nodiscard]] CommandClause FileCommands();
[[nodiscard]] CommandClause DiagnosticCommands();

}  // namespace krv::simulator
