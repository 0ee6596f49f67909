// Downloads that the instrument is asked about afterwards.
#include <nlohmann/json.hpp>

#include "tests/cli/CommandLineFixture.h"
#include "tests/support/RunningGenerator.h"

namespace krv::tests {
namespace {

using namespace cli;

class VerifyTest : public CommandLineTest {
 protected:
    int Download(const RunningGenerator& generator, const std::string& verify) {
        std::vector<std::string> words{"download", "--address", generator.Address(), "--i",
                                       i,          "--report",  Path("report")};
        if (!verify.empty()) {
            words.push_back(verify);
        }
        return Run(words);
    }
    [[nodiscard]] nlohmann::json Report() const { return nlohmann::json::parse(Content("report")); }

    std::string i = File("data.txt", Ramp(120));
};

TEST_F(VerifyTest, TheMessageSaysWhatWasVerified) {
    const RunningGenerator generator;
    ASSERT_EQ(Download(generator, "--verify"), 0) << Err;
    const auto sent = Report()["sent"];
    const auto sum = [&](std::size_t array) {
        std::string text = sent[array]["crc32"];
        for (char& digit : text) {
            digit = static_cast<char>(std::toupper(static_cast<unsigned char>(digit)));
        }
        return text;
    };
    EXPECT_EQ(Err,
              "Download Waveform to KRV\nDownload complete.\nVerified in the instrument:\n"
              "I and Q data: 120 codes, CRC-32 " +
                  sum(0) + "\nMarkers: 120 codes, CRC-32 " + sum(1) + '\n');
    EXPECT_EQ(Report()["verified"], true);
    ASSERT_EQ(Download(generator, ""), 0) << Err;
    EXPECT_EQ(Err, "Download Waveform to KRV\nDownload complete.\n");
    EXPECT_EQ(Report()["verified"], nullptr);
}

}  // namespace
}  // namespace krv::tests
