#include "tests/cli/CommandLineFixture.h"

#include <fstream>

namespace krv::tests {

int CommandLineTest::Run(const std::vector<std::string>& arguments) {
    return Run(arguments, "", false);
}

int CommandLineTest::RunAtTerminal(const std::vector<std::string>& arguments,
                                   const std::string& input) {
    return Run(arguments, input, true);
}

int CommandLineTest::Run(const std::vector<std::string>& arguments, const std::string& input,
                         bool atTerminal) {
    std::istringstream in(input);
    std::ostringstream out;
    std::ostringstream err;
    WatchedTerminal terminal;
    terminal.OnText = OnProgress;
    std::ostream progress(&terminal);
    cli::Console console{in, out, err, CtrlC};
    console.canAsk = atTerminal;
    console.progress = atTerminal ? &progress : nullptr;
    console.progressWidth = 120;
    console.progressIntervalMs = ProgressIntervalMs;
    console.numberFormat = UsersNumbers;
    console.environment = Surroundings;
    console.hasColors = HasColors;
    const int exitCode = cli::RunCommandLine(arguments, console);
    Out = out.str();
    Err = err.str();
    Progress = terminal.str();
    return exitCode;
}

std::vector<int> CommandLineTest::Codes(const std::string& name) const {
    const std::string bytes = Content(name);
    std::vector<int> codes;
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        const auto low = static_cast<unsigned char>(bytes[at]);
        const auto high = static_cast<signed char>(bytes[at + 1]);
        codes.push_back(high * 256 + low);
    }
    return codes;
}

std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

std::filesystem::path ProjectFile(const std::string& name) {
    return std::filesystem::path(KRV_SOURCE_DIR) / name;
}

std::string Ramp(int count) {
    std::string text;
    for (int value = 1; value <= count; ++value) {
        text += std::to_string(value) + '\n';
    }
    return text;
}

std::string LittleEndian(const std::vector<int>& codes) {
    std::string bytes;
    for (const int code : codes) {
        bytes += static_cast<char>(code & 0xFF);
        bytes += static_cast<char>((code >> 8) & 0xFF);
    }
    return bytes;
}

}  // namespace krv::tests
