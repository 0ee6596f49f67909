// krv status, files, play, stop, set and send, against a generator that is served over TCP.
#include "tests/cli/CommandLineFixture.h"
#include "tests/support/RunningGenerator.h"

namespace krv::tests {
namespace {

class PanelCommandTest : public CommandLineTest {
 protected:
    RunningGenerator running;

    int Krv(std::vector<std::string> words) {
        words.insert(words.end(), {"--address", running.Address()});
        return Run(words);
    }
    void Download(const std::string& name, int points) {
        ASSERT_EQ(Krv({"download", "--i", File("i.txt", Ramp(points)), "--type", "16-bit", "--name",
                       name, "--yes"}),
                  0)
            << Err;
    }
};

TEST_F(PanelCommandTest, SetsAndShowsWhatIsPutOut) {
    Download("Tone", 120);
    EXPECT_EQ(Krv({"set", "--frequency", "2.4 ghz", "--level", "-10dBm", "--clock", "80000000",
                   "--rf", "on"}),
              0)
        << Err;
    EXPECT_EQ(Out,
              "Frequency:    2.4 GHz\nLevel:        -10 dBm\nSample clock: 80 MHz\n"
              "RF output:    on\n");
    UsersNumbers.decimalSeparator = ',';
    EXPECT_EQ(Krv({"set", "--frequency", "2,5GHz", "--level", "-7,5"}), 0) << Err;
    EXPECT_EQ(Krv({"set", "--frequency", "2.4GHz", "--level", "-10"}), 0) << Err;
    EXPECT_EQ(Krv({"play", "tone"}), 0) << Err;
    EXPECT_EQ(Krv({"status"}), 0) << Err;
    EXPECT_EQ(Out,
              "Model:             M7718C, serial number US00000001\n"
              "Frequency:         2.4 GHz\nLevel:             -10 dBm\nRF output:         on\n"
              "Sample clock:      80 MHz\nSelected waveform: Tone, playing\n"
              "Waveform memory:   60 points used, 67108804 free\n");
    EXPECT_EQ(Krv({"stop"}), 0) << Err;
    EXPECT_EQ(Krv({"send", "ARB:STAT?;SEL?"}), 0) << Err;
    EXPECT_EQ(Out, "0;\"Tone\"\n");
}

TEST_F(PanelCommandTest, ManagesTheWaveformMemory) {
    Download("Tone", 120);
    Download("A b", 160);
    EXPECT_EQ(Krv({"files", "copy", "Tone", "Other"}), 0) << Err;
    EXPECT_EQ(Krv({"files", "rename", "A b", "a B"}), 0) << Err;
    EXPECT_EQ(Krv({"files"}), 0) << Err;
    EXPECT_EQ(Out,
              "a B    80 points, interleaved\nOther  60 points, interleaved\n"
              "Tone   60 points, interleaved\n3 waveforms, 200 points used, 67108664 free\n");
    EXPECT_EQ(Krv({"files", "copy", "a B", "TONE"}), 130) << "it would replace one";
    EXPECT_EQ(Krv({"files", "delete", "Tone", "Other"}), 130);
    EXPECT_EQ(Krv({"files", "delete", "Tone", "none", "Other", "--yes"}), 1);
    EXPECT_EQ(Out, "Tone deleted\n");
    EXPECT_NE(Err.find("krv: The instrument reports -256 File name not found;none.\n"), Err.npos)
        << Err;
    EXPECT_EQ(Krv({"files"}), 0);
    EXPECT_EQ(Out,
              "a B    80 points, interleaved\nOther  60 points, interleaved\n"
              "2 waveforms, 140 points used, 67108724 free\n");
    EXPECT_EQ(Krv({"files", "rename", "other", "A B"}), 1);
    EXPECT_EQ(Krv({"files", "copy", "Other"}), 2);
}

TEST_F(PanelCommandTest, SaysWhatTheInstrumentOrTheProgramRefuses) {
    struct Refusal {
        std::vector<std::string> words;
        int exitCode;
        const char* said;
    };
    const std::vector<Refusal> refusals{
        {{"set", "--frequency", "40GHz"}, 1, "-222 Data out of range"},
        {{"set", "--level", "-10 dB"}, 2, "--level takes a number with or without a unit"},
        {{"set", "--rf", "maybe"}, 2, "--rf"},
        {{"play", "none"}, 1, "-256 File name not found;none"},
        {{"send", "BOGUS:CMD 3"}, 1, "-113 Undefined header;BOGUS:CMD"},
        {{"send", "FREQ"}, 1, "-109 Missing parameter"},
        {{"send", "BAND?"}, 1, "-113 Undefined header"},
        {{"send", "OUTP ON\nOUTP OFF"}, 2, "There is a line break in"},
        {{"send", "DIAG:FAUL \"what?\""}, 1, "-224 Illegal parameter value"},
        {{"files", "burn"}, 2, "burn"},
    };
    {
        const std::lock_guard lock(running.Device().Mutex());
        for (int count = 0; count < 40; ++count) {
            running.Device().Report(simulator::ScpiError::UndefinedHeader);
        }
    }
    for (const Refusal& refusal : refusals) {
        EXPECT_EQ(Krv(refusal.words), refusal.exitCode) << Err;
        EXPECT_NE(Err.find(refusal.said), std::string::npos) << Err;
        EXPECT_EQ(Out, "");
    }
}

}  // namespace
}  // namespace krv::tests
