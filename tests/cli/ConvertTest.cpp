// Conversion without an instrument: the codes that come out, byte for byte.
#include "tests/cli/CommandLineFixture.h"

namespace krv::tests {
namespace {

using namespace cli;

class ConvertTest : public CommandLineTest {
 protected:
    int Convert(const std::string& model, std::vector<std::string> options) {
        options.insert(options.begin(), {"convert", "--model", model, "--output", Path("codes")});
        return Run(options);
    }

    // The pattern again and again until there are so many values.
    static std::string Lines(const std::vector<std::string>& pattern, std::size_t count) {
        std::string text;
        for (std::size_t at = 0; at < count; ++at) {
            text += pattern[at % pattern.size()] + '\n';
        }
        return text;
    }
    static std::vector<int> Repeated(const std::vector<int>& pattern, std::size_t count) {
        std::vector<int> codes;
        for (std::size_t at = 0; at < count; ++at) {
            codes.push_back(pattern[at % pattern.size()]);
        }
        return codes;
    }
};

TEST_F(ConvertTest, IAndQShareOnePeak) {
    File("waveI.txt", Lines({"1", "-1"}, 60));
    File("waveQ.txt", Lines({"2", "0"}, 60));
    ASSERT_EQ(Convert("M9920C", {"--i", Path("waveI.txt"), "--find-q"}), 0) << Err;
    EXPECT_EQ(Codes("codes/i.int16"), Repeated({16384, -16384}, 60));
    EXPECT_EQ(Codes("codes/q.int16"), Repeated({32767, 0}, 60));
    // Without Q, the Q codes of the conversion before are gone.
    ASSERT_EQ(Convert("M771XB", {"--i", Path("waveI.txt")}), 0) << Err;
    EXPECT_FALSE(Exists("codes/q.int16"));
}

TEST_F(ConvertTest, OutputThatCannotBeWrittenIsRefused) {
    const std::string i = File("i.int16", Ramp(60));
    EXPECT_EQ(Run({"convert", "--model", "M771XB", "--i", i, "--output", Path("")}), 2);
    EXPECT_NE(Err.find("--output would overwrite"), std::string::npos) << Err;
    EXPECT_EQ(Content("i.int16"), Ramp(60));

    File("codes", "a file");
    EXPECT_EQ(Convert("M771XB", {"--i", i}), 1);
    EXPECT_NE(Err.find("Can't make the folder " + Path("codes")), std::string::npos) << Err;
    EXPECT_EQ(Convert("M771XB", {"--i", i, "--report", Path("no/such/folder")}), 1);
    EXPECT_NE(Err.find("Can't write " + Path("no/such/folder")), std::string::npos) << Err;
}

}  // namespace
}  // namespace krv::tests
