// What krv says of files that hold something else than numbers, behind the dialog's words.
#include "tests/cli/CommandLineFixture.h"

namespace krv::tests {
namespace {

class BadInputTest : public CommandLineTest {
 protected:
    int Convert(const std::string& file, const std::string& scale = "100") {
        return Run({"convert", "--model", "M771XB", "--output", Path("codes"), "--i", file,
                    "--scale", scale});
    }
};

TEST_F(BadInputTest, IsQuotedWithItsPlaceAndWhatTheFileLooksLike) {
    const std::pair<std::string, const char*> cases[] = {
        {"1 2\n\n\xC3\xA4 0,5\n", ", line 3, column 1: '\\xC3\\xA4' is not a number.\n"},

        {Ramp(20) + " 1,000\n",
         ", line 21, column 2: '1,000' is not a number. This looks like a number with a decimal "
         "comma, or "},
        {"0,5\n1,5\n",
         ", line 1, column 1: '0,5' is not a number. This looks like a number with a "},
        {"1e999", ", line 1, column 1: '1e999' is too large.\n"},
        {" \n", " holds no numbers.\n"},
        {"1\r2\r\n3\rx", ", line 4, column 1: 'x' is not a number.\n"},
        {"\x93\x93 1", ", line 1, column 1: '\\x93\\x93' is not a number.\n"},
    };
    for (const auto& [content, says] : cases) {
        const std::string file = File("data.txt", content);
        EXPECT_EQ(Convert(file), 1) << says;
        EXPECT_NE(Err.find("\nkrv: " + file + says), std::string::npos) << says << '\n' << Err;
    }
}

TEST_F(BadInputTest, IsNotWhatTheUserWritesWithACommaOfTheirOwn) {
    const std::string file = File("comma.txt", "0,5 1.5 " + Ramp(14));
    EXPECT_EQ(Convert(file), 1);
    UsersNumbers.decimalSeparator = ',';
    EXPECT_EQ(Convert(file, "12,5"), 0) << Err;
}

}  // namespace
}  // namespace krv::tests
