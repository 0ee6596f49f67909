// krv status, files, play, stop, set and send, and what a download finds in the instrument, against
// a generator that is served over TCP.
#include <nlohmann/json.hpp>

#include <utility>
#include <vector>

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
    EXPECT_EQ(Krv({"files", "copy", "Tone", " Other"}), 0) << Err;
    EXPECT_EQ(Krv({"files", "copy", "Tone", " Other"}), 130) << "blanks belong to the name";
    EXPECT_EQ(Krv({"files", "rename", " Other", "Other"}), 0) << Err;
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

TEST_F(PanelCommandTest, ADownloadMayBePlayedAtOnceAndAgain) {
    const std::string file = File("i.txt", Ramp(120));
    for (int count = 0; count < 2; ++count) {
        EXPECT_EQ(Krv({"download", "--i", file, "--name", "tone", "--play"}), 0) << Err;
        EXPECT_NE(Out.find("\nPlaying:      yes, the RF output is off\n"), std::string::npos)
            << Out;
        EXPECT_EQ(Krv({"send", "ARB:STAT?;SEL?"}), 0) << Err;
        EXPECT_EQ(Out, "1;\"tone\"\n");
    }
    EXPECT_EQ(Krv({"download", "--i", file, "--name", "TONE"}), 1) << "it is still selected";
}

TEST_F(PanelCommandTest, ASequenceThatPlaysAndATriggerThatIsAwaitedAreSeen) {
    Download("Tone", 120);
    Download("Pulse", 160);
    EXPECT_EQ(Krv({"send", "ARB:SEQ \"Tone*3,Pulse\";MODE SEQ;STAT ON"}), 0) << Err;
    EXPECT_EQ(Krv({"status"}), 0) << Err;
    EXPECT_NE(Out.find("\nSelected waveform: none\nSequence:          Tone*3,Pulse*1, playing\n"),
              std::string::npos)
        << Out;
    const std::string file = File("i.txt", Ramp(120));
    EXPECT_EQ(Krv({"download", "--i", file, "--name", "pulse", "--report", Path("report")}), 1);
    EXPECT_NE(Err.find("The sequence that the instrument plays has the waveform pulse, so that it "
                       "can't be replaced.  Nothing has been sent."),
              std::string::npos)
        << Err;
    EXPECT_NE(Content("report").find("\"sent\": []"), std::string::npos);
    EXPECT_EQ(Krv({"download", "--i", file, "--name", "other"}), 0) << Err;
    EXPECT_EQ(Krv({"send", "TRIG:SOUR BUS"}), 0) << Err;
    EXPECT_EQ(Krv({"download", "--i", file, "--name", "pulse", "--play"}), 0) << Err;
    EXPECT_NE(Out.find("\nPlaying:      when the instrument is triggered, the RF output is off\n"),
              std::string::npos)
        << Out;
    EXPECT_EQ(Krv({"status"}), 0) << Err;
    EXPECT_NE(Out.find("Selected waveform: pulse, waiting for its trigger\n"), std::string::npos)
        << Out;
    EXPECT_EQ(Krv({"play", "Tone"}), 0) << Err;
    EXPECT_EQ(Out, "Tone waits for its trigger; the RF output is off\n");
}

TEST_F(PanelCommandTest, SendTellsErrorsFromReplies) {
    {
        const std::lock_guard lock(running.Device().Mutex());
        running.Device().Report(simulator::ScpiError::UndefinedHeader);
    }
    EXPECT_EQ(Krv({"send", "SYST:ERR?"}), 0) << Err;
    EXPECT_EQ(Out, "0,\"No error\"\n");
    EXPECT_EQ(Err, "krv: Warning: The instrument had reported before: -113 Undefined header.\n");
    EXPECT_EQ(Krv({"send", "FREQ 1e99;:SYST:ERR?"}), 0) << Err;
    EXPECT_EQ(Out.find("-222,"), 0U) << Out;
    EXPECT_EQ(Krv({"send", "SYST:SET?"}), 1);
    EXPECT_EQ(
        Err,
        "krv: The instrument's reply to SYST:SET? is a block of data, which can't be shown as "
        "text.\n");
    EXPECT_EQ(Krv({"play", "stop"}), 0) << Err;
    EXPECT_EQ(Out, "Playing has stopped\n");
}

