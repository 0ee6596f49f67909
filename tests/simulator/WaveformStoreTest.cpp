#include "simulator/device/WaveformStore.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/simulator/GeneratorConversation.h"
#include "tests/support/TemporaryFolder.h"

namespace krv::tests {
namespace {

using namespace simulator;

using Names = std::set<std::string>;

class WaveformStoreTest : public GeneratorConversation {
 protected:
    WaveformStoreTest() { SwitchOn({.storeFolder = Store()}); }

    [[nodiscard]] Names Files() const {
        Names names;
        for (const auto& entry : std::filesystem::directory_iterator(Store())) {
            names.insert(entry.path().filename().string());
        }
        return names;
    }
    [[nodiscard]] std::filesystem::path Store() const { return folder.Path() / "made" / "here"; }

    TemporaryFolder folder;
};

TEST_F(WaveformStoreTest, WritesEachArrayLittleEndianAndDropsStaleFiles) {
    Say("ARB:DATA:IQ n,#14abcd,#12ef");
    Say("ARB:DATA:MARK n,#12gh");
    EXPECT_EQ(Files(), (Names{"n.i.int16", "n.q.int16", "n.markers.int16"}));
    EXPECT_EQ(folder.Content("made/here/n.i.int16"), "badc");
    EXPECT_EQ(folder.Content("made/here/n.q.int16"), "fe");
    EXPECT_EQ(folder.Content("made/here/n.markers.int16"), "hg");
    Say("ARB:DATA:IQ n,#12ab");
    EXPECT_EQ(Files(), (Names{"n.i.int16"}));
    EXPECT_EQ(folder.Content("made/here/n.i.int16"), "ba");
    Say("ARB:DATA:INT n,#18abcdefgh");
    EXPECT_EQ(Files(), (Names{"n.iq.int16"}));
    EXPECT_EQ(folder.Content("made/here/n.iq.int16"), "badcfehg");
    // The same waveform for the generator.
    Say("ARB:DATA:IQ N,#12ab");
    EXPECT_EQ(Files(), (Names{"N.i.int16"}));
}

TEST_F(WaveformStoreTest, CopiesAndRenamesWithAllArrays) {
    Say("ARB:DATA:IQ n,#14abcd,#12ef");
    Say("ARB:DATA:MARK n,#12gh");
    Say("ARB:SEL n;COPY n,copy;REN n,N2");
    EXPECT_EQ(Say("SYST:ERR?;:ARB:SEL?;CAT?"),
              "0,\"No error\";\"N2\";4,67108860,\"copy,IQ,2\",\"N2,IQ,2\"");
    EXPECT_EQ(Files(), (Names{"copy.i.int16", "copy.q.int16", "copy.markers.int16", "N2.i.int16",
                              "N2.q.int16", "N2.markers.int16"}));
    EXPECT_EQ(folder.Content("made/here/copy.markers.int16"), "hg");
    Say("ARB:STAT ON");
    for (const auto& [message, error] : {std::pair{"COPY none,x", -256},
                                         {"COPY copy,COPY", -257},
                                         {"COPY copy,n2", -221},
                                         {"REN copy,n2", -257},
                                         {"REN N2,x", -221},
                                         {"COPY copy,\"a,b\"", -257}}) {
        Say("ARB:" + std::string(message));
        EXPECT_TRUE(Say("SYST:ERR?").starts_with(std::to_string(error))) << message;
    }
    SwitchOn({.memoryPoints = 3});
    Say("ARB:DATA:IQ n,#14abcd;:ARB:COPY n,m");
    EXPECT_EQ(Say("SYST:ERR?"), "-225,\"Out of memory\"");
}

TEST_F(WaveformStoreTest, WritesNothingOutsideItsFolder) {
    for (const char* name : {"../up", "/etc/x", "C:\\x", "..", ".hidden", "NUL ", "com1.txt"}) {
        Say("ARB:DATA:IQ \"" + std::string(name) + "\",#12ab");
        EXPECT_EQ(Say("SYST:ERR?"), "0,\"No error\"") << name;
    }
    EXPECT_EQ(Files().size(), 7U);
    EXPECT_EQ(folder.Names(), (Names{"made"}));
    EXPECT_EQ(StoredFileStem("Sine 1_a-b.c"), "Sine 1_a-b.c");
    EXPECT_EQ(StoredFileStem("nul "), "%6Eul ");
    EXPECT_EQ(StoredFileStem(StoredFileStem("a/b")), "a%252Fb");
    EXPECT_NE(StoredFileStem("!`[;$(?*"), StoredFileStem("=@{!;[[`")) << "of one CRC-32";
}

TEST_F(WaveformStoreTest, SaysWhenAFileCannotBeWritten) {
    Say("ARB:DATA:IQ n,#12cd");
    std::filesystem::create_directories(Store() / "n.q.int16" / "in the way");
    EXPECT_EQ(Say("ARB:DATA:IQ n,#12ab,#12ab;:SYST:ERR?"),
              "-250,\"Mass storage error;the waveform's files\"");
    EXPECT_EQ(folder.Content("made/here/n.i.int16"), "dc") << "what belongs together stays so";
    std::filesystem::create_directory(Store() / "m.iq.int16");
    EXPECT_EQ(Say("ARB:DATA:IQ m,#12ab;:SYST:ERR?").substr(0, 4), "-250");
    EXPECT_EQ(Files(), (Names{"n.i.int16", "n.q.int16", "m.iq.int16"})) << "an empty one is kept";
}

// As if the generator were killed at the step that fails.
TEST_F(WaveformStoreTest, HoldsAWaveformWithAllItsArraysOrNotAtAll) {
    Say("ARB:DATA:IQ n,#12cd");
    std::filesystem::create_directories(Store() / "n.markers.int16" / "in the way");
    Say("ARB:DATA:IQ n,#12ab,#12ef");
    EXPECT_EQ(Files().count("n.i.int16"), 0U);
    std::filesystem::remove_all(Store() / "n.markers.int16");
    Say("ARB:DATA:MARK n,#12gh");
    EXPECT_EQ(Files(), (Names{"n.i.int16", "n.q.int16", "n.markers.int16"}));
    std::filesystem::remove(Store() / "n.i.int16");
    std::filesystem::create_directories(Store() / "n.i.int16" / "in the way");
    Say("ARB:REN n,m");
    EXPECT_EQ(Files().count("n.markers.int16"), 1U) << "the codes go first";
}

}  // namespace
}  // namespace krv::tests
