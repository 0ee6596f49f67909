// The commands and options of the parser.
#include <algorithm>
#include <map>
#include <string_view>

#include "cli/Choices.h"
#include "cli/Parser.h"
#include "common/NearMiss.h"
#include "simulator/device/GeneratorSettings.h"
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

const std::string AddressUse =
    "Instrument: HOST[:PORT], serial://DEVICE, sim://MODEL or a VISA resource such as "
    "GPIB0::19::INSTR";
const std::string RequiredAddress =
    AddressUse + "; default: KRV_ADDRESS, or the setting of krv config";

// An option that takes one of the table's words.
CLI::Option* AddChoice(CLI::App& command, const std::string& name, int& chosen,
                       const std::map<std::string, int>& words, const std::string& description) {
    const auto choose = [&chosen, &words](const std::string& word) { chosen = words.at(word); };
    return command.add_option_function<std::string>(name, choose, description)->check(OneOf(words));
}

// Leaves out of the help what the manual says better.
class BriefFormatter final : public CLI::Formatter {
 public:
    std::string make_option_opts(const CLI::Option* option) const override {
        const std::string type = option->get_type_size() == 0 ? "" : option->get_type_name();
        return (type.empty() ? "" : ' ' + type) + (option->get_required() ? " (required)" : "");
    }
};

