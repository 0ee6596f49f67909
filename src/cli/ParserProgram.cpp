// The parser's options of the program, and the commands that are about krv itself.
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "cli/Choices.h"
#include "cli/Defaults.h"
#include "cli/ExitCode.h"
#include "cli/Parser.h"

namespace krv::cli {
namespace {

const std::map<std::string, ConfigAction> ConfigActions{
    {"show", ConfigAction::Show}, {"set", ConfigAction::Set}, {"unset", ConfigAction::Unset}};

using ScriptMaker = std::string (*)(const CompletionTable& table);
const std::map<std::string, ScriptMaker> CompletionScripts{
    {"bash", BashCompletion}, {"fish", FishCompletion}, {"zsh", ZshCompletion}};

// "a|b|c"
std::vector<std::string> Alternatives(const std::string& text) {
    std::vector<std::string> words{""};
    for (const char character : text) {
        if (character == '|') {
            words.emplace_back();
        } else {
            words.back() += character;
        }
    }
    return words;
}

template <class Meaning>
std::vector<std::string> WordsOf(const std::map<std::string, Meaning>& meanings) {
    std::vector<std::string> words;
    for (const auto& [word, meaning] : meanings) {
        words.push_back(word);
    }
    return words;
}

}  // namespace

void Parser::AddProgramOptions() {
    m_app
        .add_option("--log", m_logFile,
                    "File for a transcript of the conversation with the instrument")
        ->type_name("FILE");
    m_app.add_flag_function(
        "--quiet", [this](std::int64_t count) { m_output.isQuiet = count > 0; },
        "Prints no progress, and nothing of what was done; errors, warnings and questions stay");
    m_app
        .add_option("--color", m_output.color,
                    "Colours on standard error; default auto: on a terminal, unless NO_COLOR is "
                    "set")
        ->check(OneOf(std::vector<std::string>{"auto", "always", "never"}))
        ->type_name("auto|always|never");
}

void Parser::AddDoctor() {
    CLI::App& command =
        AddCommand("doctor", "Examines what is installed, and says what to do about each fault",
                   [this] { return ParsedArguments(m_doctor); });
    AddConnectionOptions(command, m_doctor.connection, false);
    command.add_flag("--repair", m_doctor.repair,
                     "Mends what it can; otherwise nothing is changed");
    CLI::Option* const bundle = command.add_option(
        "--bundle", m_doctor.bundleFile, "Archive to write, .zip, for the report of a fault");
    bundle->type_name("FILE");
    command
        .add_flag("--private", m_doctor.isPrivate,
                  "Leaves folders and serial numbers out of the archive")
        ->needs(bundle);
    AddJsonOption(command, m_doctor.json);
}

void Parser::AddConfig() {
    CLI::App& command = AddCommand("config", "Shows or changes the defaults of all commands",
                                   [this] { return ParsedArguments(m_config); });
    CLI::Option* const action = command.add_option_function<std::string>(
        "ACTION", [this](const std::string& word) { m_config.action = ConfigActions.at(word); },
        "show (default), set NAME VALUE or unset NAME");
    Restrict(*action, WordsOf(ConfigActions));
    CLI::Option* const words = command.add_option(
        "WORDS", m_config.words, "A setting: address, color, quiet or visa; its value");
    words->type_name("");
    m_words[words] = DefaultNames();
    AddJsonOption(command, m_config.json);
}

void Parser::AddJsonOption(CLI::App& command, bool& json) {
    command.add_flag("--json", json, "Prints the result as JSON, for programs");
}

void Parser::AddCompletion() {
    CLI::App& command = AddCommand(
        "completion", "Prints the script by which a shell completes command lines of krv", [this] {
            return TextAnswer{ExitCode::Done, CompletionScripts.at(m_shell)(Completions())};
        });
    CLI::Option* const shell = command.add_option("SHELL", m_shell, "bash, zsh or fish");
    shell->required();
    Restrict(*shell, WordsOf(CompletionScripts));
}

void Parser::Restrict(CLI::Option& option, std::vector<std::string> words) {
    option.type_name("");
    option.check(OneOf(words));
    m_words[&option] = std::move(words);
}

void Parser::AddHelp() {
    CLI::App& command = AddCommand("help", "Prints the help for krv or for one command", [this] {
        if (m_opensGuide) {
            return ParsedArguments(OpenGuideArguments{});
        }
        // Otherwise the parser would print the help of the command that it has found: this one's.
        m_app.clear();
        return ParsedArguments(HelpOn(m_helpTopic));
    });
    CLI::Option* const topic = command.add_option("COMMAND", m_helpTopic, "A command of krv");
    topic->type_name("");
    for (const CLI::App* each : m_app.get_subcommands({})) {
        m_words[topic].push_back(each->get_name());
    }
    command.add_flag("--open", m_opensGuide, "Opens the user guide in the browser")
        ->excludes(topic);
}

std::vector<std::string> Parser::CommandsAndOptions() const {
    std::vector<std::string> names;
    for (const CLI::App* command : m_app.get_subcommands({})) {
        names.push_back(command->get_name());
        for (const CLI::Option* option : command->get_options()) {
            if (option->get_positional()) {
                continue;
            }
            names.push_back(command->get_name() + ' ' + option->get_name());
        }
    }
    return names;
}

CompletionValue Parser::ValueOf(const CLI::Option& option) const {
    if (option.get_items_expected_max() == 0) {
        return {};
    }
    if (const auto words = m_words.find(&option); words != m_words.end()) {
        return {CompletionValue::Kind::Words, words->second};
    }
    const std::string type = option.get_positional() ? option.get_name() : option.get_type_name();
    if (type.find('|') != std::string::npos) {
        return {CompletionValue::Kind::Words, Alternatives(type)};
    }
    if (type == "FILE") {
        return {CompletionValue::Kind::File, {}};
    }
    return {type == "DIR" ? CompletionValue::Kind::Folder : CompletionValue::Kind::Text, {}};
}

std::vector<CompletionOption> Parser::OptionsOf(const CLI::App& app) const {
    std::vector<CompletionOption> options;
    for (const CLI::Option* option : app.get_options()) {
        if (!option->get_positional()) {
            options.push_back({option->get_name(), option->get_description(), ValueOf(*option)});
        }
    }
    return options;
}

CompletionTable Parser::Completions() const {
    CompletionTable table{OptionsOf(m_app), {}};
    for (const CLI::App* command : m_app.get_subcommands({})) {
        CompletionCommand entry{
            command->get_name(), command->get_description(), OptionsOf(*command), {}, {}};
        for (const CLI::Option* option : command->get_options()) {
            if (!option->get_positional()) {
                continue;
            }
            if (entry.argument.kind == CompletionValue::Kind::None) {
                entry.argument = ValueOf(*option);
            } else {
                entry.next = ValueOf(*option).words;
            }
        }
        table.commands.push_back(std::move(entry));
    }
    return table;
}

}  // namespace krv::cli
