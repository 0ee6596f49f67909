#include <iostream>

#include "cli/CommandLine.h"
#include "cli/Platform.h"

int main(int count, char** arguments) {
    using namespace krv::cli;
    PrepareTerminal();
    const auto interruptions = ProcessInterruptions();
    Surroundings surroundings{std::cin, std::cout, std::cerr, *interruptions};
    surroundings.canAsk = IsTerminal(StandardStream::Input);
    if (IsTerminal(StandardStream::Error)) {
        surroundings.progress = &std::cerr;
        surroundings.progressWidth = TerminalWidth(StandardStream::Error);
    } else if (IsTerminal(StandardStream::Output)) {
        surroundings.progress = &std::cout;
        surroundings.progressWidth = TerminalWidth(StandardStream::Output);
    }
    return RunCommandLine(ProgramArguments(count, arguments), surroundings);
}