CLI::Validator KnownModel() {
    const auto fault = [](const std::string& model) {
        const std::vector<std::string> known(suite::SupportedModels.begin(),
                                             suite::SupportedModels.end());
        return std::ranges::find(known, model) != known.end()
                   ? std::string()
                   : "The model \"" + model +
                         "\" is not known. Known models: " + suite::SupportedModelNames() + '.' +
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
    formatter->label("Positionals", "Arguments");
    m_app.formatter(formatter);
    m_app.set_version_flag("--version", "krv " KRV_VERSION, "Prints the version");
    m_app.set_help_flag("-h,--help", "Prints this help");
    m_app.footer("'krv help COMMAND' prints the help for one command.");
    AddProgramOptions();
    AddSim();
    AddList();
    AddIdentify();
    AddWaveformCommand(WaveformCommand::Check, "check",
                       "Checks waveform files for the connected instrument and estimates the "
                       "download time; sends no waveform");
    AddWaveformCommand(WaveformCommand::Download, "download",
                       "Converts waveform files and writes them to the instrument's memory");
    AddWaveformCommand(WaveformCommand::Convert, "convert",
                       "Converts waveform files to files of codes; needs no instrument");
    AddFormats();
    AddImport();
    AddInfo();
    AddPlot();
    AddPanelCommands();
    AddImage();
    AddStateCommand(m_capture, "capture", "Saves the instrument's complete state to a file",
                    "File to write");
    AddStateCommand(m_restore, "restore",
                    "Sends a captured state back to the instrument that it came from",
                    "File written by krv capture");
    AddDoctor();
    AddConfig();
    AddCompletion();
    AddHelp();
}

CLI::App& Parser::AddCommand(const std::string& name, const std::string& description,
                             std::function<ParsedArguments()> filled) {
    CLI::App& command = *m_app.add_subcommand(name, description);
    m_commands.emplace_back(&command, std::move(filled));
    command.group("Commands");
    command.footer("");
    command.set_help_flag("-h,--help", "Prints this help");
    command.fallthrough();
    return command;
}

void Parser::TakeModel(CLI::Option& option) {
    option.type_name("M");
    option.check(KnownModel());
    m_words[&option].assign(suite::SupportedModels.begin(), suite::SupportedModels.end());
}

void Parser::AddSim() {
    const simulator::GeneratorSettings usual;
    CLI::App& command =
        AddCommand("sim", "Runs a simulated generator on this computer until Ctrl-C",
                   [this] { return ParsedArguments(m_sim); });
    TakeModel(
        *command.add_option("--model", m_sim.model,
                            "Model: " + suite::SupportedModelNames() + "; default " + usual.model));
    command
        .add_option("--options", m_sim.options,
                    "Installed options, separated by commas; default " + usual.options.front())
        ->type_name("A,B");
    command
        .add_option("--firmware", m_sim.firmware, "Firmware revision; default " + usual.firmware)
        ->type_name("REV");
    command
        .add_option("--serial", m_sim.serialNumber,
                    "Serial number; the default is made of the port")
        ->type_name("S");
    command
        .add_option("--port", m_sim.port,
                    "TCP port to listen on; default 0, which picks a free port")
        ->type_name("N");
    command
        .add_option(
            "--memory-points", m_sim.memoryPoints,
            "Size of the waveform memory in points; default " + std::to_string(usual.memoryPoints))
        ->type_name("N")
        ->check(CLI::Range(std::int64_t{0}, MaxMemoryPoints).description(""));
    AddSimServices(command);
    AddSimFiles(command);
    command
        .add_option("--fault", m_sim.faults,
                    "Fault to simulate: delay=MS, bandwidth=BYTES, disconnect=N, truncate-reply, "
                    "never-answer, error=CODE,TEXT, memory-full or corrupt-data; may be repeated")
        ->type_name("F")
        ->expected(1)
        ->take_all();
    AddJsonOption(command, m_sim.json);
}

void Parser::AddSimServices(CLI::App& command) {
    CLI::Option* const vxi11 =
        command.add_flag("--vxi11", m_sim.vxi11, "Serves over VXI-11, too, with a port mapper");
    command
        .add_option("--portmap", m_sim.mapperPort,
                    "Port of the port mapper; default 111, which clients expect and which needs an "
                    "administrator's rights; 0 picks a free port")
        ->type_name("N")
        ->needs(vxi11);
    command.add_flag(
        "--announce", m_sim.announce,
        "Answers programs on this computer that look for instruments by multicast DNS");
}

void Parser::AddSimFiles(CLI::App& command) {
    command.add_option("--store", m_sim.storeFolder, "Folder to write the received waveforms to")
        ->type_name("DIR");
    command
        .add_option("--transcript", m_sim.transcriptFile,
                    "File for a transcript of all conversations")
        ->type_name("FILE");
}

void Parser::AddConnectionOptions(CLI::App& command, ConnectionArguments& arguments,
                                  bool isRequired) {
    m_connections.push_back(&arguments);
    arguments.isRequired = isRequired;
    command.add_option("--address", arguments.address, isRequired ? RequiredAddress : AddressUse)
        ->type_name("A");
    AddLogOption(command, arguments);
    AddVisaOption(command, arguments.visaLibrary);
}

void Parser::AddAddresses(CLI::App& command, WaveformArguments& arguments) {
    m_connections.push_back(&arguments.connection);
    arguments.connection.isRequired = true;
    command
        .add_option("--address", arguments.addresses,
                    RequiredAddress + ". May be repeated: all instruments at once")
        ->type_name("A")
        ->expected(1)
        ->take_all();
    AddLogOption(command, arguments.connection);
    AddVisaOption(command, arguments.connection.visaLibrary);
}

void Parser::AddLogOption(CLI::App& command, ConnectionArguments& arguments) {
    command
        .add_option("--log", arguments.logFile,
                    "File for a transcript of the conversation with the instrument")
        ->type_name("FILE");
}

void Parser::AddVisaOption(CLI::App& command, std::optional<std::string>& library) {
    command
        .add_option("--visa", library,
                    "VISA library to use; default: KRV_VISA, or the setting of krv config, or the "
                    "installed one")
        ->type_name("FILE");
}

void Parser::AddList() {
    CLI::App& command = AddCommand("list", "Lists the instruments that krv can find",
                                   [this] { return ParsedArguments(m_list); });
    command.add_option("--host", m_list.computer, "Another computer to search")->type_name("H");
    AddVisaOption(command, m_list.visaLibrary);
    AddJsonOption(command, m_list.json);
}

void Parser::AddIdentify() {
    CLI::App& command =
        AddCommand("identify", "Shows the instrument's model, firmware, serial number and options",
                   [this] { return ParsedArguments(m_identify); });
    AddConnectionOptions(command, m_identify.connection);
    AddJsonOption(command, m_identify.json);
}

void Parser::AddImage() {
    CLI::App& command = AddCommand("image", "Saves the instrument's screen image to a file",
                                   [this] { return ParsedArguments(m_image); });
    command
        .add_option("FILE", m_image.file,
                    "File to write: .gif, .bmp, .wmf, .jpg, .jpeg, .tif, .tiff or .emf")
        ->required()
        ->type_name("");
    AddConnectionOptions(command, m_image.connection);
    command.add_flag("--yes", m_image.answerYes,
                     "Answers OK to the instructions for a capture by hand");
    AddJsonOption(command, m_image.json);
}

void Parser::AddStateCommand(StateArguments& arguments, const std::string& name,
                             const std::string& description, const std::string& fileUse) {
    CLI::App& command =
        AddCommand(name, description, [&arguments] { return ParsedArguments(arguments); });
    command.add_option("FILE", arguments.file, fileUse)->required()->type_name("");
    AddConnectionOptions(command, arguments.connection);
    AddJsonOption(command, arguments.json);
}

void Parser::AddWaveformCommand(WaveformCommand kind, const std::string& name,
                                const std::string& description) {
    auto& arguments = *m_waveforms.emplace_back(std::make_unique<WaveformArguments>());
    arguments.command = kind;
    CLI::App& command = AddCommand(name, description, [&arguments] {
        if (!arguments.addresses.empty()) {
            arguments.connection.address = arguments.addresses.front();
        }
        return ParsedArguments(arguments);
    });
    if (kind == WaveformCommand::Convert) {
        TakeModel(*command
                       .add_option("--model", arguments.model,
                                   "Model to convert for: " + suite::SupportedModelNames())
                       ->required());
        command.add_option("--output", arguments.outputFolder, "Folder to write the codes to")
            ->required()
            ->type_name("DIR");
    } else if (kind == WaveformCommand::Download) {
        AddAddresses(command, arguments);
    } else {
        AddConnectionOptions(command, arguments.connection);
    }
    AddSourceOptions(command, arguments);
    AddMarkerOptions(command, arguments);
    if (kind == WaveformCommand::Download) {
        command
            .add_option("--name", arguments.name,
                        "Name of the waveform in the instrument; default: made from the I file's "
                        "name")
            ->type_name("NAME");
        command.add_flag("--verify", arguments.verify,
                         "Compares the checksums of what the instrument holds with those of what "
                         "was sent");
        command.add_flag("--replace", arguments.replace,
                         "Replaces a waveform of the same name without a question");
        command.add_flag("--play", arguments.play, "Plays the waveform afterwards");
    }
    command.add_flag("--yes", arguments.answerYes, "Answers Yes to all questions");
    command.add_option("--report", arguments.reportFile, "File for a JSON report of the run")
        ->type_name("FILE");
    AddJsonOption(command, arguments.json);
}

void Parser::AddSourceOptions(CLI::App& command, WaveformArguments& arguments) {
    command.add_option("--i", arguments.iFile, "File of I data, or of interleaved I and Q data")
        ->required()
        ->type_name("FILE");
    CLI::Option* const qFile =
        command.add_option("--q", arguments.qFile, "File of Q data")->type_name("FILE");
    command
        .add_flag("--find-q", arguments.findQ,
                  "Finds the Q file by the I file's name; fails when there is none")
        ->excludes(qFile);
    AddChoice(command, "--file-type", arguments.fileType, FileTypes,
              "Format of the files; default ascii")
        ->type_name("ascii|little-endian|big-endian");
    AddChoice(command, "--type", arguments.waveformType, WaveformTypes,
              "Meaning of the values; default waveform")
        ->type_name("waveform|14-bit|16-bit");
    command
        .add_option("--scale", arguments.scale,
                    "Peak as a percentage of full scale, at most 100; default 100")
        ->type_name("PERCENT");
    AddImportOptions(command, arguments.import);
}

void Parser::AddImportOptions(CLI::App& command, ImportArguments& arguments) {
    command
        .add_option("--raw", arguments.raw,
                    "What a file without a header holds, e.g. ci16_le, cf32_be, cu8 or rf64")
        ->type_name("TYPE");
    command
        .add_option("--range", arguments.range,
                    "The points of an imported file that are taken; the first counts as 0")
        ->type_name("FIRST:COUNT");
    command
        .add_option("--resample-to", arguments.resampleTo,
                    "Sample rate to resample an imported file to, in Hz, or with a unit: 100MHz")
        ->type_name("HZ");
    command.add_flag("--normalize", arguments.normalize,
                     "Brings an imported file's peak to full scale, as --scale 100 does");
}

void Parser::AddFormats() {
    CLI::App& command = AddCommand("formats", "Lists the files of other programs that can be read",
                                   [this] { return ParsedArguments(m_formats); });
    AddJsonOption(command, m_formats.json);
}

void Parser::AddImport() {
    CLI::App& command = AddCommand(
        "import", "Writes a file of another program as files that the download dialog reads",
        [this] { return ParsedArguments(m_import); });
    command
        .add_option("FILE", m_import.file,
                    "File to read, with its columns as in FILE:I,Q,M where they are to be named; - "
                    "for standard input")
        ->required()
        ->type_name("");
    command.add_option("--output", m_import.outputFolder, "Folder to write the files to")
        ->required()
        ->type_name("DIR");
    AddChoice(command, "--file-type", m_import.fileType, FileTypes,
              "What the files are to hold; default ascii")
        ->type_name("ascii|little-endian|big-endian");
    AddChoice(command, "--type", m_import.waveformType, WaveformTypes,
              "What the values are to be; default waveform, the numbers as they are")
        ->type_name("waveform|14-bit|16-bit");
    command
        .add_option(
            "--scale", m_import.scale,
            "Brings the peak to this percentage of full scale; without it nothing is scaled")
        ->type_name("PERCENT");
    AddImportOptions(command, m_import.import);
    command.add_option("--report", m_import.reportFile, "File to write a JSON summary to")
        ->type_name("FILE");
    AddJsonOption(command, m_import.json);
}

void Parser::AddInfo() {
    CLI::App& command = AddCommand(
        "info", "Shows the figures of a waveform: level, crest factor, clipping, bandwidth",
        [this] { return ParsedArguments(m_info); });
    command
        .add_option("FILE", m_info.source,
                    "File to measure, as krv import takes it; with --address the name of a "
                    "waveform in the instrument")
        ->required()
        ->type_name("");
    AddConnectionOptions(command, m_info.connection, false);
    AddImportOptions(command, m_info.import);
    AddJsonOption(command, m_info.json);
}

void Parser::AddPlot() {
    CLI::App& command =
        AddCommand("plot", "Draws a waveform: I and Q, spectrum, constellation, CCDF and markers",
                   [this] { return ParsedArguments(m_plot); });
    command.add_option("FILE", m_plot.source, "File to draw, as krv import takes it")
        ->required()
        ->type_name("");
    command
        .add_option("--output", m_plot.output,
                    "Picture to write, .svg or .png; without it the plot is shown as text")
        ->type_name("FILE");
    AddImportOptions(command, m_plot.import);
    command.add_flag("--dark", m_plot.isDark, "Draws on a dark background");
    command.add_flag("--large", m_plot.isLarge, "Makes a .png twice as wide and high");
    command.add_flag("--ascii", m_plot.isAscii, "Shows the plot with nothing but ASCII");
    AddJsonOption(command, m_plot.json);
}

void Parser::AddMarkerOptions(CLI::App& command, WaveformArguments& arguments) {
    CLI::Option* const file = command
                                  .add_option("--marker-file", arguments.markerFile,
                                              "File of marker values, one for each point")
                                  ->type_name("FILE");
    CLI::Option* const find = command.add_flag("--find-marker", arguments.findMarker,
                                               "Finds the marker file by the I file's name");
    find->excludes(file);
    command
        .add_option("--marker-start", arguments.markerStart,
                    "First point of a marker pulse, counted from 0; default 0. In interleaved "
                    "data each I value and each Q value counts as one")
        ->excludes(file)
        ->excludes(find)
        ->type_name("N");
    command
        .add_option("--marker-length", arguments.markerLength,
                    "Points in the marker pulse; default 0, which gives no pulse")
        ->excludes(file)
        ->excludes(find)
        ->type_name("N");
}

}  // namespace krv::cli
