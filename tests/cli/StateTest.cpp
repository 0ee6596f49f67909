// krv capture and krv restore, against generators that are served over TCP.
#include <regex>

#include "tests/cli/CommandLineFixture.h"
#include "tests/support/RunningGenerator.h"

namespace krv::tests {
namespace {

using namespace cli;

class StateCommandTest : public CommandLineTest {
 protected:
    std::shared_ptr<simulator::Generator> generator =
        std::make_shared<simulator::Generator>(simulator::GeneratorSettings{});
    RunningGenerator running{generator};

    double Frequency() {
        const std::lock_guard lock(generator->Mutex());
        return generator->Output().frequencyHz;
    }
    void SetFrequency(double hertz) {
        const std::lock_guard lock(generator->Mutex());
        generator->Output().frequencyHz = hertz;
    }
    int Capture(const std::string& file) {
        return Run({"capture", file, "--address", running.Address(), "--log", Path("log")});
    }
    int Restore(const std::string& file) {
        return Run({"restore", file, "--address", running.Address(), "--log", Path("log")});
    }
    // The last run's commands to the instrument, without queries and its return to local operation.
    std::string Sent() {
        const std::regex line("\\d+\\.\\d{3} 1 > (?!SYSTem:LOCal)(.*[^?]\n)|.*\n");
        return std::regex_replace(Content("log"), line, "$1");
    }
};

TEST_F(StateCommandTest, AStateIsCapturedAndRestored) {
    SetFrequency(3e9);
    ASSERT_EQ(Capture(Path("state.krv")), 0) << Err;
    EXPECT_EQ(Out,
              "State of M7718C, serial number US00000001 written to " + Path("state.krv") + '\n');
    EXPECT_EQ(Sent(), "");
    SetFrequency(1e9);
    ASSERT_EQ(Restore(Path("state.krv")), 0) << Err;
    EXPECT_EQ(Out, "State restored to M7718C, serial number US00000001\n");
    EXPECT_EQ(Frequency(), 3e9);
    const std::string sent = Sent();
    EXPECT_EQ(sent.find("SYSTem:SET "), 0U) << sent;
    EXPECT_NE(Content("log").find("> SYSTem:LOCal\n"), std::string::npos);
}

TEST_F(StateCommandTest, WhatIsNoStateIsRefusedAndNothingIsSent) {
    EXPECT_EQ(Restore(File("foreign", "PK\3\4")), 1);
    EXPECT_NE(Err.find("State restore operation failed--state has not been restored.These aren't "
                       "saved properties."),
              std::string::npos)
        << Err;
    EXPECT_EQ(Sent(), "");
    EXPECT_EQ(Restore(Path("none")), 1);
    EXPECT_NE(Err.find("File not found"), std::string::npos) << Err;
}

TEST_F(StateCommandTest, AFailedCaptureLeavesTheFileThatIsThere) {
    const std::string file = File("state.krv", "kept");
    {
        const std::lock_guard lock(generator->Mutex());
        generator->ActiveFaults().Switch("disconnect=20");
    }
    EXPECT_EQ(Capture(file), 1);
    EXPECT_NE(Err, "");
    EXPECT_EQ(Content("state.krv"), "kept");
    EXPECT_EQ(Run({"capture", file, "--address", "tcp://127.0.0.1:1"}), 1);
    EXPECT_EQ(Content("state.krv"), "kept");
    EXPECT_EQ(Run({"capture", file}), 2) << "no address";
}

}  // namespace
}  // namespace krv::tests
