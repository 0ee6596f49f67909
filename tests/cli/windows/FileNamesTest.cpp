#include "tests/cli/CommandLineFixture.h"

namespace krv::tests {
namespace {

using FileNamesTest = CommandLineTest;

TEST_F(FileNamesTest, ThatDifferInCaseAreOneFile) {
    const std::string i = File("data.txt", Ramp(16));
    EXPECT_EQ(Run({"check", "--address", "sim://M771XB", "--i", i, "--report", Path("Out"), "--log",
                   Path("oUT")}),
              2);
    EXPECT_NE(Err.find("--log would overwrite"), std::string::npos) << Err;
    EXPECT_FALSE(Exists("out"));
}

}  // namespace
}  // namespace krv::tests
