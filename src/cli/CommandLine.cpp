#include "cli/CommandLine.h"

#include <exception>
#include <optional>
#include <ostream>
#include <type_traits>
#include <variant>

#include "cli/ArgumentParser.h"
#include "cli/Commands.h"
#include "cli/Defaults.h"
#include "cli/ExitCode.h"
#include "cli/Messages.h"
#include "cli/PrintableStream.h"
#include "cli/SeveralDownloads.h"
#include "cli/WaveformJob.h"
#include "common/Error.h"
#include "common/ErrorTrap.h"
#include "common/Text.h"

namespace krv::cli {
namespace {

Console WithStreams(const Console& console, std::ostream& out, std::ostream& err) {
    return {console.in,
            out,
            err,
            console.interruptions,
            console.canAsk,
            console.progress,
            console.progressWidth,
            console.progressIntervalMs,
            console.numberFormat,
            console.environment,
            console.hasColors,
            console.isQuiet};
}

// A check, download or conversion for a program: its report is all that there is on standard
// output.
template <class Job>
int RunForProgram(const WaveformArguments& arguments, Console& console) {
    std::ostream nothing(nullptr);
    Console told = WithStreams(console, nothing, console.err);
    Job job(arguments, told);
    job.Prepare();
    const int exitCode = job.Run();
    console.out << job.ReportText(exitCode);
    return exitCode;
}

template <class Job>
int RunJob(const WaveformArguments& arguments, Console& console) {
    if (arguments.json) {
        return RunForProgram<Job>(arguments, console);
    }
    Job job(arguments, console);
    job.Prepare();
    return job.Run();
}

// Runs the command that the arguments are for.
struct Execution {
    Console& console;

