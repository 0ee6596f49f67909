// Checks and downloads against simulated generators, in process and over TCP.
#include <algorithm>
#include <cctype>
#include <chrono>
#include <filesystem>
#include <future>
#include <memory>
#include <nlohmann/json.hpp>
#include <thread>

#include "tests/cli/CommandLineFixture.h"
#include "tests/support/RunningGenerator.h"

namespace krv::tests {
namespace {

using namespace cli;

const std::string Title = "Download Waveform to KRV";

class DownloadTest : public CommandLineTest {
 protected:
    // "krv COMMAND --address sim://MODEL --i data.txt --report report ..."
    std::vector<std::string> Words(const std::string& command, const std::string& model,
                                   const std::vector<std::string>& options) const {
        std::vector<std::string> words{command, "--address", "sim://" + model, "--report",
                                       Path("report")};
        words.insert(words.end(), options.begin(), options.end());
        return words;
    }
    [[nodiscard]] nlohmann::json Report() const { return nlohmann::json::parse(Content("report")); }
};

TEST_F(DownloadTest, ADownloadTellsWhatItDid) {
    const std::string i = File("waveI.txt", Ramp(60));
    File("waveQ.txt", Ramp(60));
    ASSERT_EQ(Run(Words("download", "M7718C", {"--i", i, "--find-q"})), 0) << Err;
    EXPECT_EQ(Err, "");
    EXPECT_EQ(Out, "Download complete.\nI data:       60 points from " + i +
                       "\nQ data:       60 points from " + Path("waveQ.txt") +
                       "\nMarkers:      60 values\nCodes:        546 to 32767, 16-bit\n"
                       "Written to:   waveI in the M7718C\n");

    const auto report = Report();
    EXPECT_EQ(report["command"], "download");
    EXPECT_EQ(report["outcome"], "done");
    EXPECT_EQ(report["model"], "M7718C");
    EXPECT_EQ(report["sources"]["i"], i);
    EXPECT_EQ(report["sources"]["q"], Path("waveQ.txt"));
    EXPECT_EQ(report["sources"]["markers"], nullptr);
    EXPECT_EQ(report["counts"], (nlohmann::json{{"i", 60}, {"q", 60}, {"markers", 60}}));
    EXPECT_EQ(report["codes"], (nlohmann::json{{"minimum", 546}, {"maximum", 32767}}));
    EXPECT_EQ(report["destination"], "waveI");
    EXPECT_EQ(report["transferred"], true);
    EXPECT_EQ(report["verified"], nullptr);
    EXPECT_EQ(report["sent"][0]["channel"], "iq");
    EXPECT_EQ(report["sent"][0]["count"], 120);
    EXPECT_EQ(report["sent"][1]["channel"], "markers");
    EXPECT_EQ(report["estimatedSeconds"], 3);
    const auto& times = report["timesMs"];
    EXPECT_GE(times["total"].get<int>(), times["read"].get<int>() + times["convert"].get<int>() +
                                             times["transfer"].get<int>());
    EXPECT_EQ(report["messages"], nlohmann::json::array({{{"title", Title},
                                                          {"text", "Download complete."},
                                                          {"icon", "none"},
                                                          {"answer", "OK"}}}));
    EXPECT_EQ(report["instrumentErrors"], nlohmann::json::array());
}

TEST_F(DownloadTest, AVerifiedDownloadSaysWhatTheInstrumentHolds) {
    const std::string i = File("data.txt", Ramp(120));
    ASSERT_EQ(Run(Words("download", "M7718C", {"--i", i, "--verify"})), 0) << Err;
    const auto sum = [report = Report()](std::size_t array) {
        std::string text = report["sent"][array]["crc32"];
        std::transform(text.begin(), text.end(), text.begin(), ::toupper);
        return text;
    };
    EXPECT_EQ(Out.find("Download complete.\nVerified in the instrument:\n"
                       "I and Q data: 120 codes, CRC-32 " +
                       sum(0) + "\nMarkers: 120 codes, CRC-32 " + sum(1) +
                       "\nI and Q data: 60 points from "),
              0U)
        << Out;
    EXPECT_EQ(Report()["verified"], true);
}

TEST_F(DownloadTest, ACheckEstimatesAndSendsNothing) {
    const std::string i = File("data.txt", Ramp(16));
    ASSERT_EQ(Run(Words("check", "M771XB", {"--i", i})), 0) << Err;
    EXPECT_NE(Err.find(Title + "\nEstimated download time, assuming\n"), std::string::npos) << Err;
    EXPECT_NE(Err.find("3 seconds.\n"), std::string::npos) << Err;
    const auto report = Report();
    EXPECT_EQ(report["transferred"], false);
    EXPECT_EQ(report["sent"], nlohmann::json::array());
    EXPECT_EQ(report["timesMs"]["transfer"], nullptr);
    EXPECT_EQ(report["counts"]["i"], 16);
}

TEST_F(DownloadTest, QuestionsAreAnsweredByOptionOrAtTheTerminal) {
    const std::string i = File("waveI.txt", Ramp(60));
    const std::string q = File("waveQ.txt", Ramp(62));
    const auto words = Words("check", "M771XB", {"--i", i, "--q", q});
    auto agreeing = words;
    agreeing.push_back("--yes");
    const std::string question =
        Title +
        " [warning]\nThe I-Data contains 60 data points.\nThe Q-Data contains 62 data points.\n"
        "The I- and Q-Data should contain the same number of points.\n\nDo you want to continue?\n";
    EXPECT_EQ(Run(words), 130);
    EXPECT_EQ(Err, question + "Answered: No (--yes answers Yes)\n");
    EXPECT_EQ(Report()["messages"][0]["answer"], "No");
    EXPECT_EQ(Report()["counts"]["i"], nullptr);
    EXPECT_EQ(Run(agreeing), 0);
    EXPECT_EQ(Err.find(question + "Answered: Yes\n"), 0U) << Err;
    EXPECT_EQ(RunAtTerminal(words, "y\n"), 0);
    EXPECT_EQ(RunAtTerminal(words, "YES\r\n"), 0);
    EXPECT_EQ(RunAtTerminal(words, "yet\n"), 130);
    EXPECT_EQ(RunAtTerminal(words, "\n"), 130);
    EXPECT_EQ(RunAtTerminal(words, ""), 130);
    EXPECT_EQ(Report()["outcome"], "cancelled");
    EXPECT_EQ(Err.find(question + "[y/N] "), 0U) << Err;
}

TEST_F(DownloadTest, AConnectionThatFailsIsToldAndReported) {
    const std::string i = File("data.txt", Ramp(16));
    for (const std::string address :
         {"tcp://127.0.0.1:1", "gpib://7", "sim://M1", "127.0.0.1:1", ""}) {
        EXPECT_EQ(Run({"download", "--address", address, "--i", i, "--report", Path("report")}), 1)
            << address;
        EXPECT_EQ(Err.find("krv: "), 0U) << Err;
        EXPECT_EQ(Report()["outcome"], "failed");
        EXPECT_EQ("krv: " + Report()["error"].get<std::string>() + '\n', Err);
        EXPECT_EQ(Run({"identify", "--address", address}), 1) << address;
        EXPECT_EQ(Out, "");
    }
}

TEST_F(DownloadTest, ABadAddressIsExplainedAsItWasTyped) {
    EXPECT_EQ(Run({"identify", "--address", "127.0.0.1:99999"}), 1);
    EXPECT_EQ(Err,
              "krv: The address \"127.0.0.1:99999\" cannot be used: its port is not a number from "
              "1 to 65535; write HOST:PORT, for example 192.168.0.10:5025.\n");
    EXPECT_EQ(Run({"identify", "--address", "sim://m7718c"}), 1);
    EXPECT_NE(Err.find("KRV-B. Did you mean 'M7718C'?\n"), std::string::npos) << Err;
}

TEST_F(DownloadTest, ProgressIsTwoLiveLinesOnATerminalAlone) {
    const std::string i = File("data.txt", Ramp(16));
    ASSERT_EQ(RunAtTerminal(Words("download", "M771XB", {"--i", i}), ""), 0) << Err;
    EXPECT_NE(Progress.find("Overall progress..."), std::string::npos);
    EXPECT_NE(Progress.find("[..............................]   0%"), std::string::npos);
    EXPECT_NE(Progress.find("##################............]  60%"), std::string::npos);
    EXPECT_NE(Progress.find("Download started at "), std::string::npos);
    // The lines are gone when the message box comes.
    EXPECT_EQ(Progress.substr(Progress.size() - 8), "\x1b[2A\r\x1b[J");
    EXPECT_NE(Progress.find("the instrument... 32 of 32 B, "), std::string::npos);
    ASSERT_EQ(Run(Words("download", "M771XB", {"--i", i})), 0) << Err;
    EXPECT_EQ(Progress + Err, "") << "it didn't take long";
    ProgressIntervalMs = 0;
    ASSERT_EQ(Run(Words("download", "M771XB", {"--i", i})), 0) << Err;
    EXPECT_NE(Err.find(" 60% Downloading waveform to the instrument... 32 of 32 B, "),
              std::string::npos)
        << Err;
}

TEST_F(DownloadTest, WhatTheUserMayNotHaveMeantIsSaid) {
    const std::string i = File("wave.bin", LittleEndian(std::vector<int>(16, 4)));
    const std::string markers = File("markers.bin", std::string(40, '\1'));
    const auto words =
        Words("download", "M771XB", {"--i", i, "--file-type", "little-endian", "--type", "16-bit"});
    auto more = words;
    more.insert(more.end(), {"--marker-file", markers});
    ASSERT_EQ(Run(more), 0) << Err;
    EXPECT_EQ(Err,
              "krv: Warning: The M771XB takes I and Q in separate arrays: every value counts as I "
              "data.\nkrv: Warning: The marker file holds 20 values, the I file 16.\n");
    EXPECT_NE(Out.find("Markers:      20 values from " + markers +
                       ", not sent: the M771XB takes no markers\n"),
              std::string::npos)
        << Out;
    more = words;
    more.insert(more.end(), {"--marker-start", "10", "--marker-length", "7"});
    ASSERT_EQ(Run(more), 0) << Err;
    EXPECT_NE(Err.find("The marker pulse extends past the last of 16 values.\n"), std::string::npos)
        << Err;
    EXPECT_EQ(Run(Words("check", "M771XB", {"--i", i, "--find-q"})), 1);
    EXPECT_NE(Err.find("krv: --find-q finds no Q file"), std::string::npos) << Err;
}

TEST_F(DownloadTest, CtrlCIsTheCancelButton) {
    const std::string i = File("data.txt", Ramp(200000));
    for (const char* when : {"Preliminary validation", "Reading I-File", "Scaling waveform data"}) {
        OnProgress = [&, pressed = false](const std::string& drawn) mutable {
            if (!pressed && drawn.find(when) != std::string::npos) {
                pressed = true;
                EXPECT_EQ(Report()["outcome"], "unfinished");
                CtrlC.Press();
            }
        };
        EXPECT_EQ(RunAtTerminal(Words("download", "M771XB", {"--i", i}), ""), 130) << when;
        EXPECT_EQ(Err, "") << when;
        EXPECT_EQ(Report()["outcome"], "cancelled");
        EXPECT_EQ(Report()["sent"], nlohmann::json::array());
    }
    EXPECT_EQ(CtrlC.Warnings, "");
    EXPECT_TRUE(CtrlC.Ended.empty());
}

TEST_F(DownloadTest, WhileTheWaveformIsSentASecondCtrlCEndsTheProgram) {
    const std::string i = File("data.txt", Ramp(16));
    OnProgress = [&, presses = 0](const std::string& drawn) mutable {
        if (presses < 2 &&
            drawn.find("the instrument... Download started at ") != std::string::npos) {
            presses = 2;
            CtrlC.Press();
            EXPECT_NE(CtrlC.Warnings.find("Ctrl-C again"), std::string::npos);
            EXPECT_TRUE(CtrlC.Ended.empty());
            CtrlC.Press();
        }
    };
    // This program goes on; what was sent is complete.
    EXPECT_EQ(RunAtTerminal(Words("download", "M771XB", {"--i", i}), ""), 0);
    EXPECT_EQ(CtrlC.Ended, std::vector<int>{130});
}

// The array itself, which nothing but Ctrl-C can end, goes to an instrument that takes nothing in.
TEST_F(DownloadTest, CtrlCEndsAWaitForTheInstrument) {
    const auto generator = std::make_shared<simulator::Generator>(simulator::GeneratorSettings{});
    const RunningGenerator running(generator);
    const std::string i = File("data.txt", Ramp(2'000'000));
    std::thread user;
    std::chrono::steady_clock::time_point pressed;
    OnProgress = [&](const std::string& drawn) {
        if (!user.joinable() && drawn.find("Download started at ") != std::string::npos) {
            generator->ActiveFaults().Switch("bandwidth=1");
            user = std::thread([&] {
                std::this_thread::sleep_for(std::chrono::milliseconds(300));
                pressed = std::chrono::steady_clock::now();
                CtrlC.Press();
            });
        }
    };
    EXPECT_EQ(RunAtTerminal({"download", "--address", running.Address(), "--i", i, "--yes",
                             "--report", Path("report")},
                            ""),
              130);
    user.join();
    EXPECT_EQ(Report()["sent"], nlohmann::json::array()) << "half of it is nothing";
    EXPECT_LT(std::chrono::steady_clock::now() - pressed, std::chrono::seconds(25));
    EXPECT_EQ(Err.find("Cancel Pressed"), std::string::npos) << Err;
}

// "krv sim" on a thread of its own.
class Simulator {
 public:
    explicit Simulator(std::vector<std::string> options) {
        options.insert(options.begin(), "sim");
        m_out.OnText = [this](const std::string& text) {
            if (!m_listening && text.find('\n') != std::string::npos) {
                m_listening = true;
                m_line.set_value(text);
            }
        };
        m_thread = std::thread([this, options] {
            std::ostream out(&m_out);
            cli::Console console{m_in, out, m_err, m_ctrlC};
            m_exitCode = cli::RunCommandLine(options, console);
        });
    }
    ~Simulator() { static_cast<void>(Stop()); }

