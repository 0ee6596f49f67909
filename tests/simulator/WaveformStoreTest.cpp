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

TEST_F(WaveformStoreTest, WritesNothingOutsideItsFolder) {
    for (const char* name : {"../up", "/etc/x", "C:\\x", "..", ".hidden", "NUL ", "com1.txt"}) {
        Say("ARB:DATA:IQ \"" + std::string(name) + "\",#12ab");
        EXPECT_EQ(Say("SYST:ERR?"), "0,\"No error\"") << name;
    }
    EXPECT_EQ(Files().size(), 7U);
    EXPECT_EQ(folder.Names(), (Names{"made"}));
    EXPECT_EQ(StoredFileStem("Sine 1_a-b.c"), "Sine 1_a-b.c");
    EXPECT_NE(StoredFileStem("a/b"), StoredFileStem("a:b"));
    EXPECT_NE(StoredFileStem(StoredFileStem("a/b")), StoredFileStem("a/b"));
    EXPECT_NE(StoredFileStem("nul "), "nul ");
}

TEST_F(WaveformStoreTest, SaysWhenAFileCannotBeWritten) {
    Say("ARB:DATA:IQ n,#12cd");
    std::filesystem::create_directories(Store() / "n.q.int16" / "in the way");
    EXPECT_EQ(Say("ARB:DATA:IQ n,#12ab,#12ab;:SYST:ERR?"),
              "-250,\"Mass storage error;the waveform's files\"");
    EXPECT_EQ(folder.Content("made/here/n.i.int16"), "dc") << "what belongs together stays so";
}

}  // namespace
}  // namespace krv::tests