    int operator()(const TextAnswer& answer) const {
        if (answer.exitCode == ExitCode::Done) {
            console.out << answer.text;
        } else {
            PrintFailure(console.err, answer.text);
        }
        return answer.exitCode;
    }
    int operator()(const SimArguments& arguments) const { return RunSim(arguments, console); }
    int operator()(const ListArguments& arguments) const { return RunList(arguments, console); }
    int operator()(const IdentifyArguments& arguments) const {
        return RunIdentify(arguments, console);
    }
    int operator()(const StatusArguments& arguments) const { return RunStatus(arguments, console); }
    int operator()(const FilesArguments& arguments) const { return RunFiles(arguments, console); }
    int operator()(const PlayArguments& arguments) const { return RunPlay(arguments, console); }
    int operator()(const SetArguments& arguments) const { return RunSet(arguments, console); }
    int operator()(const SendArguments& arguments) const { return RunSend(arguments, console); }
    int operator()(const ImageArguments& arguments) const { return RunImage(arguments, console); }
    int operator()(const FormatsArguments& arguments) const {
        return RunFormats(arguments, console);
    }
    int operator()(const ImportFileArguments& arguments) const {
        return RunImport(arguments, console);
    }
    int operator()(const InfoArguments& arguments) const { return RunInfo(arguments, console); }
    int operator()(const PlotArguments& arguments) const { return RunPlot(arguments, console); }
    int operator()(const StateArguments& arguments) const {
        return arguments.command == StateCommand::Capture ? RunCapture(arguments, console)
                                                          : RunRestore(arguments, console);
    }
    int operator()(const DoctorArguments& arguments) const { return RunDoctor(arguments, console); }
    int operator()(const ConfigArguments& arguments) const { return RunConfig(arguments, console); }
    int operator()(const OpenGuideArguments&) const { return RunOpenGuide(console); }
    int operator()(const WaveformArguments& arguments) const {
        return arguments.addresses.size() > 1 ? RunJob<SeveralDownloads>(arguments, console)
                                              : RunJob<WaveformJob>(arguments, console);
    }
};

int Fail(Console& console, int exitCode, const std::string& description) {
    PrintFailure(console.err, description);
    return exitCode;
}

// A name of several lines would look like lines of krv's own where it is printed.
void RequireOneLineEach(const std::vector<std::string>& arguments) {
    for (const std::string& argument : arguments) {
        if (argument.find_first_of("\r\n") != std::string::npos) {
            throw UsageError("There is a line break in '" + WithoutControlCharacters(argument) +
                             "'.");
        }
    }
}

// Commands that do something, rather than tell something, print what they have done; a quiet one
// doesn't.
template <class Arguments>
bool OnlyTellsWhatItDid(const Arguments&) {
    return std::is_same_v<Arguments, ImportFileArguments> ||
           std::is_same_v<Arguments, PlayArguments> || std::is_same_v<Arguments, SetArguments> ||
           std::is_same_v<Arguments, StateArguments> || std::is_same_v<Arguments, ImageArguments> ||
           std::is_same_v<Arguments, WaveformArguments>;
}
bool OnlyTellsWhatItDid(const FilesArguments& arguments) {
    return arguments.action != FilesAction::List;
}

// Throws UsageError where the command can't do without an address and there is none.
void CompleteAddress(ConnectionArguments& connection, const Defaults& defaults) {
    if (!connection.isRequired || connection.address) {
        return;
    }
    connection.address = defaults.Value(DefaultName::Address);
    if (connection.address->empty()) {
        throw UsageError(
            "--address is required.\nKRV_ADDRESS in the environment or 'krv config set address A' "
            "names the instrument of all commands.");
    }
}

void CompleteVisa(std::optional<std::string>& library, const Defaults& defaults) {
    library = library.value_or(defaults.Value(DefaultName::Visa));
}

template <class Arguments>
bool IsForProgram(const Arguments& arguments) {
    if constexpr (requires { arguments.json; }) {
        return arguments.json;
    } else {
        return false;
    }
}

template <class Arguments>
int RunWith(Arguments& arguments, const OutputArguments& output, const Defaults& defaults,
            Console& console) {
    if constexpr (requires { arguments.connection; }) {
        CompleteAddress(arguments.connection, defaults);
        CompleteVisa(arguments.connection.visaLibrary, defaults);
    }
    if constexpr (requires { arguments.visaLibrary; }) {
        CompleteVisa(arguments.visaLibrary, defaults);
    }
    if constexpr (requires { arguments.usualAddress; }) {
        arguments.usualAddress = defaults.Value(DefaultName::Address);
    }
    if (output.isQuiet.value_or(defaults.Value(DefaultName::Quiet) == "on") &&
        OnlyTellsWhatItDid(arguments)) {
        std::ostream nothing(nullptr);
        Console quiet =
            WithStreams(console, IsForProgram(arguments) ? console.out : nothing, console.err);
        quiet.isQuiet = true;
        quiet.progress = nullptr;
        quiet.progressIntervalMs = -1;
        return Execution{quiet}(arguments);
    }
    return Execution{console}(arguments);
}

bool WantsColors(const OutputArguments& output, const std::optional<Defaults>& defaults,
                 const Console& console) {
    const std::string usual = defaults ? defaults->Value(DefaultName::Color) : "auto";
    const std::string wanted = output.color.value_or(usual);
    return wanted == "auto" ? console.hasColors : wanted == "always";
}

int Run(CommandRequest& request, Console& console, PrintableStream& err) {
    std::optional<Defaults> defaults;
    const auto fault = FailureOf([&] { defaults.emplace(console.environment); });
    if (WantsColors(request.output, defaults, console)) {
        err.AllowSequences();
    }
    const auto run = [&](auto& arguments) {
        using Arguments = std::remove_reference_t<decltype(arguments)>;
        // By these the user finds and mends what is wrong with the defaults.
        if constexpr (std::is_same_v<Arguments, TextAnswer> ||
                      std::is_same_v<Arguments, ConfigArguments> ||
                      std::is_same_v<Arguments, DoctorArguments> ||
                      std::is_same_v<Arguments, OpenGuideArguments>) {
            return Execution{console}(arguments);
        } else {
            return fault ? throw Error(*fault)
                         : RunWith(arguments, request.output, *defaults, console);
        }
    };
    return std::visit(run, request.arguments);
}

int Execute(const std::vector<std::string>& words, Console& console, PrintableStream& err) {
    try {
        RequireOneLineEach(words);
        CommandRequest request = ParseArguments(words);
        return Run(request, console, err);
    } catch (const UsageError& error) {
        return Fail(console, ExitCode::WrongUsage, error.what());
    } catch (const Error& error) {
        return Fail(console, ExitCode::Failed, error.Description());
    } catch (const std::exception& error) {
        return Fail(console, ExitCode::Failed, error.what());
    }
}

}  // namespace

int RunCommandLine(const std::vector<std::string>& arguments, Console& console) noexcept {
    PrintableStream out(console.out);
    PrintableStream err(console.err);
    Console printable = WithStreams(console, out, err);
    const int exitCode = Execute(arguments, printable, err);
    out.flush();
    err.flush();
    if (exitCode == ExitCode::Done && !out) {
        return Fail(printable, ExitCode::Failed, "Can't write to standard output.");
    }
    return exitCode;
}

}  // namespace krv::cli
