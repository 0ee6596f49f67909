// What the user settles for all commands: krv config, the environment, --quiet and colours.
#include "tests/cli/CommandLineFixture.h"

namespace krv::tests {
namespace {

class DefaultsTest : public CommandLineTest {
 protected:
    DefaultsTest() { Surroundings.configFile = Path("home/krv/config"); }

    [[nodiscard]] std::string Config() const { return Content("home/krv/config"); }
};

TEST_F(DefaultsTest, TheOptionCountsMoreThanTheEnvironmentAndThatMoreThanTheFile) {
    EXPECT_EQ(Run({"identify"}), 2);
    EXPECT_NE(Err.find("--address is required.\nKRV_ADDRESS"), std::string::npos) << Err;
    EXPECT_EQ(Run({"config", "set", "address", "sim://M9920C"}), 0) << Err;
    EXPECT_EQ(Run({"identify"}), 0) << Err;
    EXPECT_NE(Out.find("M9920C"), std::string::npos) << Out;
    Surroundings.address = "127.0.0.1:1";
    EXPECT_EQ(Run({"list"}), 0);
    EXPECT_NE(Err.find("No connection to the instrument at tcp://127.0.0.1:1: "), std::string::npos)
        << Err;
    Surroundings.address = "sim://M771XB";
    EXPECT_EQ(Run({"config"}), 0);
    EXPECT_EQ(Out,
              "address  sim://M771XB  KRV_ADDRESS\ncolor    auto          default\n"
              "quiet    off           default\nvisa                   not set\n"
              "The configuration file is " +
                  Path("home/krv/config") + '\n');
    EXPECT_EQ(Run({"identify"}), 0) << Err;
    EXPECT_NE(Out.find("M771XB"), std::string::npos) << Out;
    EXPECT_EQ(Run({"identify", "--address", "sim://M7718C"}), 0) << Err;
    EXPECT_NE(Out.find("M7718C"), std::string::npos) << Out;
    EXPECT_EQ(Run({"info", File("data.csv", "I,Q\n1,2\n")}), 0) << "a file, though: " << Err;
}

TEST_F(DefaultsTest, TheVisaLibraryIsNamedLikeTheAddress) {
    const auto use = [&](const std::string& library) {
        EXPECT_EQ(Run({"identify", "--address", "GPIB0::19::INSTR", "--visa", library}), 1);
        return Err;
    };
    const auto says = [](const std::string& library) {
        return "krv: No connection to the instrument at visa://GPIB0::19::INSTR: there is no VISA "
               "library \"" +
               library + "\". Give the whole path of its file.\n";
    };
    EXPECT_EQ(use(Path("option")), says(Path("option")));
    ASSERT_EQ(Run({"config", "set", "visa", Path("file")}), 0) << Err;
    EXPECT_EQ(Run({"identify", "--address", "GPIB0::19::INSTR"}), 1);
    EXPECT_EQ(Err, says(Path("file")));
    Surroundings.visaLibrary = Path("environment");
    EXPECT_EQ(Run({"identify", "--address", "GPIB0::19::INSTR"}), 1);
    EXPECT_EQ(Err, says(Path("environment")));
    EXPECT_EQ(Run({"list"}), 0) << "does without: " << Err;
    EXPECT_EQ(Err.find("krv: Warning: VISA can't be searched: there is no VISA library"), 0U)
        << Err;
}

TEST_F(DefaultsTest, ConfigChangesItsOwnLinesAlone) {
    std::filesystem::create_directories(Path("home/krv"));
    File("home/krv/config", "# mine\r\naddress=sim://M771XB\r\n\n quiet = on");
    EXPECT_EQ(Run({"config", "set", "address", "sim://KRV-B"}), 0) << Err;
    EXPECT_EQ(Config(), "# mine\n\n quiet = on\naddress = sim://KRV-B\n");
    EXPECT_EQ(Run({"config", "unset", "quiet"}), 0) << Err;
    EXPECT_EQ(Config(), "# mine\n\naddress = sim://KRV-B\n");
    EXPECT_EQ(Run({"config", "set", "adress", "x"}), 2);
    EXPECT_NE(Err.find("There is no setting 'adress'. Did you mean 'address'?"), std::string::npos);
    EXPECT_EQ(Run({"config", "set", "quiet", "perhaps"}), 2);
    EXPECT_EQ(Run({"config", "set", "quiet"}), 2);
    EXPECT_EQ(Config(), "# mine\n\naddress = sim://KRV-B\n");
    EXPECT_EQ(Run({"config", "set", "address", " "}), 2);
    File("home/krv/config",
         "\xEF\xBB\xBF"
         "address = sim://M771XB\n");
    EXPECT_EQ(Run({"identify"}), 0) << "with the mark of an editor: " << Err;
    // What is wrong in it is told by every command, and can be taken out.
    File("home/krv/config", "colour = never\n");
    EXPECT_EQ(Run({"formats"}), 1);
    EXPECT_NE(Err.find("Line 1 of " + Path("home/krv/config") +
                       ": There is no setting 'colour'. Did you mean 'color'?"),
              std::string::npos)
        << Err;
    EXPECT_EQ(Run({"help"}), 0);
    EXPECT_EQ(Run({"config", "unset", "colour"}), 0) << Err;
    EXPECT_EQ(Run({"formats"}), 0) << Err;
}

TEST_F(DefaultsTest, AQuietCommandTellsWhatWasAskedForAndWhatWentWrong) {
    const std::string file = File("dataI.txt", Ramp(120));
    const std::vector<std::string> download{"download", "--address", "sim://M7718C",
                                            "--quiet",  "--i",       file};
    EXPECT_EQ(RunAtTerminal(download, ""), 0);
    EXPECT_EQ(Out + Err + Progress, "");
    EXPECT_EQ(Run({"--quiet", "identify", "--address", "sim://M7718C"}), 0);
    EXPECT_NE(Out, "");
    EXPECT_EQ(Run({"config", "set", "quiet", "on"}), 0);
    EXPECT_EQ(Run({"set", "--rf", "on", "--address", "sim://M7718C"}), 0);
    EXPECT_EQ(Out + Err, "");
    EXPECT_EQ(Run({"files", "delete", "A", "--yes", "--address", "sim://M7718C"}), 1);
    EXPECT_EQ(Err.find("krv: "), 0U) << "a question that nobody answers: " << Err;
    EXPECT_EQ(Run({"set", "--rf", "on", "--quiet=off", "--address", "sim://M7718C"}), 0);
    EXPECT_NE(Out, "") << "the option counts more";
    EXPECT_EQ(Run({"set", "--frequency", "40GHz", "--address", "sim://M7718C"}), 1);
    EXPECT_NE(Err, "");
}

TEST_F(DefaultsTest, ColoursAreForTerminalsWhoseUserWantsThem) {
    struct {
        bool isTerminal;
        bool hasNoColor;
        const char* set;
        std::vector<std::string> words;
        bool isColored;
    } const cases[] = {{true, false, "auto", {"download"}, true},
                       {true, false, "auto", {"dowload"}, true},
                       {false, false, "auto", {"download"}, false},
                       {true, true, "always", {"download"}, false},
                       {true, false, "never", {"download"}, false},
                       {false, false, "always", {"download"}, true},
                       {false, true, "never", {"--color", "always", "download"}, true},
                       {true, false, "auto", {"--color=never", "download"}, false}};
    for (const auto& each : cases) {
        ASSERT_EQ(Run({"config", "set", "color", each.set}), 0) << Err;
        HasColors = each.isTerminal;
        Surroundings.hasNoColor = each.hasNoColor;
        EXPECT_EQ(Run(each.words), 2);
        EXPECT_EQ(Err.starts_with("\x1b[1;31mkrv:\x1b[0m "), each.isColored) << Err;
        EXPECT_EQ(Err.find('\x1b') != std::string::npos, each.isColored) << Err;
    }
}

}  // namespace
}  // namespace krv::tests
