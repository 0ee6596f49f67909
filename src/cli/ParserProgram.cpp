// The parser's options of the program, and its command for the defaults of all commands.
#include <map>
#include <string>
#include <vector>

#include "cli/Choices.h"
#include "cli/Parser.h"

namespace krv::cli {
namespace {

const std::map<std::string, ConfigAction> ConfigActions{
    {"show", ConfigAction::Show}, {"set", ConfigAction::Set}, {"unset", ConfigAction::Unset}};

}  // namespace

void Parser::AddProgramOptions() {
    m_app
        .add_option("--log", m_logFile,
                    "File for a transcript of the conversation with the instrument")
        ->type_name("FILE");
    m_app.add_flag(
        "--quiet", m_output.isQuiet,
        "Prints no progress, and nothing of what was done; errors, warnings and questions "
        "stay");
    m_app
        .add_option(
            "--color", m_output.color,
            "Colours on standard error; default auto: on a terminal, unless NO_COLOR is set")
        ->check(OneOf(std::vector<std::string>{"auto", "always", "never"}))
        ->type_name("auto|always|never");
}

void Parser::AddConfig() {
    CLI::App& command = AddCommand("config", "Shows or changes the defaults of all commands",
                                   [this] { return ParsedArguments(m_config); });
    command
        .add_option_function<std::string>(
            "ACTION",
            [this](const std::string& action) { m_config.action = ConfigActions.at(action); },
            "show (default), set NAME VALUE or unset NAME")
        ->check(OneOf(ConfigActions))
        ->type_name("");
    command.add_option("WORDS", m_config.words, "A setting: address, color or quiet; its value")
        ->type_name("");
}

}  // namespace krv::cli
