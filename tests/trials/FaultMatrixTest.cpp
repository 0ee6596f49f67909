// Every fault of the instrument at every step of a download, over TCP.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include "common/Crc32.h"
#include "tests/support/DownloadRig.h"
#include "tests/support/RunningGenerator.h"

namespace krv::testing {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

// I and Q interleaved: two pieces of data and two of markers.
constexpr std::size_t Codes = 140'000;

// The letters that outcomes are told by. A small one: nothing had been sent yet.
constexpr char Complete = '.';
const std::map<std::string, char> Letters{
    {"did not answer within", 'T'},
    // How much the systems' buffers take before they are full is nobody's promise.
    {"took no data for", 'T'},
    {"closed the connection", 'C'},
    {"Instrument error -222 | Too loud", 'E'},
    {"Instrument error -225 | Out of memory", 'M'},
};

struct Fault {
    const char* text;
    // The run waits for it, so that it should be short.
    bool takesTimeOut;
    // A letter for each step.
    const char* outcomes;
};

const std::vector<Fault> Faults{
    {"delay=100", false, "............."},       {"delay=60000", true, "ttTTTTTTTTTTT"},
    {"bandwidth=1", true, "ttTTTTTTTTTTT"},      {"disconnect=1", false, "ccCCCCCCCCCCC"},
    {"disconnect=1000", false, "CCCCCCCCCC..."}, {"truncate-reply", true, "ttTTTTTTTTTTT"},
    {"never-answer", true, "ttTTTTTTTTTTT"},     {"error=-222,Too loud", false, "EEEEEEEEEE..."},
    {"memory-full", false, "MMMMMMMM....."},     {"corrupt-data", false, "............."},
};

// A download of its own generator, and the next one after it.
class Trial {
 public:
    explicit Trial(bool takesTimeOut)
        : m_timeOuts{seconds(20), takesTimeOut ? milliseconds(500) : milliseconds(20000)} {
        m_rig.desktop.Files.Put("iq.bin", BinarySamples(Codes, false));
        m_rig.ChooseFiles(WaveformTypeIndex::Internal16, FileTypeIndex::LittleEndian, "iq.bin", "",
                          "");
        m_rig.Name("Trial");
        m_rig.Connect(m_running.Address(), m_timeOuts);
    }

    // What is sent in a download without faults, each message and each piece of data.
    std::vector<std::string> Steps() {
        std::vector<std::string> steps;
        m_rig.onSend = [&steps](std::string_view sent) {
            if (sent != "\n") {
                steps.emplace_back(sent.size() > 1000 ? "data" : sent.substr(0, sent.find(' ')));
            }
        };
        EXPECT_EQ(m_rig.Download(), "Download complete.\n");
        return steps;
    }

    // The outcome's letter; what is wrong besides is added to the complaints.
    char Run(const char* fault, std::size_t step) {
        m_rig.onSend = [this, fault, step, count = std::size_t{0}](std::string_view sent) mutable {
            if (sent != "\n" && count++ == step) {
                WaitUntilAllIsTakenIn();
                m_generator->ActiveFaults().Switch(fault);
            }
        };
        const auto start = std::chrono::steady_clock::now();
        const std::string shown = m_rig.Download();
        Expect(std::chrono::steady_clock::now() - start < seconds(15), "it took too long");
        const char letter = LetterOf(shown);
        Expect((letter == Complete) == m_rig.dialog.RunSucceeded, "success is told wrongly");
        Expect(letter == Complete || letter == 'E' || letter == 'M' || !m_rig.IsConnected(),
               "the session seems usable");
        complaints += m_rig.Obstacles();
        DownloadAgain();
        return letter;
    }

    std::string complaints;

 private:
    // What is on its way when a fault is switched on may or may not meet it.
    void WaitUntilAllIsTakenIn() const {
        while (m_generator->BytesTakenIn() != m_rig.bytesSent) {
            std::this_thread::sleep_for(milliseconds(1));
        }
    }
    void Expect(bool holds, const std::string& complaint) {
        complaints += holds ? "" : complaint + "; ";
    }

    char LetterOf(const std::string& shown) {
        if (shown == "Download complete.\n") {
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
        m_generator->ActiveFaults().Clear();
        m_rig.onSend = nullptr;
        if (!m_rig.IsConnected()) {
            m_rig.Connect(m_running.Address(), {seconds(20), seconds(20)});
        }
        m_rig.desktop.Files.OpenCount = 0;
        const std::string shown = m_rig.Download();
        Expect(shown == "Download complete.\n", "the next download says " + shown);
        Expect(m_rig.desktop.Files.OpenCount == 0, "the file had to be read again");
        const std::lock_guard lock(m_generator->Mutex());
        const bench::Waveform& kept = m_generator->WaveformNamed("Trial");
        const DacCodes& sent = m_rig.dialog.Codes;
        Expect(CodesCrc32(kept.codes.Span()) == CodesCrc32(sent.IDacData.Span()) &&
                   CodesCrc32(kept.markers.Span()) == CodesCrc32(sent.MarkerDacData.Span()),
               "the next download arrived wrong");
    }

    server::TimeOuts m_timeOuts;
    std::shared_ptr<bench::Generator> m_generator =
        std::make_shared<bench::Generator>(bench::GeneratorSettings{});
    RunningGenerator m_running{m_generator};
    DownloadRig m_rig;
};

// Most trials wait for a time-out and take no more than that: many run at a time.
TEST(FaultMatrix, EveryFaultAtEveryStepIsToldAndLeavesTheDialogUsable) {
    const std::vector<std::string> steps = Trial(false).Steps();
    ASSERT_EQ(steps, (std::vector<std::string>{
                         "SYSTem:ERRor?\n", "ARBitrary:SELect?\n", "ARBitrary:DATA:INTerleaved",
                         "data", "data", "*OPC?\n", "SYSTem:ERRor?\n", "ARBitrary:DATA:MARKers",
                         "data", "data", "*OPC?\n", "SYSTem:ERRor?\n", "SYSTem:ERRor?\n"}));
    const std::size_t trials = Faults.size() * steps.size();
    std::vector<std::string> outcomes(Faults.size(), std::string(steps.size(), '?'));
    std::vector<std::string> complaints(trials);
    std::atomic<std::size_t> next = 0;
    std::vector<std::thread> workers;
    for (int worker = 0; worker < 12; ++worker) {
        workers.emplace_back([&] {
            for (std::size_t index = next++; index < trials; index = next++) {
                const Fault& fault = Faults[index / steps.size()];
                const std::size_t step = index % steps.size();
                Trial trial(fault.takesTimeOut);
                outcomes[index / steps.size()][step] = trial.Run(fault.text, step);
                complaints[index] = trial.complaints;
            }
        });
    }
    for (std::thread& worker : workers) {
        worker.join();
    }
    for (std::size_t fault = 0; fault < Faults.size(); ++fault) {
        EXPECT_EQ(outcomes[fault], Faults[fault].outcomes) << Faults[fault].text;
        for (std::size_t step = 0; step < steps.size(); ++step) {
            EXPECT_EQ(complaints[fault * steps.size() + step], "")
                << Faults[fault].text << " at step " << step << ", " << steps[step];
        }
    }
}

}  // namespace
}  // namespace krv::testing
