// A parsed command line: what was asked for, as plain data.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace krv::cli {

struct SimArguments {
    std::optional<std::string> model;
    // Separated by commas; empty for an instrument without options.
    std::optional<std::string> options;
    std::optional<std::string> firmware;
    std::optional<std::string> serialNumber;
    std::uint16_t port = 0;
    std::optional<std::uint64_t> memoryPoints;
    std::optional<std::string> storeFolder;
    std::optional<std::string> transcriptFile;
    std::vector<std::string> faults;
    // Serves over VXI-11, too, with a port mapper at this port.
    bool vxi11 = false;
    std::uint16_t mapperPort = 111;
    // Answers multicast DNS.
    bool announce = false;
    bool json = false;
};

// How the commands that talk to an instrument reach it.
struct ConnectionArguments {
    // Without a value where the command line doesn't name it.
    std::optional<std::string> address;
    // The command can't do without an address.
    bool isRequired = false;
    // The file that the conversation is written down in.
    std::optional<std::string> logFile;
    // The VISA library's file or name; without a value where the command line names none.
    std::optional<std::string> visaLibrary;
};

struct IdentifyArguments {
    ConnectionArguments connection;
    bool json = false;
};

struct ListArguments {
    // Searched besides this one.
    std::optional<std::string> computer;
    // Of the instrument that commands use without an option; empty for none.
    std::string usualAddress;
    // As of a connection.
    std::optional<std::string> visaLibrary;
    bool json = false;
};

struct ImageArguments {
    ConnectionArguments connection;
    std::string file;
    bool answerYes = false;
    bool json = false;
};

enum class StateCommand : std::uint8_t { Capture, Restore };

struct StateArguments {
    StateCommand command;
    ConnectionArguments connection;
    std::string file;
    bool json = false;
};

// How a file of another program is read, and what is done to its samples.
struct ImportArguments {
    // What the file holds without a header, e.g. "ci16_le".
    std::optional<std::string> raw;
    // FIRST:COUNT
    std::optional<std::string> range;
    std::optional<std::string> resampleTo;
    bool normalize = false;
};

// The command that writes the dialog's files.
struct ImportFileArguments {
    std::string file;
    std::string outputFolder;
    ImportArguments import;
    // List indexes of the dialog's combo boxes.
    int fileType = 0;
    int waveformType = 0;
    std::optional<std::string> scale;
    std::optional<std::string> reportFile;
    bool json = false;
};

struct InfoArguments {
    // A file, or the name of a waveform where there is an address.
    std::string source;
    ConnectionArguments connection;
    ImportArguments import;
    bool json = false;
};

struct PlotArguments {
    std::string source;
    ImportArguments import;
    // The picture; without it the plot goes to standard output.
    std::optional<std::string> output;
    bool isDark = false;
    // Two pixels for each unit of the sheet.
    bool isLarge = false;
    bool isAscii = false;
    // Of what was drawn into a picture.
    bool json = false;
};

// The command that lists what can be imported.
struct FormatsArguments {
    bool json = false;
};

struct StatusArguments {
    ConnectionArguments connection;
    bool json = false;
};

enum class FilesAction : std::uint8_t { List, Delete, Copy, Rename };

struct FilesArguments {
    ConnectionArguments connection;
    FilesAction action = FilesAction::List;
    // Of waveforms in the instrument.
    std::vector<std::string> names;
    bool answerYes = false;
    bool json = false;
};

struct PlayArguments {
    ConnectionArguments connection;
    // Without a name playing stops.
    std::optional<std::string> name;
    bool json = false;
};

struct SetArguments {
    ConnectionArguments connection;
    // With or without units.
    std::optional<std::string> frequency;
    std::optional<std::string> level;
    std::optional<std::string> sampleClock;
    std::optional<bool> output;
    bool json = false;
};

struct SendArguments {
    ConnectionArguments connection;
    std::string message;
    bool json = false;
};

enum class WaveformCommand : std::uint8_t { Check, Download, Convert };

// What goes into the dialog is kept as text: the dialog decides whether it is valid.
struct WaveformArguments {
    WaveformCommand command = WaveformCommand::Check;
    std::string iFile;
    std::optional<std::string> qFile;
    bool findQ = false;
    // List indexes of the dialog's combo boxes.
    int fileType = 0;
    int waveformType = 0;
    std::optional<std::string> scale;
    ImportArguments import;
    std::optional<std::string> markerFile;
    bool findMarker = false;
    std::optional<std::string> markerStart;
    std::optional<std::string> markerLength;
    bool answerYes = false;
    std::optional<std::string> reportFile;
    bool json = false;
    // Check and download.
    ConnectionArguments connection;
    // Download. The connection has the first one.
    std::vector<std::string> addresses;
    bool verify = false;
    // A waveform of the same name is replaced without a question.
    bool replace = false;
    bool play = false;
    // Without a value the generated name is used.
    std::optional<std::string> name;
    // Convert.
    std::string model;
    std::string outputFolder;
};

struct DoctorArguments {
    ConnectionArguments connection;
    // Mends what it can.
    bool repair = false;
    // The archive to write for a report.
    std::optional<std::string> bundleFile;
    // Leaves paths and serial numbers out of the archive.
    bool isPrivate = false;
    bool json = false;
};

enum class ConfigAction : std::uint8_t { Show, Set, Unset };

struct ConfigArguments {
    ConfigAction action = ConfigAction::Show;
    // A setting's name, and its value.
    std::vector<std::string> words;
    bool json = false;
};

// The user guide, in the user's browser.
struct OpenGuideArguments {};

// A command line that is answered with a text: help, the version, or what is wrong with it.
struct TextAnswer {
    int exitCode = 0;
    // What is wrong with the command line has no line end.
    std::string text;
};

using ParsedArguments =
    std::variant<TextAnswer, SimArguments, ListArguments, IdentifyArguments, StatusArguments,
                 FilesArguments, PlayArguments, SetArguments, SendArguments, ImageArguments,
                 StateArguments, WaveformArguments, FormatsArguments, ImportFileArguments,
                 InfoArguments, PlotArguments, DoctorArguments, ConfigArguments,
                 OpenGuideArguments>;

// What the command line says of the output of any command.
struct OutputArguments {
    std::optional<bool> isQuiet;
    // "auto", "always" or "never".
    std::optional<std::string> color;
};

struct CommandRequest {
    ParsedArguments arguments;
    OutputArguments output;
};

}  // namespace krv::cli
