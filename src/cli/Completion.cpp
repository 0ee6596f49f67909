#include "cli/Completion.h"

#include <algorithm>
#include <string_view>

#include "common/Joined.h"

namespace krv::cli {
namespace {

using Kind = CompletionValue::Kind;

// With a backslash before each of these characters.
std::string Escaped(std::string_view text, std::string_view characters) {
    std::string escaped;
    for (const char character : text) {
        if (characters.find(character) != std::string_view::npos) {
            escaped += '\\';
        }
        escaped += character;
    }
    return escaped;
}

// In single quotes, in the manner of bash and zsh.
std::string QuotedForShell(std::string_view text) {
    std::string quoted = "'";
    for (const char character : text) {
        quoted += character == '\'' ? std::string("'\\''") : std::string(1, character);
    }
    return quoted + '\'';
}

std::vector<std::string> NamesOf(const std::vector<CompletionOption>& options) {
    std::vector<std::string> names;
    for (const CompletionOption& option : options) {
        names.push_back(option.name);
    }
    return names;
}

std::vector<std::string> NamesOf(const std::vector<CompletionCommand>& commands) {
    std::vector<std::string> names;
    for (const CompletionCommand& command : commands) {
        names.push_back(command.name);
    }
    return names;
}

// The program's options that the command doesn't have as its own.
std::vector<CompletionOption> OthersOf(const CompletionTable& table,
                                       const CompletionCommand& command) {
    std::vector<CompletionOption> others = table.options;
    std::erase_if(others, [&](const CompletionOption& option) {
        return std::ranges::find(command.options, option.name, &CompletionOption::name) !=
               command.options.end();
    });
    return others;
}

std::string BashReply(const CompletionValue& value) {
    switch (value.kind) {
        case Kind::File:
            return "kind=-f";
        case Kind::Folder:
            return "kind=-d";
        case Kind::Words:
            return "words='" + Joined(value.words, " ") + '\'';
        default:
            return ":";
    }
}

std::string BashValues(const std::string& command, const std::vector<CompletionOption>& options) {
    std::string cases;
    for (const CompletionOption& option : options) {
        if (option.value.kind != Kind::None) {
            cases +=
                "        " + command + ',' + option.name + ") " + BashReply(option.value) + " ;;\n";
        }
    }
    return cases;
}

std::string BashOptions(const CompletionTable& table, const CompletionCommand& command) {
    return "                " + command.name + ") words='" + Joined(NamesOf(command.options), " ") +
           ' ' + Joined(NamesOf(OthersOf(table, command)), " ") + "' ;;\n";
}

// The program's options whose value is the next word.
std::string WithValue(const std::vector<CompletionOption>& options, std::string_view between) {
    std::vector<std::string> names;
    for (const CompletionOption& option : options) {
        if (option.value.kind != Kind::None) {
            names.push_back(option.name);
        }
    }
    return Joined(names, between);
}

std::string ZshValue(const CompletionValue& value) {
    switch (value.kind) {
        case Kind::None:
            return "";
        case Kind::File:
            return ":file:_files";
        case Kind::Folder:
            return ":folder:_files -/";
        case Kind::Words:
            return ":value:(" + Joined(value.words, " ") + ')';
        default:
            return ":value:()";
    }
}

std::string ZshOptions(const std::vector<CompletionOption>& options, const std::string& indent) {
    std::string lines;
    for (const CompletionOption& option : options) {
        const std::string equals = option.value.kind == Kind::None ? "" : "=";
        lines += indent +
                 QuotedForShell(option.name + equals + '[' + Escaped(option.description, "[]:\\") +
                                ']' + ZshValue(option.value)) +
                 " \\\n";
    }
    return lines;
}

std::string FishQuoted(std::string_view text) {
    return '\'' + Escaped(text, "'\\") + '\'';
}

std::string FishValue(const CompletionValue& value) {
    switch (value.kind) {
        case Kind::None:
            return "";
        case Kind::File:
            return " -r -F";
        case Kind::Folder:
            return " -x -a '(__fish_complete_directories)'";
        case Kind::Words:
            return " -x -a " + FishQuoted(Joined(value.words, " "));
        default:
            return " -x";
    }
}

std::string FishOption(const CompletionOption& option, const std::string& condition) {
    return "complete -c krv" + condition + " -l " + option.name.substr(2) +
           FishValue(option.value) + " -d " + FishQuoted(option.description) + '\n';
}

// Behind one of the words that stand as the first argument.
std::string FishNext(const CompletionCommand& command) {
    if (command.next.empty()) {
        return {};
    }
    return "complete -c krv -n '__fish_seen_subcommand_from " + command.name +
           "; and __fish_seen_subcommand_from " + Joined(command.argument.words, " ") +
           "; and not __fish_seen_subcommand_from " + Joined(command.next, " ") + "' -x -a " +
           FishQuoted(Joined(command.next, " ")) + '\n';
}

// The beginning of the function: finds the word to complete, the one before it, and the command.
std::string BashCommandSearch(const CompletionTable& table) {
    return R"(# Completion of krv for bash 4 or later.
_krv() {
    local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD - 1]}
    local command='' words='' next='' kind='' at
    COMPREPLY=()
    if [ "$cur" = '=' ]; then
        cur=''
    elif [ "$prev" = '=' ] && [ "$COMP_CWORD" -gt 1 ]; then
        prev=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    for ((at = 1; at < COMP_CWORD; at++)); do
        case ${COMP_WORDS[at]} in
            )" +
           WithValue(table.options, "|") +
           R"() ((at++)) ;;
            )" +
           Joined(NamesOf(table.commands), "|") + R"()
                command=${COMP_WORDS[at]}
                break
                ;;
        esac
    done
)";
}

}  // namespace

