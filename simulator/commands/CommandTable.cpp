#include "simulator/commands/CommandTable.h"

#include "simulator/scpi/HeaderPattern.h"
#include "suite/scpi/BlockHeader.h"

namespace krv::simulator {
namespace {

std::string_view KindText(ParameterKind kind) {
    switch (kind) {
        case ParameterKind::Name:
            return "<name>";
        case ParameterKind::String:
            return "<string>";
        case ParameterKind::Integer:
            return "<integer>";
        case ParameterKind::Boolean:
            return "<boolean>";
        case ParameterKind::Frequency:
            return "<frequency>";
        case ParameterKind::Level:
            return "<level>";
        case ParameterKind::Word:
            return "<word>";
        case ParameterKind::Block:
            return "<block>";
        case ParameterKind::Codes:
            return "<codes>";
    }
    return {};
}

}  // namespace

const std::vector<CommandClause>& CommandTable() {
    // It stays when the program ends, for threads that nobody waits for.
    static const auto& Table = *new std::vector<CommandClause>{
        CommonCommands(),    SystemCommands(),  StatusCommands(), OutputCommands(),
        ArbitraryCommands(), TriggerCommands(), FileCommands(),   DiagnosticCommands()};
    return Table;
}

const Command* FindCommand(std::string_view header) {
    for (const CommandClause& clause : CommandTable()) {
        for (const Command& command : clause.commands) {
            if (HeaderMatches(command.header, header)) {
                return &command;
            }
        }
    }
    return nullptr;
}

std::string CommandSyntax(const Command& command) {
    std::string syntax(command.header);
    std::string_view separator = " ";
    for (const ParameterForm& parameter : command.parameters) {
        const std::string text = std::string(separator) + std::string(KindText(parameter.kind));
        syntax += parameter.optional ? '[' + text + ']' : text;
        separator = ",";
    }
    return syntax;
}

std::string BlockReply(std::string_view bytes) {
    return suite::BlockHeader(bytes.size()).append(bytes);
}

}  // namespace krv::simulator
