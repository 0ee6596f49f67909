#include "cli/CommandLine.h"

#include <exception>
#include <ostream>
#include <variant>

#include "cli/ArgumentParser.h"
#include "cli/Commands.h"
#include "cli/ExitCode.h"
#include "cli/WaveformSession.h"
#include "common/Error.h"

namespace krv::cli {
namespace {

// Carries out what the command line asks for, one kind of it each.
struct Execution {
    Surroundings& surroundings;

    int operator()(const TextAnswer& answer) const {
        (answer.exitCode == ExitCode::Done ? surroundings.out : surroundings.err) << answer.text;
        return answer.exitCode;
    }
    int operator()(const SimArguments& arguments) const { return RunSim(arguments, surroundings); }
    int operator()(const ListArguments& arguments) const {
        return RunList(arguments, surroundings);
    }
    int operator()(const IdentifyArguments& arguments) const {
        return RunIdentify(arguments, surroundings);
    }
    int operator()(const ImageArguments& arguments) const {
        return RunImage(arguments, surroundings);
    }
    int operator()(const StateArguments& arguments) const {
        return arguments.command == StateCommand::Capture ? RunCapture(arguments, surroundings)
                                                          : RunRestore(arguments, surroundings);
    }
    int operator()(const WaveformArguments& arguments) const {
        return WaveformSession(arguments, surroundings).Run();
    }
};

int Fail(Surroundings& surroundings, int exitCode, const std::string& description) {
    surroundings.err << "krv: " << description << '\n';
    return exitCode;
}

int Execute(const std::vector<std::string>& arguments, Surroundings& surroundings) {
    try {
        return std::visit(Execution{surroundings}, ParseArguments(arguments));
    } catch (const UsageError& error) {
        return Fail(surroundings, ExitCode::WrongUsage, error.what());
    } catch (const Error& error) {
        return Fail(surroundings, ExitCode::Failed, error.Description());
    } catch (const std::exception& error) {
        return Fail(surroundings, ExitCode::Failed, error.what());
    }
}

}  // namespace

int RunCommandLine(const std::vector<std::string>& arguments, Surroundings& surroundings) noexcept {
    const int exitCode = Execute(arguments, surroundings);
    surroundings.out.flush();
    surroundings.err.flush();
    if (exitCode == ExitCode::Done && !surroundings.out) {
        return Fail(surroundings, ExitCode::Failed, "Can't write to standard output.");
    }
    return exitCode;
}

}  // namespace krv::cli
