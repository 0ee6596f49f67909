#include <iostream>

#include "cli/CommandLine.h"
#include "cli/Platform.h"

int main(int count, char** arguments) {
    using namespace krv::cli;
    PrepareTerminal();
    const auto interruptions = ProcessInterruptions();
    Console console{std::cin, std::cout, std::cerr, *interruptions};
    console.numberFormat = UserNumberFormat();
    console.environment = UserEnvironment();
    console.canAsk = IsTerminal(StandardStream::Input);
    if (!TakesSequences()) {
        return RunCommandLine(ProgramArguments(count, arguments), console);
    }
    console.hasColors = IsTerminal(StandardStream::Error);
    if (IsTerminal(StandardStream::Error)) {
        console.progress = &std::cerr;
        console.progressWidth = TerminalWidth(StandardStream::Error);
    } else if (IsTerminal(StandardStream::Output)) {
        console.progress = &std::cout;
        console.progressWidth = TerminalWidth(StandardStream::Output);
    }
    return RunCommandLine(ProgramArguments(count, arguments), console);
}
