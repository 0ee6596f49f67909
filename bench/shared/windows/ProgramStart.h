// What the bench's programs have alike when they start: their command line, the system's libraries,
// and how a program ends that can't start.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace krv::bench {

struct ProgramOptions {
    // Full paths, UTF-8.
    std::vector<std::string> files;
    bool screenshotReady = false;
    bool registerAsActive = false;
};

// Runs a program until its window is closed, and returns the process's exit code: 0, 1 when it
// fails with an Error, 2 after a wrong command line. What is wrong goes to standard error.
// The class is the one that the program stands in for.
int StartProgram(const char* name, const char* className,
                 const std::function<void(const ProgramOptions&)>& run);

// The folder where the add-in would lie: the help file is looked for there. Without a separator at
// its end.
[[nodiscard]] std::string ProgramFolder();

}  // namespace krv::bench
