// The parser's commands that stand for the instrument's front panel.
#include <map>
#include <string>
#include <vector>

#include "cli/Choices.h"
#include "cli/Parser.h"

namespace krv::cli {
namespace {

const std::map<std::string, FilesAction> FilesActions{{"list", FilesAction::List},
                                                      {"delete", FilesAction::Delete},
                                                      {"copy", FilesAction::Copy},
                                                      {"rename", FilesAction::Rename}};

}  // namespace

void Parser::AddPanelCommands() {
    CLI::App& status =
        AddCommand("status", "Shows the output, the playing waveform and the waveform memory",
                   [this] { return ParsedArguments(m_status); });
    AddConnectionOptions(status, m_status.connection);
    AddJsonOption(status, m_status.json);
    AddFiles();
    AddPlay();
    AddSet();
    CLI::App& send = AddCommand("send", "Sends an SCPI message and prints the reply to a query",
                                [this] { return ParsedArguments(m_send); });
    send.add_option("MESSAGE", m_send.message, "For example 'FREQ?' or 'OUTP ON'")
        ->required()
        ->type_name("");
    AddConnectionOptions(send, m_send.connection);
    AddJsonOption(send, m_send.json);
}

void Parser::AddFiles() {
    CLI::App& command =
        AddCommand("files", "Lists, deletes, copies or renames the instrument's waveforms",
                   [this] { return ParsedArguments(m_files); });
    CLI::Option* const action = command.add_option_function<std::string>(
        "ACTION", [this](const std::string& word) { m_files.action = FilesActions.at(word); },
        "list (default), delete NAME..., copy NAME NEW or rename NAME NEW");
    Restrict(*action, {"list", "delete", "copy", "rename"});
    command.add_option("NAMES", m_files.names, "Names of waveforms in the instrument")
        ->type_name("");
    AddConnectionOptions(command, m_files.connection);
    command.add_flag("--yes", m_files.answerYes, "Deletes and replaces without a question");
    AddJsonOption(command, m_files.json);
}

void Parser::AddPlay() {
    CLI::App& play = AddCommand("play", "Plays a waveform that is in the instrument's memory",
                                [this] { return ParsedArguments(m_play); });
    play.add_option("NAME", m_play.name, "The waveform's name in the instrument")
        ->required()
        ->type_name("");
    AddConnectionOptions(play, m_play.connection);
    AddJsonOption(play, m_play.json);
    CLI::App& stop = AddCommand("stop", "Stops playing; the waveform stays selected",
                                [this] { return ParsedArguments(m_stop); });
    AddConnectionOptions(stop, m_stop.connection);
    AddJsonOption(stop, m_stop.json);
}

void Parser::AddSet() {
    CLI::App& command = AddCommand("set", "Sets frequency, level, sample clock and RF output",
                                   [this] { return ParsedArguments(m_set); });
    command.add_option("--frequency", m_set.frequency, "Frequency in Hz, or with a unit: 2.4GHz")
        ->type_name("N");
    command.add_option("--level", m_set.level, "Level in dBm: -10 or -10dBm")->type_name("N");
    command.add_option("--clock", m_set.sampleClock, "Sample clock in Hz, or with a unit: 80MHz")
        ->type_name("N");
    command
        .add_option_function<std::string>(
            "--rf", [this](const std::string& word) { m_set.output = word == "on"; },
            "Switches the RF output on or off, after everything else is set")
        ->check(OneOf(std::vector<std::string>{"on", "off"}))
        ->type_name("on|off");
    AddConnectionOptions(command, m_set.connection);
    AddJsonOption(command, m_set.json);
}

}  // namespace krv::cli