std::string BashCompletion(const CompletionTable& table) {
    std::string values = BashValues("*", table.options);
    std::string options;
    std::string arguments;
    for (const CompletionCommand& command : table.commands) {
        values += BashValues(command.name, command.options);
        options += BashOptions(table, command);
        arguments += "                " + command.name + ") " + BashReply(command.argument) +
                     (command.next.empty() ? "" : " next='" + Joined(command.next, " ") + '\'') +
                     " ;;\n";
    }
    return BashCommandSearch(table) + R"(    case $command,$prev in
)" + values +
           R"(        *)
            case $command,$cur in
                ,-*) words=')" +
           Joined(NamesOf(table.options), " ") + R"(' ;;
                ,*) words=')" +
           Joined(NamesOf(table.commands), " ") + R"(' ;;
            esac
            case $cur in
                -*)
                    case $command in
)" + options +
           R"(                    esac
                    ;;
                *)
                    case $command in
)" + arguments +
           R"(                    esac
                    for ((at++; at < COMP_CWORD; at++)); do
                        case " $words " in
                            *" ${COMP_WORDS[at]} "*)
                                words=$next
                                next=''
                                ;;
                        esac
                    done
                    ;;
            esac
            ;;
    esac
    if [ -n "$kind" ]; then
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen "$kind" -- "$cur")
    elif [ -n "$words" ]; then
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$cur")
    fi
}
complete -F _krv krv
)";
}

std::string ZshCompletion(const CompletionTable& table) {
    std::string names;
    std::string cases;
    for (const CompletionCommand& command : table.commands) {
        names += "        " +
                 QuotedForShell(command.name + ':' + Escaped(command.description, ":\\")) + '\n';
        const bool hasNone = command.argument.kind == Kind::None;
        const bool isOneWord = command.argument.kind == Kind::Words;
        const std::string argument =
            hasNone ? "*:word:()" : (isOneWord ? '1' : '*') + ZshValue(command.argument);
        cases += "                " + command.name + ")\n                    _arguments \\\n" +
                 ZshOptions(command.options, "                        ") +
                 ZshOptions(OthersOf(table, command), "                        ") +
                 "                        " + QuotedForShell(argument) +
                 (command.next.empty()
                      ? ""
                      : ' ' + QuotedForShell("2:value:(" + Joined(command.next, " ") + ')')) +
                 "\n                    ;;\n";
    }
    return "#compdef krv\n# Completion of krv for zsh.\n_krv() {\n    local -a commands\n"
           "    local state\n    commands=(\n" +
           names + "    )\n    _arguments -C -A '-*' \\\n" + ZshOptions(table.options, "        ") +
           "        '1:command:->command' \\\n        '*::argument:->argument'\n"
           "    case $state in\n        command) _describe command commands ;;\n"
           "        argument)\n            case $words[1] in\n" +
           cases +
           "            esac\n            ;;\n    esac\n}\n"
           // A file in a folder of fpath is the function itself when it is called first.
           "if [ \"${funcstack[1]}\" = _krv ]; then\n    _krv \"$@\"\nelse\n    compdef _krv "
           "krv\nfi\n";
}

std::string FishCompletion(const CompletionTable& table) {
    std::string script = "# Completion of krv for fish.\ncomplete -c krv -f\n";
    for (const CompletionOption& option : table.options) {
        script += FishOption(option, "");
    }
    for (const CompletionCommand& command : table.commands) {
        script += "complete -c krv -n __fish_use_subcommand -a " + command.name + " -d " +
                  FishQuoted(command.description) + '\n';
        const std::string condition = " -n '__fish_seen_subcommand_from " + command.name + '\'';
        for (const CompletionOption& option : command.options) {
            script += FishOption(option, condition);
        }
        if (command.argument.kind == Kind::File) {
            script += "complete -c krv" + condition + " -F\n";
        } else if (command.argument.kind == Kind::Words) {
            std::vector<std::string> others = command.argument.words;
            std::erase(others, command.name);
            script += "complete -c krv -n '__fish_seen_subcommand_from " + command.name +
                      "; and not __fish_seen_subcommand_from " + Joined(others, " ") + '\'' +
                      FishValue(command.argument) + '\n';
        }
        script += FishNext(command);
    }
    return script;
}

}  // namespace krv::cli
