// The commands that stand for the instrument's front panel.
#include <algorithm>
#include <iomanip>
#include <optional>
#include <ostream>

#include "cli/Commands.h"
#include "cli/EndOnInterruption.h"
#include "cli/ExitCode.h"
#include "cli/InstrumentLink.h"
#include "cli/JsonOutput.h"
#include "cli/Messages.h"
#include "cli/ProgressLines.h"
#include "cli/Quantity.h"
#include "cli/TerminalMessageBoxes.h"
#include "common/Joined.h"
#include "common/Numbers.h"
#include "common/Text.h"
#include "suite/scpi/InstrumentPanel.h"
#include "suite/scpi/ScpiInstrument.h"

namespace krv::cli {
namespace {

// Connects, lets the work use the panel, disconnects, and tells a program of it.
template <class Work>
int WithPanel(const ConnectionArguments& arguments, Console& console, CommandOutput& output,
              Work work) {
    const EndOnInterruption end(console.interruptions);
    InstrumentLink link(arguments);
    suite::InstrumentPanel panel(link.Server()->ScpiAccess());
    const int exitCode = work(link, panel);
    link.Finish();
    if (exitCode == ExitCode::Done) {
        output.Finish();
    }
    return exitCode;
}

void PrintFiles(const suite::MemoryContent& memory, std::ostream& out) {
    std::size_t width = 0;
    for (const suite::StoredFile& file : memory.files) {
        width = std::max(width, file.name.size());
    }
    for (const suite::StoredFile& file : memory.files) {
        out << std::left << std::setw(static_cast<int>(width) + 2) << file.name << file.points
            << (file.isInterleaved ? " points, interleaved\n" : " points, separate arrays\n");
    }
    out << memory.files.size() << (memory.files.size() == 1 ? " waveform, " : " waveforms, ")
        << memory.usedPoints << " points used, " << memory.freePoints << " free\n";
}

OutputJson MemoryJson(const suite::MemoryContent& memory) {
    return {{"usedPoints", memory.usedPoints}, {"freePoints", memory.freePoints}};
}

OutputJson WaveformsJson(const suite::MemoryContent& memory) {
    OutputJson waveforms = OutputJson::array();
    for (const suite::StoredFile& file : memory.files) {
        waveforms.push_back(
            {{"name", file.name}, {"points", file.points}, {"interleaved", file.isInterleaved}});
    }
    return waveforms;
}

bool Agrees(const std::string& question, const FilesArguments& arguments, Console& console) {
    ProgressLines progress(nullptr, console.progressWidth);
    return TerminalMessageBoxes(console, progress, arguments.answerYes)
               .Show({question, "krv files", ports::MessageIcon::None,
                      ports::MessageButtons::YesNo}) == ports::MessageAnswer::Yes;
}

int ListFiles(suite::InstrumentPanel& panel, CommandOutput& output) {
    const suite::MemoryContent memory = panel.Memory();
    PrintFiles(memory, output.Text());
    output["waveforms"] = WaveformsJson(memory);
    output["memory"] = MemoryJson(memory);
    return ExitCode::Done;
}

int DeleteFiles(suite::InstrumentPanel& panel, const FilesArguments& arguments, Console& console,
                CommandOutput& output) {
    if (!Agrees("Delete " + Joined(arguments.names) + " from the instrument?", arguments,
                console)) {
        return ExitCode::Cancelled;
    }
    for (const std::string& name : arguments.names) {
        panel.Delete(name);
        output.Text() << name << " deleted\n";
    }
    output["deleted"] = arguments.names;
    return ExitCode::Done;
}

int CopyFile(suite::InstrumentPanel& panel, const FilesArguments& arguments, Console& console,
             CommandOutput& output) {
    const std::string& copyName = arguments.names[1];
    const suite::MemoryContent memory = panel.Memory();
    if (suite::FindStored(memory, copyName) != nullptr &&
        !Agrees("Replace " + copyName + " in the instrument?", arguments, console)) {
        return ExitCode::Cancelled;
    }
    panel.Copy(arguments.names[0], copyName);
    output.Text() << arguments.names[0] << " copied to " << copyName << '\n';
    output["copied"] = arguments.names[0];
    output["to"] = copyName;
    return ExitCode::Done;
}

int RenameFile(suite::InstrumentPanel& panel, const FilesArguments& arguments,
               CommandOutput& output) {
    const auto& names = arguments.names;
    panel.Rename(names[0], names[1]);
    output.Text() << names[0] << " is now " << names[1] << '\n';
    output["renamed"] = names[0];
    output["to"] = names[1];
    return ExitCode::Done;
}

int ManageFiles(suite::InstrumentPanel& panel, const FilesArguments& arguments, Console& console,
                CommandOutput& output) {
    switch (arguments.action) {
        case FilesAction::Delete:
            return DeleteFiles(panel, arguments, console, output);
        case FilesAction::Copy:
            return CopyFile(panel, arguments, console, output);
        case FilesAction::Rename:
            return RenameFile(panel, arguments, output);
        default:
            return ListFiles(panel, output);
    }
}

void RequireName(const std::string& name) {
    if (TrimBlanks(name).empty()) {
        throw UsageError("The name of a waveform is empty.");
    }
}

void RequireNames(const FilesArguments& arguments) {
    const std::size_t count = arguments.names.size();
    std::ranges::for_each(arguments.names, &RequireName);
    switch (arguments.action) {
        case FilesAction::List:
            break;
        case FilesAction::Delete:
            if (count == 0) {
                throw UsageError("krv files delete takes the names of the waveforms to delete.");
            }
            break;
        case FilesAction::Copy:
        case FilesAction::Rename:
            if (count != 2) {
                throw UsageError(
                    "krv files copy and krv files rename take two names: the "
                    "waveform's, and the new one.");
            }
            break;
    }
}

struct PanelSettings {
    std::optional<double> frequencyHz;
    std::optional<double> levelDbm;
    std::optional<double> sampleClockHz;
};

// Throws UsageError.
PanelSettings Parsed(const SetArguments& arguments, NumberFormat format) {
    if (!arguments.frequency && !arguments.level && !arguments.sampleClock && !arguments.output) {
        throw UsageError("krv set takes at least one of --frequency, --level, --clock and --rf.");
    }
    PanelSettings settings;
    if (arguments.frequency) {
        settings.frequencyHz = ParseFrequency("--frequency", *arguments.frequency, format);
    }
    if (arguments.level) {
        settings.levelDbm = ParseLevel("--level", *arguments.level, format);
    }
    if (arguments.sampleClock) {
        settings.sampleClockHz = ParseFrequency("--clock", *arguments.sampleClock, format);
    }
    return settings;
}

// A question mark in quotes is text.
bool IsQuery(const std::string& message) {
    char quote = '\0';
    for (const char character : message) {
        if (quote == '\0' && character == '?') {
            return true;
        }
        if (character == quote) {
            quote = '\0';
        } else if (quote == '\0' && (character == '"' || character == '\'')) {
            quote = character;
        }
    }
    return false;
}

struct PanelStatus {
    std::string model;
    std::string serialNumber;
    double frequencyHz = 0;
    double levelDbm = 0;
    bool isOutputOn = false;
    double sampleClockHz = 0;
    // Empty for none.
    std::string selected;
    suite::PlayState play;
    suite::MemoryContent memory;
};

PanelStatus AskForStatus(InstrumentLink& link, suite::InstrumentPanel& panel) {
    const auto instrument = link.Server()->Instrument();
    PanelStatus status;
    status.model = instrument->Model();
    status.serialNumber = instrument->SerialNumber();
    status.selected = link.Server()->Arb()->SelectedArbFile();
    status.memory = panel.Memory();
    status.frequencyHz = panel.Frequency();
    status.levelDbm = panel.Level();
    status.isOutputOn = panel.IsOutputOn();
    status.sampleClockHz = panel.SampleClock();
    status.play = panel.Playing();
    return status;
}

void DescribeStatus(const PanelStatus& status, CommandOutput& output) {
    output["model"] = status.model;
    output["serialNumber"] = status.serialNumber;
    output["frequencyHz"] = status.frequencyHz;
    output["levelDbm"] = status.levelDbm;
    output["rfOutput"] = status.isOutputOn;
    output["sampleClockHz"] = status.sampleClockHz;
    output["selectedWaveform"] = TextOrNull(status.selected);
    output["sequence"] = TextOrNull(status.play.sequence);
    output["playing"] = status.play.isOn;
    output["waitingForTrigger"] = status.play.isWaiting;
    output["memory"] = MemoryJson(status.memory);
}

void PrintStatus(const PanelStatus& status, std::ostream& out) {
    const bool isSequence = !status.play.sequence.empty();
    out << "Model:             " << status.model << ", serial number " << status.serialNumber
        << "\nFrequency:         " << FrequencyText(status.frequencyHz)
        << "\nLevel:             " << NumberToText(status.levelDbm)
        << " dBm\nRF output:         " << (status.isOutputOn ? "on" : "off")
        << "\nSample clock:      " << FrequencyText(status.sampleClockHz)
        << "\nSelected waveform: " << (status.selected.empty() ? "none" : status.selected)
        << (isSequence ? "\nSequence:          " + status.play.sequence : "")
        << (status.play.isOn ? (status.play.isWaiting ? ", waiting for its trigger" : ", playing")
                             : "")
        << "\nWaveform memory:   " << status.memory.usedPoints << " points used, "
        << status.memory.freePoints << " free\n";
}

// Sets one after the other what is asked for, and tells what the instrument makes of each.
void SetPanel(const PanelSettings& settings, const std::optional<bool>& isOutputOn,
              suite::InstrumentPanel& panel, CommandOutput& output) {
    for (const char* key : {"frequencyHz", "levelDbm", "sampleClockHz", "rfOutput"}) {
        output[key] = nullptr;
    }
    if (settings.frequencyHz) {
        panel.SetFrequency(*settings.frequencyHz);
        const double frequency = panel.Frequency();
        output.Text() << "Frequency:    " << FrequencyText(frequency) << '\n';
        output["frequencyHz"] = frequency;
    }
    if (settings.levelDbm) {
        panel.SetLevel(*settings.levelDbm);
        const double level = panel.Level();
        output.Text() << "Level:        " << NumberToText(level) << " dBm\n";
        output["levelDbm"] = level;
    }
    if (settings.sampleClockHz) {
        panel.SetSampleClock(*settings.sampleClockHz);
        const double clock = panel.SampleClock();
        output.Text() << "Sample clock: " << FrequencyText(clock) << '\n';
        output["sampleClockHz"] = clock;
    }
    if (isOutputOn) {
        panel.SwitchOutput(*isOutputOn);
        const bool isOn = panel.IsOutputOn();
        output.Text() << "RF output:    " << (isOn ? "on\n" : "off\n");
        output["rfOutput"] = isOn;
    }
}

// `krv play stop`, unless a waveform has this name.
bool MeansToStop(const std::string& name, suite::InstrumentPanel& panel) {
    return name == "stop" && suite::FindStored(panel.Memory(), name) == nullptr;
}

// What was there before the message isn't about it, and is gone afterwards.
void TellEarlierErrors(suite::ScpiInstrument& instrument, std::ostream& err) {
    constexpr int MostTold = 30;
    for (int count = 0; count < MostTold; ++count) {
        const ports::InstrumentError error = instrument.ReadError();
        if (error.number == 0) {
            return;
        }
        PrintWarning(err, "The instrument had reported before: " + std::to_string(error.number) +
                              ' ' + error.message + '.');
    }
}

void PlayWaveform(const std::string& name, suite::InstrumentPanel& panel, CommandOutput& output) {
    panel.Play(name);
    const bool isWaiting = panel.Playing().isWaiting;
    const bool isOn = panel.IsOutputOn();
    output.Text() << name << (isWaiting ? " waits for its trigger" : " is playing")
                  << (isOn ? "\n" : "; the RF output is off\n");
    output["waveform"] = name;
    output["rfOutput"] = isOn;
    output["playing"] = true;
    output["waitingForTrigger"] = isWaiting;
}

}  // namespace

int RunStatus(const StatusArguments& arguments, Console& console) {
    CommandOutput output(console.out, arguments.json);
    return WithPanel(arguments.connection, console, output,
                     [&](InstrumentLink& link, suite::InstrumentPanel& panel) {
                         const PanelStatus status = AskForStatus(link, panel);
                         PrintStatus(status, output.Text());
                         DescribeStatus(status, output);
                         return ExitCode::Done;
                     });
}

int RunFiles(const FilesArguments& arguments, Console& console) {
    RequireNames(arguments);
    CommandOutput output(console.out, arguments.json);
    return WithPanel(arguments.connection, console, output,
                     [&](InstrumentLink&, suite::InstrumentPanel& panel) {
                         return ManageFiles(panel, arguments, console, output);
                     });
}

int RunPlay(const PlayArguments& arguments, Console& console) {
    if (arguments.name) {
        RequireName(*arguments.name);
    }
    CommandOutput output(console.out, arguments.json);
    return WithPanel(arguments.connection, console, output,
                     [&](InstrumentLink&, suite::InstrumentPanel& panel) {
                         if (arguments.name && !MeansToStop(*arguments.name, panel)) {
                             PlayWaveform(*arguments.name, panel, output);
                         } else {
                             panel.Stop();
                             output.Text() << "Playing has stopped\n";
                             output["playing"] = false;
                         }
                         return ExitCode::Done;
                     });
}

int RunSet(const SetArguments& arguments, Console& console) {
    const PanelSettings settings = Parsed(arguments, console.numberFormat);
    CommandOutput output(console.out, arguments.json);
    return WithPanel(arguments.connection, console, output,
                     [&](InstrumentLink&, suite::InstrumentPanel& panel) {
                         SetPanel(settings, arguments.output, panel, output);
                         return ExitCode::Done;
                     });
}

int RunSend(const SendArguments& arguments, Console& console) {
    if (TrimBlanks(arguments.message).empty()) {
        throw UsageError("krv send takes a message, for example 'FREQ?' or 'OUTP ON'.");
    }
    CommandOutput output(console.out, arguments.json);
    return WithPanel(arguments.connection, console, output,
                     [&](InstrumentLink& link, suite::InstrumentPanel&) {
                         suite::ScpiInstrument& instrument = *link.Server()->ScpiAccess();
                         TellEarlierErrors(instrument, console.err);
                         output["message"] = arguments.message;
                         output["reply"] = nullptr;
                         if (IsQuery(arguments.message)) {
                             const std::string reply = instrument.Ask(arguments.message);
                             output.Text() << reply << '\n';
                             output["reply"] = reply;
                         } else {
                             instrument.Command(arguments.message);
                         }
                         return ExitCode::Done;
                     });
}

}  // namespace krv::cli
