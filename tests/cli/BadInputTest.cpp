// Input of every bad kind: refused with the dialog's words or clear ones, never with a crash.
#include <filesystem>

#include "tests/cli/CommandLineFixture.h"

namespace krv::tests {
namespace {

using namespace cli;

class BadInputTest : public CommandLineTest {
 protected:
    // Converts for an old model; nothing may be written when it is refused.
    int Convert(const std::string& file, std::vector<std::string> options = {}) {
        options.insert(options.begin(),
                       {"convert", "--model", "M771XB", "--output", Path("codes"), "--i", file});
        return Run(options);
    }
};

TEST_F(BadInputTest, IsRefusedInTheDialogsWords) {
    std::filesystem::create_directory(Path("folder"));
    const std::string file = File("data.txt", Ramp(16));
    const std::string missing = Path("missing.txt");
    struct Case {
        std::string file;
        std::vector<std::string> options;
        const char* says;
    };
    const std::vector<Case> cases{
        {File("utf-16.txt", std::string("1\0\n\0002\0\n\0", 8)), {}, "Invalid data at line 1\n"},
        {File("grouped.txt", Ramp(20) + "1,000\n"), {}, "Invalid data at line 21\n"},
        {File("short.txt", Ramp(15)), {}, "must contain at least 16 points.\n"},
        {Path("folder"), {}, "Invalid File Name specified for I-Data.\n"},
        {"", {}, "No File Name specified for I-Data.\n"},
        {file, {"--q", missing}, "Invalid File Name speicifed for Q-Data.\n"},
        {file, {"--marker-file", missing}, "Invalid marker file name"},
        {file, {"--find-marker"}, "No marker file name specified"},
        {file, {"--scale", "100.0001"}, "The magnitude of the Scale Factor must be <= 100.\n"},
        {file, {"--marker-start", "2.5"}, "Starting Point must be a non-negative integer.\n"},
        {file, {"--marker-length", "-1"}, "Number of Points must be a non-negative integer.\n"},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(Convert(each.file, each.options), 1) << each.says;
        EXPECT_EQ(Err.find("Download Waveform to KRV ["), 0U) << Err;
        EXPECT_NE(Err.find(each.says), std::string::npos) << each.says << "\n" << Err;
        EXPECT_EQ(Out, "") << each.says;
        EXPECT_FALSE(Exists("codes")) << each.says;
    }
}

}  // namespace
}  // namespace krv::tests
