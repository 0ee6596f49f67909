#include "simulator/device/GeneratorState.h"

#include <gtest/gtest.h>

#include <cmath>
#include <tuple>

#include "common/BagContents.h"
#include "tests/simulator/GeneratorConversation.h"

namespace krv::tests {
namespace {

using namespace simulator;

class GeneratorStateTest : public GeneratorConversation {
 protected:
    // Everything that a state holds.
    std::string Settings() {
        return Say("FREQ?;:POW?;:OUTP?;:ARB:SEL?;STAT?;MODE?;SEQ?;ROUT:IQ?;MARK? 1;MARK? "
                   "2;:TRIG:SOUR?;WAIT?;*ESE?;*SRE?;:STAT:OPER:ENAB?;:STAT:QUES:"
                   "ENAB?") +
               ' ' + Say("SYST:ERR?");
    }
    void SetUpUnusually() {
        Say("ARB:DATA:IQ \"Sine\",#14abcd");
        Say("FREQ 2.5GHz;:POW -7.5;:OUTP ON;:ARB:SEL \"Sine\";STAT ON;*ESE 32;*SRE 16");
        Say("ARB:STAT OFF;SEQ \"Sine*7,Sine\";MODE SEQ;ROUT:IQ BOTH;MARK 1,NONE;MARK 2,BLAN");
        Say("TRIG:SOUR BUS;:ARB:STAT ON");
        Say("STAT:OPER:ENAB 32767;:STAT:QUES:ENAB 1");
    }
    std::string Captured() {
        const std::string reply = Say("SYST:SET?");
        return reply.substr(2 + static_cast<std::size_t>(reply[1] - '0'));
    }
    // The error that the block is refused with.
    std::string Refusal(std::string_view block) {
        EXPECT_EQ(Say("SYST:SET " + Block(block)), "");
        return Say("SYST:ERR?");
    }
};

const std::string Unusual =
    "2.500000000E+09;-7.500000000E+00;1;\"Sine\";1;SEQ;\"Sine*7,Sine*1\";BOTH;NONE;BLAN;BUS;1;32;"
    "16;32767;1 0,\"No error\"";

std::string Encoded(const std::vector<BagEntry>& entries) {
    const auto bytes = EncodeBag(entries);
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

TEST_F(GeneratorStateTest, ComesBackWholeAfterEverythingWasChanged) {
    SetUpUnusually();
    ASSERT_EQ(Settings(), Unusual);
    const std::string state = Captured();
    Say("*RST;*ESE 0;*SRE 0;:STAT:PRES");
    ASSERT_NE(Settings(), Unusual);
    Say("SYST:SET " + Block(state));
    EXPECT_EQ(Settings(), Unusual);
    EXPECT_EQ(Captured(), state);
}

TEST_F(GeneratorStateTest, AForeignStateIsRefusedAndChangesNothing) {
    SetUpUnusually();
    std::vector<BagEntry> state{
        {"model", std::string("M7718C")},
        {"frequency", 1e9},
        {"level", -20.0},
        {"output", false},
        {"waveform", std::string()},
        {"playing", false},
        {"eventEnable", std::int16_t{0}},
        {"serviceRequestEnable", std::int16_t{0}},
        {"operationEnable", std::int16_t{0}},
        {"questionableEnable", std::int16_t{0}},
        {"sampleClock", 50e6},
    };
    const auto with = [&](std::size_t at, const Value& value) {
        std::vector<BagEntry> changed = state;
        changed[at].second = value;
        return Encoded(changed);
    };
    const std::pair<std::string, std::string> cases[] = {
        {with(0, std::string("M9920C")), "-221,\"Settings conflict;a state of model M9920C\""},
        {with(1, 1.0), "-222,\"Data out of range;a setting of the state\""},
        {with(1, std::nan("")), "-222,\"Data out of range;a setting of the state\""},
        {with(2, 26.0), "-222,\"Data out of range;a setting of the state\""},
        {with(6, std::int16_t{256}), "-222,\"Data out of range;a setting of the state\""},
        {with(9, std::int16_t{-1}), "-222,\"Data out of range;a setting of the state\""},
        {with(10, 101e6), "-222,\"Data out of range;a setting of the state\""},
        {with(4, std::string("Gone")), "-256,\"File name not found;Gone\""},
        {with(5, true), "-161,\"Invalid block data;this is not an instrument state\""},
        {with(3, std::int16_t{0}), "-161,\"Invalid block data;this is not an instrument state\""},
        {Encoded({{"krStateData", true}}),
         "-161,\"Invalid block data;this is not an instrument state\""},
        {Encoded(state) + 'x',
         "-161,\"Invalid block data;The saved properties are followed by something else.\""},
        {std::string(70000, 'x'), "-223,\"Too much data;at most 65536 bytes\""},
    };
    const std::string present = Captured();
    const std::vector<BagEntry> full = DecodeBag(std::as_bytes(std::span(present)));
    for (const auto& [at, value, error] :
         {std::tuple<std::size_t, Value, std::string>{11, std::int16_t{3}, "-222"},
          {13, std::int16_t{-1}, "-222"},
          {16, std::string("Sine*0"), "-224"},
          {16, std::string("Sine,Gone"), "-256"},
          {16, std::string(), "-161"}}) {
        std::vector<BagEntry> changed = full;
        changed[at].second = value;
        EXPECT_EQ(Refusal(Encoded(changed)).substr(0, 4), error) << at;
        EXPECT_EQ(Settings(), Unusual);
    }
    for (const auto& [block, error] : cases) {
        EXPECT_EQ(Refusal(block), error);
        EXPECT_EQ(Settings(), Unusual);
    }
    EXPECT_EQ(Refusal(Encoded(state)), "0,\"No error\"");
    EXPECT_EQ(Say("ARB:CLOC?"), "5.000000000E+07");
    EXPECT_EQ(Say("ARB:MODE?;ROUT:IQ?"), "WAV;BOTH") << "of a generator without sequences";
    state.pop_back();
    EXPECT_EQ(Refusal(Encoded(state)), "0,\"No error\"") << "of a generator without sample clock";
    EXPECT_EQ(Say("ARB:CLOC?"), "5.000000000E+07");
    EXPECT_EQ(Say("SYST:SET 5"), "");
    EXPECT_EQ(Say("SYST:ERR?"), "-104,\"Data type error;5\"");
}

}  // namespace
}  // namespace krv::tests
