// The commands and options of the parser.
#include <map>

#include "cli/NearMiss.h"
#include "cli/Parser.h"
#include "suite/scpi/SupportedModels.h"
#include "waveform/dialog/frmDataTransfer.h"

namespace krv::cli {
namespace {

// More than there are addresses for.
constexpr std::int64_t MaxMemoryPoints = std::int64_t{1} << 48;

const std::map<std::string, int> FileTypes{{"ascii", waveform::FileTypeIndex::Ascii},
                                           {"little-endian", waveform::FileTypeIndex::LittleEndian},
                                           {"big-endian", waveform::FileTypeIndex::BigEndian}};
const std::map<std::string, int> WaveformTypes{{"waveform", waveform::WaveformTypeIndex::Scalable},
                                               {"14-bit", waveform::WaveformTypeIndex::Internal14},
                                               {"16-bit", waveform::WaveformTypeIndex::Internal16}};

// An option that takes one of the table's words.
CLI::Option* AddChoice(CLI::App& command, const std::string& name, int& chosen,
                       const std::map<std::string, int>& words, const std::string& description) {
    const auto choose = [&chosen, &words](const std::string& word) { chosen = words.at(word); };
    return command.add_option_function<std::string>(name, choose, description)
        ->check(CLI::IsMember(words).description(""));
}

// Leaves out of the help what the manual says better.
class BriefFormatter final : public CLI::Formatter {
 public:
    std::string make_option_opts(const CLI::Option* option) const override {
        const std::string type = option->get_type_name();
        return (option->get_type_size() == 0 ? "" : ' ' + type) +
               (option->get_required() ? " (required)" : "");
    }
};

CLI::Validator KnownModel() {
    const auto fault = [](const std::string& model) {
        const std::vector<std::string> known(suite::SupportedModels.begin(),
                                             suite::SupportedModels.end());
        std::string names;
        for (const std::string& name : known) {
            if (name == model) {
                return std::string();
            }
            names += (names.empty() ? "" : ", ") + name;
        }
        return "The model \"" + model + "\" is not known; models that are: " + names + '.' +
               NearMissHint(model, known);
    };
    return {fault, ""};
}

}  // namespace

Parser::Parser() {
    m_app.allow_windows_style_options(false);
    m_app.require_subcommand(1);
    const auto formatter = std::make_shared<BriefFormatter>();
    formatter->label("SUBCOMMAND", "COMMAND");
    formatter->label("Subcommands", "Commands");
    m_app.formatter(formatter);
    m_app.set_version_flag("--version", "krv " KRV_VERSION, "Shows the program's version");
    m_app.set_help_flag("-h,--help", "Shows how to use the program");
    m_app.footer("'krv help COMMAND' shows how to use a command.");
    m_app
        .add_option("--log", m_logFile,
                    "File to write down in what a command sends to the instrument and receives")
        ->type_name("FILE");
    AddSim();
    AddList();
    AddIdentify();
    AddWaveformCommand(WaveformCommand::Check, "check",
                       "Reads and validates waveform files for the connected instrument and "
                       "estimates the download time; sends nothing");
    AddWaveformCommand(WaveformCommand::Download, "download",
                       "Converts waveform files and writes them into the instrument's memory");
    AddWaveformCommand(WaveformCommand::Convert, "convert",
                       "Converts waveform files into files of DAC codes; contacts nothing");
    AddImage();
    AddStateCommand(m_capture, "capture", "Keeps the instrument's complete state in a file",
                    "File to write");
    AddStateCommand(m_restore, "restore", "Sends a captured state back to its instrument",
                    "File that krv capture has written");
    AddHelp();
}

CLI::App& Parser::AddCommand(const std::string& name, const std::string& description) {
    CLI::App& command = *m_app.add_subcommand(name, description);
    command.set_help_flag("-h,--help", "Shows how to use the command");
    return command;
}

void Parser::AddSim() {
    CLI::App& command =
        AddCommand("sim", "Runs a simulated generator that listens on 127.0.0.1 until Ctrl-C");
    m_simCommand = &command;
    command.add_option("--model", m_sim.model, "Model, e.g. M7718C or M771XB")
        ->type_name("M")
        ->check(KnownModel());
    command.add_option("--options", m_sim.options, "Installed options, separated by commas")
        ->type_name("A,B");
    command.add_option("--firmware", m_sim.firmware, "Firmware revision")->type_name("REV");
    command.add_option("--serial", m_sim.serialNumber, "Serial number")->type_name("S");
    command.add_option("--port", m_sim.port, "TCP port; 0, the default, picks a free one")
        ->type_name("N");
    command
        .add_option("--memory-points", m_sim.memoryPoints, "Size of the waveform memory in points")
        ->type_name("N")
        ->check(CLI::Range(std::int64_t{0}, MaxMemoryPoints).description(""));
    command
        .add_option("--store", m_sim.storeFolder, "Folder that received waveforms are written to")
        ->type_name("DIR");
    command
        .add_option("--transcript", m_sim.transcriptFile,
                    "File to write down in what is received and answered")
        ->type_name("FILE");
    command
        .add_option("--fault", m_sim.faults, "Fault to simulate, as NAME or NAME=VALUE; repeatable")
        ->type_name("F")
        ->expected(1)
        ->take_all();
}

void Parser::AddConnectionOptions(CLI::App& command, ConnectionArguments& arguments) {
    m_connections.push_back(&arguments);
    command
        .add_option("--address", arguments.address, "HOST[:PORT], serial://DEVICE or sim://MODEL")
        ->required()
        ->type_name("A");
    command
        .add_option("--log", arguments.logFile,
                    "File to write down in what is sent to the instrument and received from it")
        ->type_name("FILE");
}

void Parser::AddList() {
    CLI::App& command = AddCommand("list", "Lists the instruments that can be found");
    m_listCommand = &command;
    command.add_option("--host", m_list.computer, "Computer to look at besides this one")
        ->type_name("H");
}

void Parser::AddIdentify() {
    CLI::App& command = AddCommand("identify", "Shows what the connected instrument is");
    m_identifyCommand = &command;
    AddConnectionOptions(command, m_identify.connection);
}

void Parser::AddImage() {
    CLI::App& command = AddCommand("image", "Saves a picture of the instrument's display");
    m_imageCommand = &command;
    command
        .add_option("FILE", m_image.file,
                    "File to write; its ending says as what: .gif, .bmp, .wmf, .jpg, .tif or .emf")
        ->required()
        ->type_name("");
    AddConnectionOptions(command, m_image.connection);
    command.add_flag("--yes", m_image.answerYes, "Takes the screen as captured by hand");
}

void Parser::AddStateCommand(StateArguments& arguments, const std::string& name,
                             const std::string& description, const std::string& fileUse) {
    CLI::App& command = AddCommand(name, description);
    m_stateCommands.emplace_back(&command, &arguments);
    command.add_option("FILE", arguments.file, fileUse)->required()->type_name("");
    AddConnectionOptions(command, arguments.connection);
}

void Parser::AddWaveformCommand(WaveformCommand kind, const std::string& name,
                                const std::string& description) {
    CLI::App& command = AddCommand(name, description);
    auto& arguments =
        *m_waveformCommands.emplace_back(&command, std::make_unique<WaveformArguments>()).second;
    arguments.command = kind;
    if (kind == WaveformCommand::Convert) {
        command.add_option("--model", arguments.model, "Model to convert for, e.g. M7718C")
            ->required()
            ->type_name("M")
            ->check(KnownModel());
        command.add_option("--output", arguments.outputFolder, "Folder to write the codes to")
            ->required()
            ->type_name("DIR");
    } else {
        AddConnectionOptions(command, arguments.connection);
    }
    AddSourceOptions(command, arguments);
    AddMarkerOptions(command, arguments);
    if (kind == WaveformCommand::Download) {
        command
            .add_option("--name", arguments.name,
                        "Name of the waveform in the instrument; made from the I file's name "
                        "without it")
            ->type_name("NAME");
        command.add_flag("--verify", arguments.verify,
                         "Has the instrument tell what it received, and compares that with what "
                         "was sent");
    }
    command.add_flag("--yes", arguments.answerYes, "Answers Yes to every question");
    command.add_option("--report", arguments.reportFile, "File to write a JSON summary to")
        ->type_name("FILE");
}

void Parser::AddSourceOptions(CLI::App& command, WaveformArguments& arguments) {
    command.add_option("--i", arguments.iFile, "File of I data, or of interleaved I and Q data")
        ->required()
        ->type_name("FILE");
    CLI::Option* const qFile =
        command.add_option("--q", arguments.qFile, "File of Q data")->type_name("FILE");
    command
        .add_flag("--find-q", arguments.findQ,
                  "Finds the Q file by the I file's name; without one it fails")
        ->excludes(qFile);
    AddChoice(command, "--file-type", arguments.fileType, FileTypes,
              "What the files hold; default ascii")
        ->type_name("ascii|little-endian|big-endian");
    AddChoice(command, "--type", arguments.waveformType, WaveformTypes,
              "What the values are; default waveform")
        ->type_name("waveform|14-bit|16-bit");
    command
        .add_option("--scale", arguments.scale, "Percentage of the full output range; default 100")
        ->type_name("PERCENT");
}

void Parser::AddMarkerOptions(CLI::App& command, WaveformArguments& arguments) {
    CLI::Option* const file =
        command.add_option("--marker-file", arguments.markerFile, "File of marker values")
            ->type_name("FILE");
    CLI::Option* const find = command.add_flag("--find-marker", arguments.findMarker,
                                               "Finds the marker file by the I file's name");
    find->excludes(file);
    command
        .add_option("--marker-start", arguments.markerStart,
                    "First point of a marker pulse, counted from 0; in interleaved data each I and "
                    "each Q value counts")
        ->excludes(file)
        ->excludes(find)
        ->type_name("N");
    command
        .add_option("--marker-length", arguments.markerLength,
                    "Points of the marker pulse; 0, the default, gives none")
        ->excludes(file)
        ->excludes(find)
        ->type_name("N");
}

void Parser::AddHelp() {
    CLI::App& command = AddCommand("help", "Shows how to use the program or a command");
    m_helpCommand = &command;
    command.add_option("COMMAND", m_helpTopic, "The command to tell about");
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

}  // namespace krv::cli
