// The platform functions that the command line front needs.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "cli/Defaults.h"
#include "common/Numbers.h"

namespace krv::cli {

enum class StandardStream { Input, Output, Error };

// The stream is a terminal, with a person at it.
[[nodiscard]] bool IsTerminal(StandardStream stream);
// Characters in a line of the terminal behind the stream; 80 when it doesn't say.
[[nodiscard]] int TerminalWidth(StandardStream stream);
// A terminal, if there is one, takes colours and movements of the cursor.
[[nodiscard]] bool TakesSequences();
// What is written to a terminal may be UTF-8.
[[nodiscard]] bool TakesUtf8();
// Standard input's bytes come as they are.
void MakeInputBinary();
// Makes a terminal show UTF-8 and take cursor movements. Called once, at the start.
void PrepareTerminal();
// The arguments behind the program's name, in UTF-8.
[[nodiscard]] std::vector<std::string> ProgramArguments(int count, char** arguments);
// How the system's settings say that the user writes numbers.
[[nodiscard]] NumberFormat UserNumberFormat();
// What surrounds the program.
[[nodiscard]] Environment UserEnvironment();
// The file system takes both for one name; links aren't looked at.
[[nodiscard]] bool AreSameName(const std::filesystem::path& left,
                               const std::filesystem::path& right);
// Opens the page in the browser of the user; false where there is none.
[[nodiscard]] bool OpenInBrowser(const std::filesystem::path& page);
// Local time of day in seconds since midnight.
[[nodiscard]] int LocalSecondOfDay();

}  // namespace krv::cli
