// Completion: the scripts by which shells complete krv's command lines.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace krv::cli {

// What may stand as a value.
struct CompletionValue {
    enum class Kind : std::uint8_t { None, Text, File, Folder, Words };
    Kind kind = Kind::None;
    std::vector<std::string> words;
};

struct CompletionOption {
    // With its hyphens.
    std::string name;
    std::string description;
    // None for a flag.
    CompletionValue value;
};

struct CompletionCommand {
    std::string name;
    std::string description;
    std::vector<CompletionOption> options;
    // Of the first word that is no option.
    CompletionValue argument;
    // Of the one behind it, where there are words to choose from.
    std::vector<std::string> next;
};

struct CompletionTable {
    // Of the program.
    std::vector<CompletionOption> options;
    std::vector<CompletionCommand> commands;
};

// Each is a whole script.
[[nodiscard]] std::string BashCompletion(const CompletionTable& table);
[[nodiscard]] std::string ZshCompletion(const CompletionTable& table);
[[nodiscard]] std::string FishCompletion(const CompletionTable& table);

}  // namespace krv::cli
