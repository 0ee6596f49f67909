#include "cli/CommandLine.h"

#include <exception>
#include <ostream>
#include <variant>

#include "cli/ArgumentParser.h"
#include "cli/Commands.h"
#include "cli/ExitCode.h"
#include "cli/PrintableStream.h"
#include "cli/WaveformJob.h"
#include "common/Error.h"
#include "common/Text.h"

namespace krv::cli {
namespace {

// Runs the command that the arguments are for.
struct Execution {
    Console& console;

    int operator()(const TextAnswer& answer) const {
        (answer.exitCode == ExitCode::Done ? console.out : console.err) << answer.text;
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
    int operator()(const FormatsArguments&) const { return RunFormats(console); }
    int operator()(const ImportFileArguments& arguments) const {
        return RunImport(arguments, console);
    }
    int operator()(const InfoArguments& arguments) const { return RunInfo(arguments, console); }
    int operator()(const PlotArguments& arguments) const { return RunPlot(arguments, console); }
    int operator()(const StateArguments& arguments) const {
        return arguments.command == StateCommand::Capture ? RunCapture(arguments, console)
                                                          : RunRestore(arguments, console);
    }
    int operator()(const WaveformArguments& arguments) const {
        return WaveformJob(arguments, console).Run();
    }
};

int Fail(Console& console, int exitCode, const std::string& description) {
    console.err << "krv: " << description << '\n';
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

int Execute(const std::vector<std::string>& arguments, Console& console) {
    try {
        RequireOneLineEach(arguments);
        return std::visit(Execution{console}, ParseArguments(arguments));
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
    Console printable{console.in,
                      out,
                      err,
                      console.interruptions,
                      console.canAsk,
                      console.progress,
                      console.progressWidth,
                      console.progressIntervalMs,
                      console.numberFormat};
    const int exitCode = Execute(arguments, printable);
    out.flush();
    err.flush();
    if (exitCode == ExitCode::Done && !out) {
        return Fail(printable, ExitCode::Failed, "Can't write to standard output.");
    }
    return exitCode;
}

}  // namespace krv::cli
