// Every fault of the instrument at every step of a download, over TCP. Prints what came of each.
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <chrono>
#include <iostream>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include "common/Crc32.h"
#include "tests/support/DownloadRig.h"
#include "tests/support/RunningGenerator.h"

namespace krv::tests {

using namespace waveform;
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

// Two pieces for the connection.
constexpr std::size_t Codes = 140'000;

// The two ways that a waveform takes to the instrument.
struct Way {
    const char* model;
    // I and Q in blocks of their own, read back afterwards; otherwise interleaved, with markers.
    bool separate;
    std::vector<std::string> steps;
};

const std::array<Way, 2> Ways{{
    {"M7718C",
     false,
     {"SYSTem:ERRor?\n", "ARBitrary:SELect?\n", "ARBitrary:DATA:INTerleaved", "data", "data",
      "*OPC?\n", "SYSTem:ERRor?\n", "ARBitrary:DATA:MARKers", "data", "data", "*OPC?\n",
      "SYSTem:ERRor?\n", "SYSTem:ERRor?\n"}},
    {"M771XB",
     true,
     {"SYSTem:ERRor?\n", "ARBitrary:SELect?\n", "ARBitrary:DATA:IQ", "data", "data", ",#6280000",
      "data", "data", "*OPC?\n", "SYSTem:ERRor?\n", "SYSTem:ERRor?\n", "ARBitrary:SIZE?"}},
}};

// The letters that stand for outcomes. A small one: nothing had been sent yet.
constexpr char Complete = '.';
const std::map<std::string, char> Letters{
    {"did not answer within", 'T'},
    // No system promises how much its buffers take before they are full.
    {"took no data for", 'T'},
    {"closed the connection", 'C'},
    {"Instrument error -222 | Too loud", 'E'},
    {"Instrument error -225 | Out of memory", 'M'},
    {"is not the one that was sent", 'V'},
};

struct Fault {
    const char* text;
    // The run waits for it, so that it should be short.
    bool takesTimeOut;
    // For each way a letter for each step.
    std::array<const char*, Ways.size()> outcomes;
};

const std::vector<Fault> Faults{
    {"delay=100", false, {".............", "............"}},
    {"delay=60000", true, {"ttTTTTTTTTTTT", "ttTTTTTTTTTT"}},
    {"bandwidth=1", true, {"ttTTTTTTTTTTT", "ttTTTTTTTTTT"}},
    {"disconnect=1", false, {"ccCCCCCCCCCCC", "ccCCCCCCCCCC"}},
    {"disconnect=1000", false, {"CCCCCCCCCC...", "CCCCCCCC...."}},
    {"truncate-reply", true, {"ttTTTTTTTTTTT", "ttTTTTTTTTTT"}},
    {"never-answer", true, {"ttTTTTTTTTTTT", "ttTTTTTTTTTT"}},
    {"error=-222,Too loud", false, {"EEEEEEEEEE...", "EEEEEEEE...."}},
    {"memory-full", false, {"MMMMMMMM.....", "MMMMMM......"}},
    // Only who reads back can know of it.
    {"corrupt-data", false, {".............", "VVVVVVVV...."}},
};

// The return to the front panel at the end is no part of the download.
bool IsStep(std::string_view sent) {
    return sent != "\n" && sent != "SYSTem:LOCal\n";
}

// A download of its own generator, and the next one after it.
class Trial {
 public:
    Trial(const Way& way, bool takesTimeOut) : m_way(way), m_takesTimeOut(takesTimeOut) {
        m_rig.desktop.Files.Put("i.bin", BinarySamples(Codes, false));
        m_rig.ChooseFiles(
            way.separate ? WaveformTypeIndex::Internal14 : WaveformTypeIndex::Internal16,
            FileTypeIndex::LittleEndian, "i.bin", way.separate ? "i.bin" : "", "");
        m_rig.Name("Trial");
        Connect();
    }

    // What is sent in a download without faults, each message and each piece of data.
    std::vector<std::string> Steps() {
        std::vector<std::string> steps;
        m_rig.onSend = [&steps](std::string_view sent) {
            if (IsStep(sent)) {
                steps.emplace_back(sent.size() > 1000 ? "data" : sent.substr(0, sent.find(' ')));
            }
        };
        Expect(LetterOf(m_rig.Download()) == Complete, "no faults");
        return steps;
    }

    // The outcome's letter; what is wrong besides is added to the complaints.
    char Run(const char* fault, std::size_t step) {
        m_rig.onSend = [this, fault, step, count = std::size_t{0}](std::string_view sent) mutable {
            if (IsStep(sent) && count++ == step) {
                WaitUntilAllIsTakenIn();
                m_generator->ActiveFaults().Switch(fault);
                if (m_takesTimeOut) {
                    m_rig.SetTimeOuts({seconds(60), milliseconds(500)});
                }
            }
        };
        const auto start = std::chrono::steady_clock::now();
        const std::string shown = m_rig.Download();
        Expect(std::chrono::steady_clock::now() - start < seconds(40), "it took too long");
        const char letter = LetterOf(shown);
        Expect((letter == Complete) == m_rig.dialog.RunSucceeded, "success is told wrongly");
        Expect(letter == Complete || letter == 'E' || letter == 'M' || letter == 'V' ||
                   !m_rig.IsConnected(),
               "the session seems usable");
        complaints += m_rig.Obstacles();
        m_generator->ActiveFaults().Clear();
        if (!m_rig.IsConnected() && !HoldsAnswersBack(fault)) {
            WaitUntilTheClientIsGone();
        }
        DownloadAgain();
        return letter;
    }

