// One waveform to several instruments at once.
#include <chrono>
#include <istream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <streambuf>
#include <string>
#include <thread>
#include <vector>

#include "tests/cli/CommandLineFixture.h"
#include "tests/support/RunningGenerator.h"

namespace krv::tests {
namespace {

class SeveralDownloadsTest : public CommandLineTest {
 protected:
    RunningGenerator first;
    RunningGenerator second{simulator::GeneratorSettings{.model = "M771XB"}};
    // Where nobody answers.
    const std::string Dead = "127.0.0.1:1";

    std::vector<std::string> Words(const std::vector<std::string>& addresses,
                                   const std::vector<std::string>& options) {
        std::vector<std::string> words{"download", "--i",          File("w.csv", Table(60)),
                                       "--report", Path("report"), "--marker-length",
                                       "5",        "--name",       "W"};
        for (const std::string& address : addresses) {
            words.insert(words.end(), {"--address", address});
        }
        words.insert(words.end(), options.begin(), options.end());
        return words;
    }
    static std::string Table(int points) {
        std::string text = "I,Q\n";
        for (int at = 0; at < points; ++at) {
            text += std::to_string(at * 100) + ',' + std::to_string(-at) + '\n';
        }
        return text;
    }
    [[nodiscard]] nlohmann::json Report() const { return nlohmann::json::parse(Content("report")); }
};

TEST_F(SeveralDownloadsTest, OneFailureDoesNotStopTheOthers) {
    const std::vector<std::string> addresses{first.HostAndPort(), Dead, second.HostAndPort()};
    EXPECT_EQ(Run(Words(addresses, {"--verify", "--log", Path("log")})), 1);
    EXPECT_NE(Out.find(addresses[0] + ":\nDownload complete.\nVerified"), std::string::npos) << Out;
    EXPECT_NE(Out.find("W in the M771XB\n"), std::string::npos) << Out;
    EXPECT_EQ(Out.find("Imported:"), Out.rfind("Imported:")) << Out;
    EXPECT_NE(Out.find(addresses[0] + "  done\n127.0.0.1:1" +
                       std::string(addresses[0].size() - Dead.size(), ' ') + "  failed\n" +
                       addresses[2] + "  done\n"),
              std::string::npos)
        << Out;
    EXPECT_EQ(Err.find(Dead + ":\nkrv: No connection to the instrument"), 0U) << Err;
    const auto report = Report();
    EXPECT_EQ(report["outcome"], "failed");
    const auto& each = report["instruments"];
    ASSERT_EQ(each.size(), 3U);
    EXPECT_EQ(each[0]["address"], addresses[0]);
    EXPECT_EQ(each[0]["verified"], true);
    EXPECT_EQ(each[1]["outcome"], "failed");
    EXPECT_EQ(each[2]["model"], "M771XB");
    for (const std::string& address : {addresses[0], addresses[2]}) {
        EXPECT_NE(Content("log").find("! connected to tcp://" + address), std::string::npos);
    }

    EXPECT_EQ(Run(Words({addresses[0], addresses[2]}, {"--json"})), 0) << Err;
    EXPECT_EQ(nlohmann::json::parse(Out)["instruments"][1]["sent"],
              Report()["instruments"][1]["sent"]);
    EXPECT_EQ(Report()["outcome"], "done");
}

TEST_F(SeveralDownloadsTest, QuestionsComeOneAfterAnotherAndProgressIsATable) {
    const std::vector<std::string> addresses{first.HostAndPort(), second.HostAndPort()};
    ASSERT_EQ(Run(Words(addresses, {})), 0) << Err;
    EXPECT_EQ(RunAtTerminal(Words(addresses, {}), "y\nn\n"), 130) << Err;
    const auto report = Report();
    EXPECT_NE(report["instruments"][0]["outcome"], report["instruments"][1]["outcome"]);
    for (const std::string& address : addresses) {
        EXPECT_NE(Err.find(address + ":\nkrv download\nThe instrument holds a waveform W of 60 "
                                     "points.  Replace it?\n[y/N] "),
                  std::string::npos)
            << Err;
        EXPECT_NE(Progress.find('\r' + address + "  waiting"), std::string::npos) << Progress;
    }
    EXPECT_NE(Progress.find("  cancelled\x1b[K"), std::string::npos) << Progress;
    EXPECT_TRUE(Progress.ends_with("\x1b[2A\r\x1b[J")) << Progress;
}

TEST_F(SeveralDownloadsTest, CtrlCCancelsAll) {
    const std::vector<std::string> addresses{first.HostAndPort(), second.HostAndPort()};
    first.Device().ActiveFaults().Switch("never-answer");
    second.Device().ActiveFaults().Switch("never-answer");
    std::thread user([this] {
        while (first.Device().BytesTakenIn() == 0 || second.Device().BytesTakenIn() == 0) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        CtrlC.Press();
    });
    EXPECT_EQ(RunAtTerminal(Words(addresses, {}), ""), 130) << Err;
    user.join();
    EXPECT_EQ(Report()["outcome"], "cancelled");
    EXPECT_TRUE(CtrlC.Ended.empty());
}

// Ctrl-C at a question ends the wait for the answer.
class PressedAtQuestions final : public std::streambuf {
 public:
    explicit PressedAtQuestions(FakeInterruptions& key) : m_key(key) {}
    int Questions = 0;

 protected:
    int_type underflow() override {
        ++Questions;
        m_key.Press();
        return traits_type::eof();
    }

 private:
    FakeInterruptions& m_key;
};

TEST_F(SeveralDownloadsTest, CtrlCAtAQuestionAnswersAll) {
    const std::vector<std::string> addresses{first.HostAndPort(), second.HostAndPort()};
    ASSERT_EQ(Run(Words(addresses, {})), 0) << Err;
    PressedAtQuestions keys(CtrlC);
    std::istream in(&keys);
    std::ostringstream text;
    cli::Console console{in, text, text, CtrlC};
    console.canAsk = true;
    std::ostringstream drawn;
    console.progress = &drawn;
    console.progressWidth = 24;
    EXPECT_EQ(cli::RunCommandLine(Words(addresses, {}), console), 130) << text.str();
    EXPECT_EQ(keys.Questions, 1) << text.str();
    EXPECT_NE(drawn.str().find("  cancelled\x1b[K"), std::string::npos)
        << "the outcome counts more than the address: " << drawn.str();
}

TEST_F(SeveralDownloadsTest, WhatCannotBeMeantIsRefusedOnce) {
    EXPECT_EQ(Run(Words({Dead, Dead}, {})), 2);
    EXPECT_EQ(Err.find("krv: --address names an instrument twice."), 0U) << Err;
    EXPECT_EQ(Run(Words({Dead, "TCPIP0::127.0.0.1::1::SOCKET"}, {})), 2) << "in another spelling";
    EXPECT_EQ(Run(Words({first.HostAndPort(), Dead}, {"--normalize", "--scale", "50"})), 2);
    EXPECT_EQ(Err.find("krv: --normalize is the same as"), 0U) << Err;
    EXPECT_EQ(Report()["outcome"], "failed");
}

}  // namespace
}  // namespace krv::tests
