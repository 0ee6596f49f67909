// Input of every bad kind: refused with the dialog's words or clear ones, never with a crash.
#include <filesystem>

#include "tests/cli/CommandLineFixture.h"

namespace krv::tests {
namespace {

using namespace cli;

const std::string NotNumeric =
    "Error processing I-File.  The file does not appear to contain numeric ASCII data, separated "
    "by white space.\nPlease confirm that the specified File Format is correct.\nInvalid data at "
    "line ";

class BadInputTest : public CommandLineTest {
 protected:
    // Converts for an old model; nothing may be written when it is refused.
    int Convert(const std::string& file, std::vector<std::string> options = {}) {
        options.insert(options.begin(),
                       {"convert", "--model", "M771XB", "--output", Path("codes"), "--i", file});
        return Run(options);
    }
};

TEST_F(BadInputTest, TextThatIsNoWaveformIsRefused) {
    struct Case {
        const char* what;
        std::string content;
        std::string says;
    };
    const std::vector<Case> cases{
        {"empty", "", NotNumeric + "1"},
        {"binary samples", LittleEndian(std::vector<int>(1000, 8192)), NotNumeric + "1"},
        {"UTF-16", std::string("1\0\n\0002\0\n\0", 8), NotNumeric + "1"},
        {"group separator", Ramp(20) + "1,000\n", NotNumeric + "21"},
        {"too few", Ramp(15), "The I (or I and Q)-Data must contain at least 16 points."},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(Convert(File("data.txt", each.content)), 1) << each.what;
        EXPECT_NE(Err.find("Download Waveform to KRV"), std::string::npos) << each.what;
        EXPECT_NE(Err.find(each.says + '\n'), std::string::npos) << each.what << "\n" << Err;
        EXPECT_EQ(Out, "") << each.what;
        EXPECT_FALSE(Exists("codes")) << each.what;
    }
}

TEST_F(BadInputTest, NamesThatAreNoFilesAreRefused) {
    std::filesystem::create_directory(Path("folder"));
    for (const std::string& name : {Path("missing.txt"), Path("folder"), Path("")}) {
        EXPECT_EQ(Convert(name), 1) << name;
        EXPECT_NE(Err.find("Invalid File Name specified for I-Data.\n"), std::string::npos) << Err;
    }
    EXPECT_EQ(Convert(""), 1);
    EXPECT_NE(Err.find("No File Name specified for I-Data.\n"), std::string::npos) << Err;
    const std::string i = File("data.txt", Ramp(16));
    EXPECT_EQ(Convert(i, {"--q", Path("missing.txt")}), 1);
    EXPECT_NE(Err.find("Invalid File Name speicifed for Q-Data.\n"), std::string::npos) << Err;
    EXPECT_EQ(Convert(i, {"--marker-file", Path("missing.txt")}), 1);
    EXPECT_NE(Err, "");
    EXPECT_EQ(Convert(i, {"--find-marker"}), 1);
    EXPECT_NE(Err.find("No marker file name specified"), std::string::npos) << Err;
}

TEST_F(BadInputTest, NamesOutsideAsciiAreFiles) {
    File("Größe Ωй I.txt", Ramp(16));
    File("Größe Ωй Q.txt", Ramp(16));
    ASSERT_EQ(Convert(Path("Größe Ωй I.txt"), {"--find-q"}), 0) << Err;
    EXPECT_EQ(Codes("codes/q.int16").size(), 16U);
    EXPECT_NE(Out.find("Größe Ωй Q.txt"), std::string::npos) << Out;
}

TEST_F(BadInputTest, FieldsAreJudgedByTheDialog) {
    const std::string file = File("data.txt", Ramp(16));
    struct Case {
        std::vector<std::string> options;
        const char* says;
    };
    const std::vector<Case> cases{
        {{"--scale", "100.0001"}, "The magnitude of the Scale Factor must be <= 100."},
        {{"--marker-start", "2.5"},
         "The Event Marker Starting Point must be a non-negative integer."},
        {{"--marker-length", "-1"},
         "The Event Marker Number of Points must be a non-negative integer."},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(Convert(file, each.options), 1) << each.says;
        EXPECT_EQ(Err, std::string("Download Waveform to KRV [warning]\n") + each.says + '\n');
    }
}

}  // namespace
}  // namespace krv::tests
