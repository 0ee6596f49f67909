// The command line's own side: help, the manual, and wrong usage.
#include <algorithm>
#include <regex>

#include "cli/ArgumentParser.h"
#include "simulator/device/GeneratorSettings.h"
#include "tests/cli/CommandLineFixture.h"

namespace krv::tests {
namespace {

using namespace cli;
using UsageTest = CommandLineTest;

TEST_F(UsageTest, EveryCommandSaysHowToUseItInAnyPlace) {
    for (const char* command :
         {"sim", "list", "identify", "check", "download", "convert", "formats", "import", "info",
          "plot", "image", "capture", "restore", "doctor", "config", "completion", "help"}) {
        ASSERT_EQ(Run({"help", command}), 0) << command;
        EXPECT_NE(Out.find(std::string("Usage: krv ") + command), std::string::npos) << Out;
        const std::string asked = Out;
        for (const auto& words : std::vector<std::vector<std::string>>{
                 {command, "--help"}, {"-h", command}, {command, "--bad", "-h"}}) {
            ASSERT_EQ(Run(words), 0) << command;
            EXPECT_EQ(Out, asked);
        }
    }
    ASSERT_EQ(Run({"help"}), 0);
    EXPECT_NE(Out.find("download"), std::string::npos);
    ASSERT_EQ(Run({"--version"}), 0);
    EXPECT_EQ(Out.substr(0, 4), "krv ");
    EXPECT_EQ(Err, "");
}

TEST_F(UsageTest, TheManualTellsOfEveryCommandAndOption) {
    std::string manual = ReadFile(ProjectFile("docs/krv.1"));
    manual.erase(std::remove(manual.begin(), manual.end(), '\\'), manual.end());
    for (const std::string& name : cli::CommandsAndOptions()) {
        const std::size_t blank = name.find(' ');
        const std::string wanted =
            blank == std::string::npos ? "\n.B " + name + '\n' : name.substr(blank + 1);
        EXPECT_NE(manual.find(wanted), std::string::npos) << name;
    }
    // Where these two hold for several commands, the manual lists them.
    for (const char* option : {"--address", "--log"}) {
        const std::size_t at = manual.find(std::string("\n.BI ") + option);
        const std::size_t heading = manual.rfind("\n.SS", at);
        const std::size_t end = std::min(manual.find("\n.SS", at), manual.find("\n.BI --", at + 1));
        const std::string about = manual.substr(heading, end - heading);
        for (const std::string& name : cli::CommandsAndOptions()) {
            const std::string command = name.substr(0, name.find(' '));
            if (name == command + ' ' + option) {
                EXPECT_TRUE(std::regex_search(about, std::regex("\\b" + command + "\\b"))) << name;
            }
        }
    }
    // What prints a text that is no result has no use for it.
    const std::vector<std::string> names = cli::CommandsAndOptions();
    for (const std::string& name : names) {
        if (name.find(' ') == std::string::npos && name != "completion" && name != "help") {
            EXPECT_EQ(std::ranges::count(names, name + " --json"), 1) << name;
        }
    }
    const simulator::GeneratorSettings usual;
    for (const std::string& value :
         {usual.options.front(), usual.firmware, std::to_string(usual.memoryPoints)}) {
        EXPECT_NE(manual.find("The default is " + value), std::string::npos) << value;
    }
}

TEST_F(UsageTest, WrongUsageExitsWithTwoAndSaysWhy) {
    const std::string i = File("dataI.txt", Ramp(100));
    const std::string address = "sim://M7718C";
    struct Case {
        std::vector<std::string> arguments;
        const char* says;
    };
    const std::vector<Case> cases{
        {{}, "Name a command"},
        {{"dowload"}, "There is no command 'dowload'. Did you mean 'download'?"},
        {{"help", "dow\x1B[2J\xC2\x9B\xE2\x9B\x94\xE2\x9B"},
         "There is no command 'dow\\x1B[2J\\x9B\xE2\x9B\x94\xE2\\x9B'"},
        {{"check", "--i", "a\nDownload complete."}, "line break in 'a?Download complete.'"},
        {{"check", "--i", i}, "--address is required"},
        {{"check", "--adress", address, "--i", i},
         "There is no option --adress of krv check. Did you mean '--address'?"},
        {{"check", "--address", address, "--i="}, "--i has no value behind the '='."},
        {{"--frobnicate", "list"}, "There is no option --frobnicate of krv list.\n"},
        {{"convert", "--i", i, "--output", "x", "--model", "m771xd"}, "Did you mean 'M771XD'?"},
        {{"download", "--address", address}, "--i is required"},
        {{"convert", "--i", i, "--output", "x"}, "--model is required"},
        {{"check", "--address", address, "--i", i, "more", "words"}, "takes no word 'more' here."},
        {{"--address", address, "status"}, "--address stands behind the command: krv status"},
        {{"check", "--address", address, "--i", i, "--i", i}, "--i is given more than once."},
        {{"set", "--address", address, "--level"}, "--level has no value."},
        {{"set", "--address", address}, "krv set takes at least one of --frequency"},
        {{"play", "--address", address, ""}, "The name of a waveform is empty."},
        {{"files", "delete", "--address", address, "a", " "}, "The name of a waveform is empty."},
        {{"status", "--colour", "never"}, "Did you mean '--color'?"},
        {{"check", "--address", address, "--i", i, "--name", "N"}, "--name"},
        {{"check", "--address", address, "--i", i, "--type", "14bit"},
         "--type: '14bit' is none of: 14-bit, 16-bit, waveform. Did you mean '14-bit'?"},
        {{"check", "--address", address, "--i", i, "--file-type", "1"},
         "--file-type: '1' is none of: ascii, big-endian, little-endian.\n"},
        {{"files", "delte", "--address", address}, "Did you mean 'delete'?"},
        {{"set", "--rf", "onn", "--address", address}, "Did you mean 'on'?"},
        {{"sim", "--fault", "dealy=5"}, "Did you mean 'delay'?"},
        {{"send", " ", "--address", address}, "krv send takes a message"},
        {{"list", "--host", "a b"}, "--host takes the name or the number of a computer"},
        {{"list", "--host", "127.0.0.1:5025"}, "without a port"},
        {{"--log", "a", "identify", "--address", address, "--log", "b"}, "--log is given twice"},
        {{"check", "--address", address, "--i", i, "--q", i, "--find-q"}, "--find-q"},
        {{"check", "--address", address, "--i", i, "--marker-file", i, "--marker-start", "0"},
         "--marker-start"},
        {{"check", "--address", address, "--i", i, "--q", i, "--type", "16-bit"},
         "--q can't be used with --type 16-bit"},
        {{"check", "--address", address, "--i", i, "--find-q", "--type", "16-bit"},
         "--find-q can't be used with --type 16-bit"},
        {{"check", "--address", address, "--i", i, "--file-type", "big-endian"},
         "--file-type other than ascii can't be used with --type waveform"},
        {{"check", "--address", address, "--i", i, "--report", i}, "--report would overwrite"},
        {{"check", "--address", address, "--i", " \"" + i + "\"", "--report", i},
         "--report would overwrite"},
        {{"check", "--address", address, "--i", "a.sigmf-meta", "--report", "a.sigmf-data"},
         "--report would overwrite"},
        {{"image", "x.bmp", "--address", address, "--log", "./x.bmp"}, "--log would overwrite"},
        {{"check", "--address", address, "--i", i, "--report", "x", "--log", "./x"},
         "--log would overwrite x, which --report names, too"},
        {{"capture", i, "--address", address, "--log", i}, "--log would overwrite"},
        {{"image", "--address", address}, "FILE is required"},
        {{"image", "a.gif"}, "--address is required"},
        {{"image", "a.png", "--address", address}, ".jpg, .jpeg, .tif, .tiff or .emf."},
        {{"capture", "--address", address}, "FILE is required"},
        {{"restore", "a.state"}, "--address is required"},
        {{"sim", "--port", "65536"}, "--port"},
        {{"sim", "--memory-points", "-1"}, "--memory-points: Value -1 not in range"},
        {{"sim", "--fault", "gremlins"}, "gremlins"},
        {{"sim", "--model", "M1"}, "M1"},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(Run(each.arguments), 2) << each.says;
        EXPECT_NE(Err.find(each.says), std::string::npos) << each.says << "\n" << Err;
        EXPECT_EQ(Out, "");
    }
    EXPECT_EQ(Content("dataI.txt"), Ramp(100));
}

}  // namespace
}  // namespace krv::tests
