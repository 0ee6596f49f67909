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

// Connects, lets the work use the panel, and disconnects.
template <class Work>
int WithPanel(const ConnectionArguments& arguments, Console& console, Work work) {
    const EndOnInterruption end(console.interruptions);
    InstrumentLink link(arguments);
    suite::InstrumentPanel panel(link.Server()->ScpiAccess());
    const int exitCode = work(link, panel);
    link.Finish();
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

OutputJson FilesJson(const suite::MemoryContent& memory) {
    OutputJson waveforms = OutputJson::array();
    for (const suite::StoredFile& file : memory.files) {
        waveforms.push_back(
            {{"name", file.name}, {"points", file.points}, {"interleaved", file.isInterleaved}});
    }
    return {{"waveforms", waveforms}, {"memory", MemoryJson(memory)}};
}

void TellOfFiles(const suite::MemoryContent& memory, bool json, std::ostream& out) {
    if (json) {
        PrintJson(FilesJson(memory), out);
    } else {
        PrintFiles(memory, out);
    }
}

bool Agrees(const std::string& question, const FilesArguments& arguments, Console& console) {
    ProgressLines progress(nullptr, console.progressWidth);
    return TerminalMessageBoxes(console, progress, arguments.answerYes)
               .Show({question, "krv files", ports::MessageIcon::None,
                      ports::MessageButtons::YesNo}) == ports::MessageAnswer::Yes;
}

int DeleteFiles(suite::InstrumentPanel& panel, const FilesArguments& arguments, Console& console) {
    if (!Agrees("Delete " + Joined(arguments.names) + " from the instrument?", arguments,
                console)) {
        return ExitCode::Cancelled;
    }
    for (const std::string& name : arguments.names) {
        panel.Delete(name);
        console.out << name << " deleted\n";
    }
    return ExitCode::Done;
}

int CopyFile(suite::InstrumentPanel& panel, const FilesArguments& arguments, Console& console) {
    const std::string& copyName = arguments.names[1];
    const suite::MemoryContent memory = panel.Memory();
    if (suite::FindStored(memory, copyName) != nullptr &&
        !Agrees("Replace " + copyName + " in the instrument?", arguments, console)) {
        return ExitCode::Cancelled;
    }
    panel.Copy(arguments.names[0], copyName);
    console.out << arguments.names[0] << " copied to " << copyName << '\n';
    return ExitCode::Done;
}

void RequireNames(const FilesArguments& arguments) {
    const std::size_t count = arguments.names.size();
    if (arguments.json && arguments.action != FilesAction::List) {
        throw UsageError("--json goes with krv files list.");
    }
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
    bool isPlaying = false;
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
    status.isPlaying = !status.selected.empty() && panel.IsPlaying();
    return status;
}

OutputJson StatusJson(const PanelStatus& status) {
    return {{"model", status.model},
            {"serialNumber", status.serialNumber},
            {"frequencyHz", status.frequencyHz},
            {"levelDbm", status.levelDbm},
            {"rfOutput", status.isOutputOn},
            {"sampleClockHz", status.sampleClockHz},
            {"selectedWaveform", TextOrNull(status.selected)},
            {"playing", status.isPlaying},
            {"memory", MemoryJson(status.memory)}};
}

void PrintStatus(const PanelStatus& status, std::ostream& out) {
    out << "Model:             " << status.model << ", serial number " << status.serialNumber
        << "\nFrequency:         " << FrequencyText(status.frequencyHz)
        << "\nLevel:             " << NumberToText(status.levelDbm)
        << " dBm\nRF output:         " << (status.isOutputOn ? "on" : "off")
        << "\nSample clock:      " << FrequencyText(status.sampleClockHz)
        << "\nSelected waveform: " << (status.selected.empty() ? "none" : status.selected)
        << (status.isPlaying ? ", playing" : "")
        << "\nWaveform memory:   " << status.memory.usedPoints << " points used, "
        << status.memory.freePoints << " free\n";
}

}  // namespace

int RunStatus(const StatusArguments& arguments, Console& console) {
    return WithPanel(arguments.connection, console,
                     [&](InstrumentLink& link, suite::InstrumentPanel& panel) {
                         const PanelStatus status = AskForStatus(link, panel);
                         if (arguments.json) {
                             PrintJson(StatusJson(status), console.out);
                         } else {
                             PrintStatus(status, console.out);
                         }
                         return ExitCode::Done;
                     });
}

int RunFiles(const FilesArguments& arguments, Console& console) {
    RequireNames(arguments);
    return WithPanel(arguments.connection, console,
                     [&](InstrumentLink&, suite::InstrumentPanel& panel) {
                         const auto& names = arguments.names;
                         switch (arguments.action) {
                             case FilesAction::List:
                                 TellOfFiles(panel.Memory(), arguments.json, console.out);
                                 break;
                             case FilesAction::Delete:
                                 return DeleteFiles(panel, arguments, console);
                             case FilesAction::Copy:
                                 return CopyFile(panel, arguments, console);
                             case FilesAction::Rename:
                                 panel.Rename(names[0], names[1]);
                                 console.out << names[0] << " is now " << names[1] << '\n';
                                 break;
                         }
                         return ExitCode::Done;
                     });
}

int RunPlay(const PlayArguments& arguments, Console& console) {
    return WithPanel(
        arguments.connection, console, [&](InstrumentLink&, suite::InstrumentPanel& panel) {
            if (arguments.name) {
                panel.Play(*arguments.name);
                console.out << *arguments.name << " is playing"
                            << (panel.IsOutputOn() ? "\n" : "; the RF output is off\n");
            } else {
                panel.Stop();
                console.out << "Playing has stopped\n";
            }
            return ExitCode::Done;
        });
}

int RunSet(const SetArguments& arguments, Console& console) {
    const PanelSettings settings = Parsed(arguments, console.numberFormat);
    return WithPanel(
        arguments.connection, console, [&](InstrumentLink&, suite::InstrumentPanel& panel) {
            if (settings.frequencyHz) {
                panel.SetFrequency(*settings.frequencyHz);
                console.out << "Frequency:    " << FrequencyText(panel.Frequency()) << '\n';
            }
            if (settings.levelDbm) {
                panel.SetLevel(*settings.levelDbm);
                console.out << "Level:        " << NumberToText(panel.Level()) << " dBm\n";
            }
            if (settings.sampleClockHz) {
                panel.SetSampleClock(*settings.sampleClockHz);
                console.out << "Sample clock: " << FrequencyText(panel.SampleClock()) << '\n';
            }
            if (arguments.output) {
                panel.SwitchOutput(*arguments.output);
                console.out << "RF output:    " << (panel.IsOutputOn() ? "on\n" : "off\n");
            }
            return ExitCode::Done;
        });
}

int RunSend(const SendArguments& arguments, Console& console) {
    if (TrimBlanks(arguments.message).empty()) {
        throw UsageError("krv send takes a message, for example 'FREQ?' or 'OUTP ON'.");
    }
    return WithPanel(arguments.connection, console,
                     [&](InstrumentLink& link, suite::InstrumentPanel&) {
                         suite::ScpiInstrument& instrument = *link.Server()->ScpiAccess();
                         if (IsQuery(arguments.message)) {
                             console.out << instrument.Ask(arguments.message) << '\n';
                         } else {
                             instrument.Command(arguments.message);
                         }
                         return ExitCode::Done;
                     });
}

}  // namespace krv::cli