TEST_F(PanelCommandTest, NothingIsSentInVain) {
    const RunningGenerator small({.memoryPoints = 200});
    const auto words = [&](const char* name, int points, std::vector<std::string> more) {
        more.insert(more.begin(),
                    {"download", "--address", small.Address(), "--i",
                     File("i.txt", Ramp(2 * points)), "--name", name, "--report", Path("report")});
        return more;
    };
    EXPECT_EQ(RunAtTerminal(words("A", 120, {}), ""), 0) << Err;
    EXPECT_EQ(Run(words("B", 100, {})), 1);
    EXPECT_NE(Err.find("The waveform has 100 points, and the instrument's memory has room for 80.  "
                       "Nothing has been sent."),
              std::string::npos)
        << Err;
    EXPECT_NE(Content("report").find("\"sent\": []"), std::string::npos);
    EXPECT_EQ(Run(words("a\"b", 40, {})), 1);
    EXPECT_NE(Content("report").find("\"sent\": []"), std::string::npos) << Err;
    EXPECT_EQ(RunAtTerminal(words("a", 160, {}), "n\n"), 130);
    EXPECT_NE(Err.find("The instrument holds a waveform a of 120 points.  Replace it?\n[y/N] "),
              std::string::npos)
        << Err;
    EXPECT_NE(Content("report").find("\"outcome\": \"cancelled\""), std::string::npos);
    EXPECT_EQ(RunAtTerminal(words("a", 160, {}), "y\n"), 0) << Err;
    EXPECT_EQ(RunAtTerminal(words("a", 180, {"--replace"}), ""), 0) << Err;
    EXPECT_EQ(Run(words("a", 200, {})), 0) << "a script means to replace: " << Err;
    EXPECT_NE(Out.find(", in place of an earlier waveform\n"), std::string::npos) << Out;
}

