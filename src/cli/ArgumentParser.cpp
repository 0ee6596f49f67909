#include "cli/ArgumentParser.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <vector>

#include "cli/ExitCode.h"
#include "cli/Parser.h"
#include "common/NearMiss.h"

namespace krv::cli {
namespace {

TextAnswer WrongUsage(const std::string& fault) {
    return {ExitCode::WrongUsage, fault + "\n'krv help' prints the commands and options."};
}

// What the parser's library says begins with the option's name and a colon.
std::string WrongCount(const std::string& fault) {
    const std::string name = fault.substr(0, fault.find(':'));
    return name + (fault.find("received") == std::string::npos ? " has no value."
                                                               : " is given more than once.");
}

// Empty where the parser found something else wrong.
std::string UnexpectedWord(const CLI::App& app) {
    const std::vector<std::string> words = app.remaining(true);
    const auto commands = app.get_subcommands();
    if (words.empty() || commands.empty()) {
        return {};
    }
    const CLI::App& command = *commands.front();
    return "krv " + command.get_name() + " takes no word '" + words.front() + "' here." +
           (command.get_option_no_throw("--address") == nullptr
                ? ""
                : " The address of an instrument stands behind --address.");
}

bool AsksForHelp(const std::string& word) {
    return word.starts_with("-h") || word == "--help" || word.starts_with("--help=");
}

bool IsOption(const std::string& word) {
    return word.size() > 2 && word.starts_with("--");
}

std::string NameOf(const std::string& option) {
    return option.substr(0, option.find('='));
}

// Standard input with its columns, "-:I,Q", looks like an option where it isn't the value of one.
// Behind everything else it doesn't.
std::vector<std::string> WithInputLast(std::vector<std::string> words) {
    for (std::size_t at = 1; at < words.size(); ++at) {
        if (words[at].starts_with("-:") && words[at - 1] != "--i" && words[at - 1] != "--q" &&
            words[at - 1] != "--marker-file" && words[at - 1] != "--") {
            std::rotate(words.begin() + static_cast<std::ptrdiff_t>(at),
                        words.begin() + static_cast<std::ptrdiff_t>(at) + 1, words.end());
            words.insert(words.end() - 1, "--");
            break;
        }
    }
    return words;
}

std::vector<std::string> OptionNames(const CLI::App& command) {
    std::vector<std::string> names;
    for (const CLI::Option* option : command.get_options()) {
        names.push_back(option->get_name());
    }
    return names;
}

}  // namespace

ParsedArguments Parser::Parse(const std::vector<std::string>& words) {
    if (auto answer = AnswerToWords(words)) {
        return std::move(*answer);
    }
    try {
        const std::vector<std::string> ordered = WithInputLast(words);
        std::vector<std::string> reversed(ordered.rbegin(), ordered.rend());
        m_app.parse(std::move(reversed));
    } catch (const CLI::CallForVersion& version) {
        return TextAnswer{ExitCode::Done, std::string(version.what()) + '\n'};
    } catch (const CLI::ArgumentMismatch& error) {
        return WrongUsage(WrongCount(error.what()));
    } catch (const CLI::ExtrasError& error) {
        const std::string fault = UnexpectedWord(m_app);
        return WrongUsage(fault.empty() ? error.what() : fault);
    } catch (const CLI::ParseError& error) {
        return WrongUsage(m_app.get_subcommands().empty() ? "Name a command." : error.what());
    }
    if (m_logFile) {
        if (!TakesLog()) {
            return WrongUsage("--log goes with a command that talks to an instrument.");
        }
        for (ConnectionArguments* connection : m_connections) {
            if (connection->logFile) {
                return WrongUsage("--log is given twice: name one file.");
            }
            connection->logFile = m_logFile;
        }
    }
    return Filled();
}

std::optional<TextAnswer> Parser::AnswerToWords(const std::vector<std::string>& words) const {
    if (words.empty()) {
        return std::nullopt;
    }
    const CLI::App* command = FindCommand(words.front());
    if (command == nullptr && !words.front().starts_with('-')) {
        return NoSuchCommand(words.front());
    }
    // In front of the command may stand the program's own options, some of which have a value.
    for (std::size_t at = 0; command == nullptr && at < words.size(); ++at) {
        at += std::size_t{words[at] == "--log" || words[at] == "--color"};
        command = at < words.size() ? FindCommand(words[at]) : nullptr;
    }
    if (std::ranges::any_of(words, AsksForHelp)) {
        return HelpOn(command == nullptr ? std::string() : command->get_name());
    }
    command = command == nullptr ? &m_app : command;
    for (const std::string& word : words) {
        if (const std::string fault = IsOption(word) ? FaultOf(word, *command) : "";
            !fault.empty()) {
            return WrongUsage(fault);
        }
    }
    const std::string first = NameOf(words.front());
    if (IsOption(first) && m_app.get_option_no_throw(first) == nullptr) {
        return WrongUsage("The option " + first + " stands behind the command: krv " +
                          command->get_name() + ' ' + first + '.');
    }
    return std::nullopt;
}

std::string Parser::FaultOf(const std::string& option, const CLI::App& command) const {
    const std::string name = NameOf(option);
    if (command.get_option_no_throw(name) == nullptr &&
        m_app.get_option_no_throw(name) == nullptr) {
        const bool isProgram = &command == &m_app;
        std::vector<std::string> known = OptionNames(command);
        if (!isProgram) {
            std::ranges::move(OptionNames(m_app), std::back_inserter(known));
        }
        return "There is no option " + name +
               (isProgram ? "." : " of krv " + command.get_name() + '.') +
               NearMissHint(name, known);
    }
    return option.ends_with('=') && option.size() == name.size() + 1
               ? name + " has no value behind the '='."
               : std::string();
}

ParsedArguments Parser::Filled() {
    const auto parsed = std::ranges::find_if(
        m_commands, [](const auto& command) { return command.first->parsed(); });
    return parsed->second();
}

bool Parser::TakesLog() const {
    for (const CLI::App* command : m_app.get_subcommands()) {
        if (command->get_option_no_throw("--log") != nullptr) {
            return true;
        }
    }
    return false;
}

const CLI::App* Parser::FindCommand(const std::string& name) const {
    for (const CLI::App* command : m_app.get_subcommands({})) {
        if (command->get_name() == name) {
            return command;
        }
    }
    return nullptr;
}

TextAnswer Parser::HelpOn(const std::string& topic) const {
    if (topic.empty()) {
        return {ExitCode::Done, m_app.help()};
    }
    const CLI::App* const command = FindCommand(topic);
    return command != nullptr ? TextAnswer{ExitCode::Done, command->help("krv")}
                              : NoSuchCommand(topic);
}

TextAnswer Parser::NoSuchCommand(const std::string& name) const {
    std::vector<std::string> known;
    for (const CLI::App* command : m_app.get_subcommands({})) {
        known.push_back(command->get_name());
    }
    return {ExitCode::WrongUsage, "There is no command '" + name + "'." +
                                      NearMissHint(name, known) +
                                      "\n'krv help' lists the commands."};
}

CommandRequest ParseArguments(const std::vector<std::string>& words) {
    Parser parser;
    ParsedArguments arguments = parser.Parse(words);
    return {std::move(arguments), parser.Output()};
}

std::vector<std::string> CommandsAndOptions() {
    return Parser().CommandsAndOptions();
}

}  // namespace krv::cli
