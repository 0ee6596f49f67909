#include "simulator/commands/ScpiClient.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/simulator/GeneratorConversation.h"

namespace krv::tests {
namespace {

using namespace simulator;

class ScpiClientTest : public GeneratorConversation {
 protected:
    static std::string Codes(const std::vector<int>& codes) {
        std::string bytes;
        for (const int code : codes) {
            bytes += static_cast<char>((code >> 8) & 0xFF);
            bytes += static_cast<char>(code & 0xFF);
        }
        return Block(bytes);
    }
};

TEST_F(ScpiClientTest, IdentifiesTheInstrument) {
    SwitchOn({.model = "M771XB",
              .options = {"R2X", "001"},
              .firmware = "B.03.41",
              .serialNumber = "US42"});
    Converse({{"*IDN?", "Corvane,M771XB,US42,B.03.41"},
              {"*OPT?", "R2X,001"},
              {"SYST:VERS?", "1999.0"},
              {"*TST?;*OPC?", "0;1"},
              {"*IDN?\n*OPT?", "Corvane,M771XB,US42,B.03.41\nR2X,001"}});
    SwitchOn({.options = {}});
    Converse({{"*OPT?", "0"}});
}

TEST_F(ScpiClientTest, RefusesSettingsThatCannotStandInAReply) {
    EXPECT_THROW(Generator({.model = "M7718"}), std::invalid_argument);
    EXPECT_THROW(Generator({.options = {"A,B"}}), std::invalid_argument);
    EXPECT_THROW(Generator({.firmware = ""}), std::invalid_argument);
    EXPECT_THROW(Generator({.serialNumber = "a b"}), std::invalid_argument);
    EXPECT_THROW(Generator({.faults = {"burn"}}), std::invalid_argument);
}

TEST_F(ScpiClientTest, FollowsTheHeaderTreeThroughAMessage) {
    Say("ARB:DATA:IQ \"a\"," + Codes({1}) + ";IQ \"b\"," + Codes({2}) + ";*OPC;IQ c," + Codes({3}));
    Converse({{"ARB:MEM:FREE?", std::to_string((64U << 20) - 3)},
              {"ARB:SEL a;SEL?;:SYST:ERR?;COUN?;*ESE?", "\"a\";0,\"No error\""},
              {"SYST:ERR?", "-113,\"Undefined header;COUN?\""}});
}

TEST_F(ScpiClientTest, NotesEachErrorOfAMessage) {
    Refuse({{"NONSENSE?", "-113,\"Undefined header;NONSENSE?\""},
            {"*IDN", "-113"},
            {"*IDN? 1", "-108,\"Parameter not allowed\""},
            {"*ESE", "-109,\"Missing parameter\""},
            {"*ESE 1,2", "-108"},
            {"*ESE x", "-104,\"Data type error;x\""},
            {"*ESE \"1\"", "-104"},
            {"*ESE 256", "-222,\"Data out of range;0 to 255\""},
            {"*ESE -1", "-222"},
            {"*ESE 1e10", "-222"},
            {"*ESE 1 s", "-104,\"Data type error;1 s\""},
            {"*ESE nan", "-104"},
            {"ARB:SEL 1 x", "-103,\"Invalid separator\""},
            {"ARB:STAT MAYBE", "-104"},
            {"ARB:STAT ON", "-221,\"Settings conflict;no waveform is selected\""},
            {"ARB:SEL #12ab", "-104"},
            {"ARB:DATA:IQ a", "-109"},
            {"ARB:DATA:IQ a,b", "-104"},
            {"ARB:DATA:IQ a,#13abc", "-161,\"Invalid block data;a code has two bytes\""},
            {"ARB:DATA:INT a," + Codes({1}) + ',' + Codes({2}), "-108"},
            {"ARB:SIZE? nothing", "-256,\"File name not found;nothing\""},
            {"ARB:DEL 'tab\there'", "-256,\"File name not found;tab?here\""},
            {"DIAG:FAUL 'burn'", "-224"},
            {"*IDN? #15\n\n\n\n\n", "-108"}});
    // A command that fails leaves the others of its message alone.
    Converse({{"*OPC?;*ESE 999;*TST?", "1;0"},
              {"SYST:ERR:ALL?", "-222,\"Data out of range;0 to 255\""}});
}

TEST_F(ScpiClientTest, SumsUpItsStatus) {
    Converse({{"*ESR?", "128"},
              {"*ESR?;*STB?", "0;16"},
              {"*ESE 48;*SRE 255;*ESE?;*SRE?", "48;191"},
              {"*SRE 32;*SRE?", "32"},
              {"BAD", ""},
              {"*STB?", "100"},
              {"*ESR?", "32"},
              {"*STB?", "4"},
              {"ARB:SEL none;*OPC", ""},
              {"*ESR?", "17"},
              {"SYST:ERR:COUN?", "2"},
              {"*CLS;*STB?;SYST:ERR:COUN?", "0;0"}});
}

TEST_F(ScpiClientTest, HasTheRegistersOfTheStandard) {
    Converse({{"STAT:OPER:ENAB 32767;:STAT:QUES:ENAB 5;ENAB?;:STAT:OPER:ENAB?", "5;32767"},
              {"STAT:OPER?;OPER:COND?;EVEN?;:STAT:QUES:EVEN?;COND?", "0;0;0;0;0"},
              {"*RST;*CLS;:STAT:QUES:ENAB?", "5"},
              {"STAT:PRES;QUES:ENAB?;:STAT:OPER:ENAB?", "0;0"},
              {"SYST:ERR?", "0,\"No error\""}});
    Refuse({{"STAT:OPER:ENAB 32768", "-222"}, {"STAT:QUES:ENAB -1", "-222"}});
}

TEST_F(ScpiClientTest, QueuesThirtyErrorsAndSaysWhenMoreWereLost) {
    for (int count = 1; count <= 35; ++count) {
        Say("BAD" + std::to_string(count));
    }
    EXPECT_EQ(Say("SYST:ERR:COUN?"), "30");
    // A command error, a device-dependent one, and switched on.
    EXPECT_EQ(Say("*ESR?"), "168");
    for (int count = 1; count <= 29; ++count) {
        EXPECT_EQ(Error(), "-113,\"Undefined header;BAD" + std::to_string(count) + '"');
    }
    EXPECT_EQ(Error(), "-350,\"Queue overflow\"");
    EXPECT_EQ(Error(), "0,\"No error\"");
}

// Memory isn't for those who ask and never listen.
TEST_F(ScpiClientTest, DropsAnswersThatAreNotRead) {
    Say("HCOP");
    const std::string file = "MMEM:DATA? 'DISPLAY.BMP'";
    const std::size_t size = Say(file).size();
    const std::size_t room = ScpiClient::MaxWaitingBytes / (size + 1);
    ScpiClient asking(generator);
    const auto feed = [&asking](const std::string& text) {
        asking.Feed(std::as_bytes(std::span(text)));
    };
    for (std::size_t count = 0; count < 2 * room; ++count) {
        feed(file + '\n');
    }
    // Switched on, a query error, and more of these than are kept.
    EXPECT_EQ(Say("*ESR?;:SYST:ERR:COUN?"), "140;30");
    EXPECT_EQ(Error(), "-430,\"Query DEADLOCKED\"");
    for (std::size_t count = 0; count < room; ++count) {
        ASSERT_EQ(asking.TakeReply().value_or(Faults::Outgoing{}).text.size(), size + 1);
    }
    EXPECT_FALSE(asking.TakeReply().has_value());
    // A message without an end, of which there is one error.
    Say("*CLS");
    for (std::size_t count = 0; count < 2 * room; ++count) {
        feed(':' + file + ';');
    }
    feed("\n*OPC?\n");
    EXPECT_EQ(asking.TakeReply().value_or(Faults::Outgoing{}).text.substr(0, 9), "1\n");
    EXPECT_EQ(Say("SYST:ERR:ALL?"), "-430,\"Query DEADLOCKED\"");
}

TEST_F(ScpiClientTest, KeepsCodesAsTheyCame) {
    Say("ARB:DATA:IQ \"Sine\"," + Codes({1, -1, 8192, 0x0A0A}) + ',' +
        Codes({-32768, 32767, 0, 59}));
    Say("ARB:DATA:MARK sine," + Codes({3, 0, 1, 2}));
    Say("ARB:DATA:INT Both," + Codes({1, 2, 3, 4, 5, 6}));
    const Waveform& sine = generator->WaveformNamed("SINE");
    const auto list = [](const CodeArray& codes) {
        return std::vector<int>(codes.Span().begin(), codes.Span().end());
    };
    EXPECT_EQ(list(sine.codes), (std::vector{1, -1, 8192, 0x0A0A}));
    EXPECT_EQ(list(sine.qCodes), (std::vector{-32768, 32767, 0, 59}));
    EXPECT_EQ(list(sine.markers), (std::vector{3, 0, 1, 2}));
    Say("ARB:DATA:IQ empty," + Codes({}) + ',' + Codes({}));
    EXPECT_EQ(Say("ARB:SIZE? empty;:ARB:DEL empty"), "0,0,0");
    // The checksums were computed apart, over the codes as little-endian bytes.
    Converse({{"ARB:SIZE? sine;CHEC? SINE", "4,4,4;#HA55FF4C3,#H4EC00671,#H6127DD6D"},
              {"ARB:SIZE? both", "6,0,0"},
              {"ARB:CAT?", "7,67108857,\"Both,INT,3\",\"Sine,IQ,4\""},
              {"SYST:ERR?", "0,\"No error\""}});
    // Parts of its arrays, in the order of the wire.
    Converse({{"ARB:DATA? sine,1,0,3", Codes({1, -1, 8192})},
              {"ARB:DATA? sine,2,1,2", Codes({32767, 0})},
              {"ARB:DATA? sine,3,3,1", Codes({2})},
              {"ARB:DATA? both,2,0,0;*OPC?", "#10;1"}});
    Refuse({{"ARB:DATA? none,1,0,0", "-256"},
            {"ARB:DATA? sine,4,0,0", "-222"},
            {"ARB:DATA? sine,1,5,0", "-222"},
            {"ARB:DATA? sine,1,3,2", "-222"},
            {"ARB:DATA? sine,1,-1,2", "-222"}});
}

TEST_F(ScpiClientTest, RefusesWhatDoesNotFitAfterTakingItIn) {
    SwitchOn({.memoryPoints = 4});
    Refuse({{"ARB:DATA:IQ a," + Codes({10, 10, 10, 10, 10}), "-225,\"Out of memory\""},
            {"ARB:DATA:IQ a," + Codes({1}) + ',' + Codes({10, 10, 10, 10, 10}), "-225"},
            {"ARB:DATA:INT a," + Codes({1, 2, 3, 4, 5, 6, 7, 8, 9}), "-225"}});
    Say("ARB:DATA:INT a," + Codes({1, 2, 3, 4, 5, 6, 7}));
    Refuse({{"ARB:DATA:IQ b," + Codes({1}), "-225"},
            {"ARB:DATA:MARK a," + Codes({1, 2, 3, 4, 5, 6, 7, 8, 9}), "-225"}});
    // One for each I and each Q code makes no points of its own.
    Say("ARB:DATA:MARK a," + Codes({1, 2, 3, 4, 5, 6, 7}));
    EXPECT_EQ(Say("ARB:CAT?"), "4,0,\"a,INT,4\"");
    // A waveform makes room for its successor.
    Say("ARB:DATA:IQ A," + Codes({1, 2}));
    Say("ARB:DATA:IQ b," + Codes({1}) + ',' + Codes({1, 2}));
    Converse({{"ARB:CAT?", "4,0,\"A,IQ,2\",\"b,IQ,2\""}, {"ARB:DEL a;:ARB:MEM:FREE?", "2"}});
    EXPECT_EQ(Error(), "0,\"No error\"");
}

TEST_F(ScpiClientTest, ChecksNames) {
    const std::string longest(23, 'x');
    Say("ARB:DATA:IQ " + longest + ',' + Codes({1}));
    Say("ARB:DATA:IQ '../a b:c'," + Codes({1}));
    EXPECT_EQ(Error(), "0,\"No error\"");
    const std::string codes = ',' + Codes({1});
    Refuse({{"ARB:DATA:IQ " + longest + 'x' + codes,
             "-257,\"File name error;a name has 1 to 23 characters\""},
            {"ARB:DATA:IQ ''" + codes, "-257"},
            {"ARB:DATA:IQ \"a,b\"" + codes, "-257"},
            {"ARB:DATA:IQ \"\xC3\xA9\"" + codes, "-257"},
            {"ARB:DATA:MARK absent" + codes, "-256,\"File name not found;absent\""}});
}

TEST_F(ScpiClientTest, SelectsAndPlaysWaveforms) {
    Say("ARB:DATA:IQ One," + Codes({1}));
    Converse({{"ARB:SEL?;STAT?", "\"\";0"},
              {"ARB:SEL ONE;SEL?", "\"One\""},
              {"ARB:STAT ON;STAT?", "1"}});
    Refuse({{"ARB:DATA:IQ one," + Codes({2}), "-221,\"Settings conflict;the waveform is playing\""},
            {"ARB:DATA:MARK one," + Codes({2}), "-221"},
            {"ARB:DEL one", "-221"},
            {"ARB:DEL:ALL", "-221"},
            {"ARB:SEL other", "-256"}});
    Converse({{"ARB:SEL '';SEL?;STAT?", "\"\";0"},
              {"ARB:SEL one;STAT 1;*RST;SEL?;STAT?", "\"\";0"},
              {"ARB:SEL one;DEL one;SEL?", "\"\""},
              {"SYST:ERR?", "0,\"No error\""}});
}

TEST_F(ScpiClientTest, PlaysSequencesOfWaveforms) {
    Say("ARB:DATA:IQ a*2," + Codes({1, 2, 3}) + ";IQ b," + Codes({1}) + ";IQ c," + Codes({1}));
    Converse({{"ARB:SEQ?;SEQ:POIN?;:ARB:MODE?", "\"\";0;WAV"},
              {"ARB:SEQ \"A*2*65535,b,a*2*1\";SEQ?", "\"A*2*65535,b*1,a*2*1\""},
              {"ARB:SEQ:POIN?", "196609"}});
    Refuse({{"ARB:SEQ \"b*\"", "-224"},
            {"ARB:SEQ \"b*0\"", "-224"},
            {"ARB:SEQ \"b*65536\"", "-224"},
            {"ARB:SEQ \"b,\"", "-224"},
            {"ARB:SEQ \",b\"", "-224"},
            {"ARB:SEQ \"b,gone\"", "-256"},
            {"ARB:STAT ON", "-221,\"Settings conflict;no waveform is selected\""},
            {"ARB:MODE WAVES", "-224,\"Illegal parameter value;WAVeform, SEQuence\""}});
    EXPECT_EQ(Say("ARB:MODE SEQUENCE;STAT ON;STAT?"), "1");
    Refuse({{"ARB:DEL b", "-221"},
            {"ARB:REN b,d", "-221"},
            {"ARB:MODE WAV", "-221"},
            {"ARB:SEQ \"b\"", "-221"},
            {"ARB:DEL:ALL", "-221"}});
    Converse({{"ARB:SEL c;MODE?;STAT?;STAT OFF;MODE SEQ;STAT ON;SEL '';STAT?", "WAV;1;1"},
              {"ARB:DEL c;STAT OFF;REN b,d;DEL 'A*2';SEQ?", "\"d*1\""},
              {"*RST;:ARB:SEQ?;MODE?", "\"\";WAV"}});
    std::string many = "d";
    for (int count = 0; count < 255; ++count) {
        many += ",d";
    }
    Say("ARB:SEQ \"" + many + '"');
    EXPECT_EQ(Say("ARB:SEQ:POIN?"), "256");
    Refuse({{"ARB:SEQ \"" + many + ",d\"", "-224"}});
}

TEST_F(ScpiClientTest, WaitsForItsTrigger) {
    Say("ARB:DATA:IQ a," + Codes({1}) + ";:ARB:SEL a");
    Refuse({{"*TRG", "-211,\"Trigger ignored\""}, {"TRIG:SOUR NONE", "-224"}});
    Converse({{"TRIG:SOUR?;:ARB:STAT ON;:TRIG:WAIT?", "IMM;0"},
              {"TRIG:SOUR BUS;:ARB:STAT ON;:TRIG:WAIT?", "0"},
              {"ARB:STAT OFF;STAT ON;:TRIG:WAIT?;:ARB:STAT?", "1;1"},
              {"*TRG;:TRIG:WAIT?;:ARB:STAT?", "0;1"},
              {"TRIG:SOUR EXT;:ARB:STAT OFF;STAT ON;:TRIG:WAIT?", "1"}});
    Refuse({{"*TRG", "-211"}});
    Converse({{"DIAG:KEY \"TRIGGER\";:TRIG:WAIT?;:MMEM:CAT?", "0;\"\""},
              {"ARB:STAT OFF;STAT ON;:TRIG;TRIG:WAIT?", "0"},
              {"ARB:STAT OFF;STAT ON;:TRIG:SOUR IMM;WAIT?", "0"}});
    Refuse({{"DIAG:KEY \"TRIGGER\"", "-221"}});
}

TEST_F(ScpiClientTest, RoutesWhatIsPlayedAndKnowsItsModelsLimits) {
    Converse({{"ARB:ROUT:IQ?;MARK? 1;MARK? 2", "MOD;EVENT1;EVENT2"},
              {"ARB:ROUT:IQ OUTPUT;MARK 1,BLANKING;IQ?;MARK? 1", "OUTP;BLAN"},
              {"FREQ? MIN;FREQ? MAX;:POW? MAXIMUM;:ARB:CLOC? MAX",
               "2.500000000E+05;2.000000000E+10;2.500000000E+01;1.000000000E+08"}});
    Refuse({{"ARB:ROUT:MARK 3,NONE", "-222"}, {"ARB:ROUT:IQ", "-109"}, {"FREQ? TOP", "-224"}});
    SwitchOn({.model = "KRV-B"});
    Converse({{"ARB:CLOC?", "4.000000000E+07"}, {"FREQ 4 GHz;FREQ?", "4.000000000E+09"}});
    Refuse({{"FREQ 4.1 GHz", "-222"}, {"POW 14", "-222"}, {"ARB:CLOC 41 MHz", "-222"}});
}

TEST_F(ScpiClientTest, GoesRemoteUntilItIsReturnedToLocal) {
    Converse({{"SYST:REM?", "0"},
              {"*OPC?", "1"},
              {"SYST:REM?;LOC;REM?;REM;REM?", "1;0;1"},
              {"SYST:LOC", ""},
              {"SYST:REM?", "0"}});
}

TEST_F(ScpiClientTest, SharesTheInstrumentAmongClients) {
    SwitchOn({.memoryPoints = 10});
    GeneratorClient other(generator);
    auto vanishing = std::make_unique<GeneratorClient>(generator);
    vanishing->Send("ARB:DATA:IQ gone,#216abc");
    // What is on its way is put aside, and given back when its client goes.
    EXPECT_EQ(other.Say("ARB:MEM:FREE?"), "2");
    vanishing.reset();
    EXPECT_EQ(other.Say("ARB:MEM:FREE?"), "10");
    // Blocks of two clients at the same time don't mix.
    client->Send("ARB:DATA:IQ mine,#14\x01");
    other.Send("ARB:DATA:IQ yours,#14\x02\x03");
    client->Send(std::string("\x02\x03\x04\n", 4));
    other.Send(std::string("\x04\x05\n", 3));
    EXPECT_EQ(generator->WaveformNamed("mine").codes[0], 0x0102);
    EXPECT_EQ(generator->WaveformNamed("yours").codes[1], 0x0405);
    other.Say("BAD");
    EXPECT_EQ(Error(), "-113,\"Undefined header;BAD\"");
}

}  // namespace
}  // namespace krv::tests