// Programs read these keys: a later version must not change them.
TEST_F(PanelCommandTest, AnswersProgramsInJson) {
    const auto answer = [this] { return nlohmann::json::parse(Out); };
    ASSERT_EQ(Krv({"download", "--i", File("i.txt", Ramp(120)), "--name", "T\xE4", "--json"}), 1);
    EXPECT_EQ(answer()["outcome"], "failed");
    ASSERT_EQ(Krv({"download", "--i", File("i.txt", Ramp(120)), "--name", "Tone", "--play",
                   "--json", "--quiet"}),
              0)
        << Err;
    EXPECT_EQ(answer()["outcome"], "done");
    EXPECT_EQ(answer()["playing"], true);
    EXPECT_EQ(answer()["sent"][0]["count"], 120);
    EXPECT_EQ(Err, "");
    ASSERT_EQ(Krv({"status", "--json"}), 0) << Err;
    EXPECT_EQ(answer(), nlohmann::json::parse(R"({"model": "M7718C", "serialNumber": "US00000001",
        "frequencyHz": 1e9, "levelDbm": -20, "rfOutput": false, "sampleClockHz": 1e8,
        "selectedWaveform": "Tone", "sequence": null, "playing": true, "waitingForTrigger": false,
        "memory": {"usedPoints": 60, "freePoints": 67108804}})"));
    ASSERT_EQ(Krv({"files", "--json"}), 0) << Err;
    EXPECT_EQ(answer(), nlohmann::json::parse(R"({
        "waveforms": [{"name": "Tone", "points": 60, "interleaved": true}],
        "memory": {"usedPoints": 60, "freePoints": 67108804}})"));
    const std::pair<std::vector<std::string>, const char*> works[] = {
        {{"files", "copy", "Tone", "Other"}, R"({"copied": "Tone", "to": "Other"})"},
        {{"files", "rename", "Other", "Old"}, R"({"renamed": "Other", "to": "Old"})"},
        {{"files", "delete", "Old", "--yes"}, R"({"deleted": ["Old"]})"},
        {{"set", "--level", "-10", "--rf", "on"},
         R"({"frequencyHz": null, "levelDbm": -10, "sampleClockHz": null, "rfOutput": true})"},
        {{"stop"}, R"({"playing": false})"},
        {{"play", "Tone"},
         R"({"waveform": "Tone", "rfOutput": true, "playing": true, "waitingForTrigger": false})"},
        {{"send", "FREQ?"}, R"({"message": "FREQ?", "reply": "1.000000000E+09"})"},
        {{"send", "OUTP OFF"}, R"({"message": "OUTP OFF", "reply": null})"},
    };
    for (auto [words, said] : works) {
        words.insert(words.end(), {"--json", "--quiet"});
        ASSERT_EQ(Krv(words), 0) << words[0] << Err;
        EXPECT_EQ(answer(), nlohmann::json::parse(said)) << Out;
        EXPECT_TRUE(words[0] == "files" || Err.empty()) << Err;
    }
    for (const char* command : {"capture", "restore"}) {
        ASSERT_EQ(Krv({command, Path("state"), "--json"}), 0) << Err;
        EXPECT_EQ(answer(), (nlohmann::json{{"model", "M7718C"},
                                            {"serialNumber", "US00000001"},
                                            {"file", Path("state")}}));
    }
    ASSERT_EQ(Krv({"image", Path("a.bmp"), "--json"}), 0) << Err;
    EXPECT_EQ(answer(), (nlohmann::json{{"file", Path("a.bmp")}}));
    ASSERT_EQ(Run({"convert", "--model", "M771XB", "--i", Path("i.txt"), "--output", Path("codes"),
                   "--json"}),
              0)
        << Err;
    EXPECT_EQ(answer()["counts"]["i"], 120);
    File("a.csv", "I,Q\n1,2\n3,4\n");
    ASSERT_EQ(Run({"import", Path("a.csv"), "--output", Path("made"), "--json"}), 0) << Err;
    EXPECT_EQ(answer()["files"][1]["count"], 2);
    ASSERT_EQ(Run({"import", Path("none"), "--output", Path("made"), "--json"}), 1);
    EXPECT_EQ("krv: " + answer()["error"].get<std::string>() + '\n', Err);
    ASSERT_EQ(Run({"plot", Path("a.csv"), "--output", Path("a.svg"), "--json"}), 0) << Err;
    EXPECT_EQ(answer()["output"], Path("a.svg"));
    EXPECT_EQ(Run({"plot", Path("a.csv"), "--json"}), 2);
    ASSERT_EQ(Krv({"identify", "--json"}), 0) << Err;
    EXPECT_EQ(answer(), nlohmann::json::parse(R"({"model": "M7718C", "firmwareRevision": "B.03.40",
        "serialNumber": "US00000001", "options": ["R2X"], "selectedWaveform": "Tone"})"));
    ASSERT_EQ(Krv({"check", "--i", Path("i.txt"), "--json"}), 0) << Err;
    EXPECT_EQ(answer()["command"], "check");

    ASSERT_EQ(Run({"list", "--json"}), 0) << Err;
    EXPECT_EQ(answer()["instruments"].back()["address"].get<std::string>().find("sim://"), 0U);
    ASSERT_EQ(Run({"formats", "--json"}), 0) << Err;
    EXPECT_TRUE(answer()["formats"][0]["reads"].is_string());
    Surroundings.address = "a\x7F\xC2\x9B";
    ASSERT_EQ(Run({"config", "--json"}), 0) << Err;
    EXPECT_EQ(answer()["settings"][0]["value"], *Surroundings.address) << Out;
    Surroundings.address.reset();
    ASSERT_EQ(Run({"config", "--json"}), 0) << Err;
    EXPECT_EQ(answer()["settings"][0],
              (nlohmann::json{{"name", "address"}, {"value", nullptr}, {"origin", nullptr}}));
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
