#include "simulator/device/Faults.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "simulator/commands/ClientLink.h"
#include "tests/simulator/GeneratorConversation.h"

namespace krv::tests {
namespace {

using namespace simulator;

using FaultsTest = GeneratorConversation;

TEST_F(FaultsTest, AreListedAsTheyWereSwitchedOnAndCleared) {
    Converse({{"DIAG:FAUL?", "\"\""},
              {"DIAG:FAUL 'memory-full'", ""},
              {"DIAG:FAUL 'delay=20';FAUL 'error=-222,Some, text'", ""},
              {"DIAG:FAUL?", "\"delay=20\",\"error=-222,Some, text\",\"memory-full\""},
              {"DIAG:FAUL:CLE", ""},
              {"DIAG:FAUL?", "\"\""}});
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
    ClientLink link(generator);
    EXPECT_EQ(link.PieceSize(4096), 4096U);
    generator->ActiveFaults().Switch("bandwidth=2000");
    EXPECT_EQ(link.PieceSize(4096), 100U);
    EXPECT_EQ(link.PieceSize(10), 10U);
    const std::string blanks(100, ' ');
    EXPECT_EQ(link.TakeIn(std::as_bytes(std::span(blanks))).pause, std::chrono::milliseconds(50));
}

}  // namespace
}  // namespace krv::tests