    std::string Address() {
        static const std::string Start = "listening on ";
        const std::string line = m_line.get_future().get();
        EXPECT_EQ(line.find(Start + "127.0.0.1:"), 0U);
        EXPECT_EQ(line.find('\n'), line.size() - 1);
        return "tcp://" + line.substr(Start.size(), line.size() - Start.size() - 1);
    }
    int Stop() {
        if (m_thread.joinable()) {
            m_ctrlC.Press();
            m_thread.join();
        }
        return m_exitCode;
    }
    // Of one that has stopped.
    [[nodiscard]] std::string Errors() const { return m_err.str(); }

 private:
    std::istringstream m_in;
    std::ostringstream m_err;
    WatchedTerminal m_out;
    bool m_listening = false;
    std::promise<std::string> m_line;
    FakeInterruptions m_ctrlC;
    int m_exitCode = -1;
    std::thread m_thread;
};

TEST_F(DownloadTest, TheSimulatorIdentifiesItself) {
    Simulator simulator(
        {"--model", "M771XD", "--options", "R2X,ABC", "--firmware", "C.01.02", "--serial", "US7"});
    const std::string hostAndPort = simulator.Address().substr(6);
    ASSERT_EQ(Run({"identify", "--address", hostAndPort}), 0) << Err;
    EXPECT_EQ(Out,
              "Model:             M771XD\nFirmware revision: C.01.02\nSerial number:     US7\n"
              "Options:           R2X, ABC\nSelected waveform: none\n");
    const std::string i = File("wave.txt", Ramp(16));
    for (const char* end : {"wave in the M771XD\n", "M771XD, in place of an earlier waveform\n"}) {
        ASSERT_EQ(Run({"download", "--address", hostAndPort, "--i", i}), 0) << Err;
        EXPECT_TRUE(Out.ends_with(end)) << Out;
    }
    EXPECT_EQ(simulator.Stop(), 0);
}

TEST_F(DownloadTest, SimulatorsThatRunAreListedWithThoseInTheProgram) {
    Simulator simulator({"--model", "M9920D"});
    const std::string address = simulator.Address();
    const std::string port = address.substr(address.rfind(':') + 1);
    const std::string number = "US1" + std::string(7 - port.size(), '0') + port;
    ASSERT_EQ(Run({"list"}), 0) << Err;
    EXPECT_EQ(Out.find("ADDRESS "), 0U) << Out;
    const std::string line = Out.substr(Out.find(address));
    EXPECT_EQ(line.substr(0, line.find('\n')), address + "  M9920D  " + number + "     B.03.40")
        << Out;
    EXPECT_NE(Out.find("\nsim://KRV-B "), std::string::npos) << Out;
    EXPECT_EQ(simulator.Stop(), 0);
    ASSERT_EQ(Run({"list", "--host", "host.invalid"}), 0) << Err;
    EXPECT_EQ(Out.find(address), std::string::npos) << Out;
    EXPECT_NE(Err.find("krv: Warning: No connection to the instrument at tcp://host.invalid:5025"),
              std::string::npos)
        << Err;
}

TEST_F(DownloadTest, APortOrAStoreInUseIsToldOf) {
    Simulator simulator({"--store", Path("store")});
    const std::string address = simulator.Address();
    const std::string port = address.substr(address.rfind(':') + 1);
    EXPECT_EQ(Run({"sim", "--port", port}), 1);
    EXPECT_EQ(Err.find("krv: "), 0U) << Err;
    EXPECT_NE(Err.find(port), std::string::npos) << Err;
    EXPECT_EQ(Out, "");
    EXPECT_EQ(Run({"sim", "--store", Path("store")}), 1);
    EXPECT_NE(Err.find("in use by another"), std::string::npos) << Err;
    // A waveform A would take the transcript's place.
    EXPECT_EQ(Run({"sim", "--store", Path("new"), "--transcript", Path("new/A.IQ.int16")}), 2);
    EXPECT_NE(Err.find("Name another place"), std::string::npos) << Err;
}

TEST_F(DownloadTest, AFullDiskUnderATranscriptIsToldOf) {
    const std::string full = "/dev/full";
    if (!std::filesystem::exists(full)) {
        GTEST_SKIP() << "no full disk here";
    }
    Simulator simulator({"--transcript", full});
    EXPECT_EQ(Run({"identify", "--address", simulator.Address(), "--log", full}), 1);
    const std::string expected = "Can't write " + full + ": The device is full or has failed.";
    EXPECT_NE(Err.find(expected), std::string::npos) << Err;
    EXPECT_EQ(simulator.Stop(), 1);
    EXPECT_NE(simulator.Errors().find(expected), std::string::npos) << simulator.Errors();
}

}  // namespace
}  // namespace krv::tests