    std::string complaints;

 private:
    void Connect() {
        m_rig.Connect(m_running.Address(), {seconds(60), seconds(60)});
        if (m_way.separate) {
            m_rig.Verify();
        }
    }
    // What is on its way when a fault is switched on may or may not meet it.
    void WaitUntilAllIsTakenIn() const {
        while (m_generator->BytesTakenIn() != m_rig.bytesSent) {
            std::this_thread::sleep_for(milliseconds(1));
        }
    }
    // What a dropped connection has left on its way is still carried out: after the next download
    // it would replace what that one brought. Each client that is served holds the generator.
    void WaitUntilTheClientIsGone() const {
        while (m_generator.use_count() != m_ownersWithoutClients) {
            std::this_thread::sleep_for(milliseconds(1));
        }
    }
    // Such a client stays, and carries nothing out, until its answer has gone.
    static bool HoldsAnswersBack(std::string_view fault) { return fault == "delay=60000"; }
    void Expect(bool holds, const std::string& complaint) {
        complaints += holds ? "" : complaint + "; ";
    }

    char LetterOf(const std::string& shown) {
        if (shown.starts_with("Download complete.")) {
            Expect((shown.find("Verified in the instrument") != shown.npos) == m_way.separate,
                   "it says " + shown);
            return Complete;
        }
        for (const auto& [text, letter] : Letters) {
            if (shown.find(text) != std::string::npos) {
                const bool sent = m_rig.dialog.LastRun.transferMs >= 0;
                return sent ? letter : static_cast<char>(letter - 'A' + 'a');
            }
        }
        Expect(false, "it says " + shown);
        return '?';
    }

    // Without the fault, on the same session where it is left.
    void DownloadAgain() {
        m_rig.onSend = nullptr;
        if (!m_rig.IsConnected()) {
            Connect();
        }
        m_rig.desktop.Files.OpenCount = 0;
        const std::string shown = m_rig.Download();
        Expect(LetterOf(shown) == Complete, "the next download says " + shown);
        Expect(m_rig.desktop.Files.OpenCount == 0, "the file had to be read again");
        const std::lock_guard lock(m_generator->Mutex());
        const simulator::Waveform& kept = m_generator->WaveformNamed("Trial");
        const DacCodes& sent = m_rig.dialog.Codes;
        Expect(CodesCrc32(kept.codes.Span()) == CodesCrc32(sent.i.Span()) &&
                   CodesCrc32(kept.qCodes.Span()) == CodesCrc32(sent.q.Span()) &&
                   (m_way.separate ||
                    CodesCrc32(kept.markers.Span()) == CodesCrc32(sent.markers.Span())),
               "the next download arrived wrong");
    }

    const Way& m_way;
    // The fault is one that a time-out ends.
    const bool m_takesTimeOut;
    std::shared_ptr<simulator::Generator> m_generator =
        std::make_shared<simulator::Generator>(simulator::GeneratorSettings{.model = m_way.model});
    RunningGenerator m_running{m_generator};
    const long m_ownersWithoutClients = m_generator.use_count();
    DownloadRig m_rig;
};

class FaultMatrix : public ::testing::TestWithParam<std::size_t> {
 protected:
    const Way& way = Ways.at(GetParam());
    std::vector<std::string> outcomes =
        std::vector<std::string>(Faults.size(), std::string(way.steps.size(), '?'));
    std::vector<std::string> complaints =
        std::vector<std::string>(Faults.size() * way.steps.size());

    // Most trials wait for a time-out and take no more than that: many run at a time.
    void RunTrials() {
        std::atomic<std::size_t> next = 0;
        std::vector<std::thread> workers;
        for (int worker = 0; worker < 12; ++worker) {
            workers.emplace_back([&] {
                for (std::size_t index = next++; index < complaints.size(); index = next++) {
                    const Fault& fault = Faults[index / way.steps.size()];
                    const std::size_t step = index % way.steps.size();
                    Trial trial(way, fault.takesTimeOut);
                    outcomes[index / way.steps.size()][step] = trial.Run(fault.text, step);
                    complaints[index] = trial.complaints;
                }
            });
        }
        for (std::thread& worker : workers) {
            worker.join();
        }
    }
};

TEST_P(FaultMatrix, EveryFaultAtEveryStepIsToldAndLeavesTheDialogUsable) {
    {
        Trial trial(way, false);
        ASSERT_EQ(trial.Steps(), way.steps);
        ASSERT_EQ(trial.complaints, "");
    }
    RunTrials();
    for (std::size_t fault = 0; fault < Faults.size(); ++fault) {
        EXPECT_EQ(outcomes[fault], Faults[fault].outcomes.at(GetParam())) << Faults[fault].text;
        std::cout << outcomes[fault] << "  " << Faults[fault].text << '\n';
        for (std::size_t step = 0; step < way.steps.size(); ++step) {
            EXPECT_EQ(complaints[fault * way.steps.size() + step], "")
                << Faults[fault].text << " at step " << step << ", " << way.steps[step];
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Ways, FaultMatrix, ::testing::Range<std::size_t>(0, Ways.size()),
                         [](const auto& way) {
                             return way.param == 0 ? "Interleaved" : "SeparateAndVerified";
                         });

}  // namespace
}  // namespace krv::tests
