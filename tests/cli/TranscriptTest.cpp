// What a simulated generator and its client write down of the same conversation.
#include <regex>

#include "tests/cli/CommandLineFixture.h"
#include "tests/support/RunningGenerator.h"

namespace krv::tests {
namespace {

using namespace cli;

class TranscriptTest : public CommandLineTest {
 protected:
    // A transcript without times and remarks, or one direction of it.
    [[nodiscard]] std::string Said(const std::string& name, const char* marks = "<>") const {
        const std::regex line("\\d+\\.\\d{3} 1 ([" + std::string(marks) + "] .*\n)|.*\n");
        return std::regex_replace(Content(name), line, "$1");
    }
    // With what was sent as received and the other way round.
    static std::string FromTheOtherSide(std::string text) {
        bool lineStart = true;
        for (char& character : text) {
            if (lineStart) {
                character = character == '<' ? '>' : '<';
            }
            lineStart = character == '\n';
        }
        return text;
    }
};

TEST_F(TranscriptTest, BothSidesWriteDownTheSame) {
    simulator::GeneratorSettings settings;
    settings.transcriptFile = Path("instrument");
    const std::string i = File("dataI.txt", Ramp(120));
    std::string address;
    {
        const RunningGenerator generator(settings);
        address = generator.Address();
        ASSERT_EQ(Run({"download", "--address", address, "--i", i, "--log", Path("client")}), 0)
            << Err;
    }
    const std::string said = Said("client");
    // Each direction, that is: the client may ask again before the first reply comes.
    EXPECT_EQ(Said("instrument", "<"), FromTheOtherSide(Said("client", ">")));
    EXPECT_EQ(Said("instrument", ">"), FromTheOtherSide(Said("client", "<")));
    EXPECT_NE(said.find("> *IDN?\n< Corvane,M7718C,"), std::string::npos) << said;
    EXPECT_NE(said.find("\"dataI\",#3240<240 bytes, CRC-32 "), std::string::npos) << said;
    EXPECT_TRUE(said.ends_with("> SYSTem:LOCal\n")) << said;
    EXPECT_NE(Content("client").find(" 1 ! connected to " + address + '\n'), std::string::npos);
    EXPECT_NE(Content("instrument").find(" 1 ! connected by 127.0.0.1:"), std::string::npos);
}

TEST_F(TranscriptTest, TheLogMayBeAskedForInFrontOfTheCommand) {
    ASSERT_EQ(Run({"--log", Path("log"), "identify", "--address", "sim://KRV-B"}), 0) << Err;
    EXPECT_NE(Said("log").find("> *IDN?\n< Corvane,KRV-B,"), std::string::npos);
    EXPECT_EQ(Run({"--log", Path("log"), "sim", "--port", "0"}), 2);
    EXPECT_NE(Err.find("--log goes with"), std::string::npos) << Err;
}

}  // namespace
}  // namespace krv::tests
