// ArgumentParser: from the words of the command line to Arguments.
#pragma once

#include <string>
#include <vector>

#include "cli/Arguments.h"

namespace krv::cli {

// Never throws for a wrong command line: that gives a TextAnswer with exit code 2.
[[nodiscard]] CommandRequest ParseArguments(const std::vector<std::string>& words);

// Every command, and every option as "COMMAND --option": what the manual must describe.
[[nodiscard]] std::vector<std::string> CommandsAndOptions();

}  // namespace krv::cli
