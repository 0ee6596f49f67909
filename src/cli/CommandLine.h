// The command line front: a thin way into the download dialog for scripts and terminals.
#pragma once

#include <string>
#include <vector>

#include "cli/Console.h"

namespace krv::cli {

// Runs one command line, given without the program's name, and returns the exit code: 0 done,
// 1 refused or failed, 2 wrong usage, 130 cancelled. Never throws.
[[nodiscard]] int RunCommandLine(const std::vector<std::string>& arguments,
                                 Console& console) noexcept;

}  // namespace krv::cli
