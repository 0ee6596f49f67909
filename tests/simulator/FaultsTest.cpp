#include "simulator/device/Faults.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "simulator/server/ClientLink.h"

namespace krv::tests {
namespace {

using namespace simulator;

class FaultsTest : public ::testing::Test {
 protected:
    FaultsTest() : generator(std::make_shared<Generator>(GeneratorSettings{})), link(generator) {}

    ClientLink::AfterIntake Say(const std::string& message) {
        return link.TakeIn(std::as_bytes(std::span(message)));
    }
    // What is sent for a message, all together.
    std::string Answer(const std::string& message) {
        Say(message + '\n');
        std::string answer;
        while (const auto reply = link.NextReply()) {
            answer += reply->text;
        }
        return answer;
    }
    void Switch(const std::string& fault) { Say("DIAG:FAUL '" + fault + "'\n"); }

    std::shared_ptr<Generator> generator;
    ClientLink link;
};

TEST_F(FaultsTest, AreListedAsTheyWereSwitchedOnAndCleared) {
    EXPECT_EQ(Answer("DIAG:FAUL?"), "\"\"\n");
    Switch("memory-full");
    Switch("delay=20");
    Switch("error=-222,Some, text");
    EXPECT_EQ(Answer("DIAG:FAUL?"), "\"delay=20\",\"error=-222,Some, text\",\"memory-full\"\n");
    Say("DIAG:FAUL:CLE\n");
    EXPECT_EQ(Answer("DIAG:FAUL?"), "\"\"\n");
}

TEST_F(FaultsTest, RefuseWhatTheyCannotBe) {
    Faults faults;
    for (const char* fault : {"", "burn", "Delay=1", "delay", "delay=", "delay=x", "delay=-1",
                              "delay=1s", "bandwidth=0", "disconnect=99999999999999999999", "error",
                              "error=0,None", "error=-222", "never-answer=1"}) {
        EXPECT_THROW(faults.Switch(fault), std::invalid_argument) << fault;
    }
    EXPECT_TRUE(faults.Active().empty());
    try {
        faults.Switch("burn");
    } catch (const std::invalid_argument& refusal) {
        for (const std::string_view name : Faults::Names()) {
            EXPECT_NE(std::string(refusal.what()).find(name), std::string::npos) << name;
        }
    }
}

TEST_F(FaultsTest, LimitTheBandwidth) {
    EXPECT_EQ(link.PieceSize(4096), 4096U);
    Switch("bandwidth=2000");
    EXPECT_EQ(link.PieceSize(4096), 100U);
    EXPECT_EQ(link.PieceSize(10), 10U);
    EXPECT_EQ(Say(std::string(100, ' ')).pause, std::chrono::milliseconds(50));
}

}  // namespace
}  // namespace krv::tests
