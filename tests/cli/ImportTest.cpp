// Files of other programs: converted, downloaded, and written as the dialog's files.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "common/ScopeExit.h"
#include "formats/Formats.h"
#include "formats/Readers.h"
#include "tests/cli/CommandLineFixture.h"
#include "tests/support/EnvironmentVariable.h"
#include "tests/support/RunningGenerator.h"

namespace krv::tests {
namespace {

using namespace cli;

std::string SampleFile(const std::string& name) {
    return ProjectFile("tests/formats/samples/" + name).generic_string();
}

class ImportTest : public CommandLineTest {
 protected:
    int Convert(const std::string& model, std::vector<std::string> options) {
        options.insert(options.begin(), {"convert", "--model", model, "--output", Path("codes"),
                                         "--report", Path("report")});
        return Run(options);
    }
    int Import(std::vector<std::string> options) {
        options.insert(options.begin(), "import");
        options.insert(options.end(), {"--output", Path("out"), "--report", Path("report")});
        return Run(options);
    }
    // A hundred lines "I,Q,M" of a square wave.
    static std::string Square() {
        std::string table = "I,Q,M\n";
        for (int k = 0; k < 100; ++k) {
            table += k % 2 == 0 ? "0.5,-0.25,1\n" : "-0.5,0.25,0\n";
        }
        return table;
    }
    [[nodiscard]] nlohmann::json Report() const { return nlohmann::json::parse(Content("report")); }
};

TEST_F(ImportTest, SixteenBitSamplesAreTheCodesOfTheNewFamily) {
    const std::string samples = ReadFile(SampleFile("gnuradio_ci16.sigmf-data"));
    std::vector<std::vector<std::string>> sources{
        {SampleFile("gnuradio_ci16.sigmf-meta")},
        {SampleFile("gnutar_archive.sigmf")},
        {SampleFile("gnuradio_ci16.sigmf-data"), "--raw", "ci16_le"}};
    for (std::vector<std::string>& source : sources) {
        source.insert(source.begin(), "--i");
        ASSERT_EQ(Convert("M7718C", source), 0) << Err;
        EXPECT_EQ(Content("codes/i.int16"), samples);
        EXPECT_FALSE(Exists("codes/q.int16"));
    }
    const std::string wav = ReadFile(SampleFile("sox_stereo_pcm16.wav"));
    ASSERT_EQ(Run({"download", "--address", "sim://M7718C", "--verify", "--report", Path("report"),
                   "--i", SampleFile("sox_stereo_pcm16.wav")}),
              0)
        << Err;
    EXPECT_NE(
        Out.find(
            "Imported:     WAV, 16-bit integers; 1000 points at 1000000 Hz.\n"
            "              I from column 1, Q from column 2.\n"
            "              Full scale is 32768: the integers are codes and stay as they are.\n"),
        std::string::npos)
        << Out;
    EXPECT_EQ(Report()["verified"], true);
    EXPECT_EQ(Report()["destination"], "sox_stereo_pcm16");
    EXPECT_EQ(Report()["import"]["format"], "WAV, 16-bit integers");
    EXPECT_EQ(Report()["import"]["sampleRate"], 1e6);
}

TEST_F(ImportTest, TheOldFamilyTakesAQuarterOfEachAndItsOwnMarkers) {
    const std::string table = File("wave.csv", Square());
    ASSERT_EQ(Convert("M771XB", {"--i", table}), 0) << Err;
    const auto begin = [this](const std::string& name) {
        const std::vector<int> codes = Codes(name);
        EXPECT_EQ(codes.size(), 100U);
        return std::vector<int>(codes.begin(), codes.begin() + 3);
    };
    EXPECT_EQ(begin("codes/i.int16"), (std::vector<int>{12288, 4096, 12288}));
    EXPECT_EQ(begin("codes/q.int16"), (std::vector<int>{6144, 10240, 6144}));
    EXPECT_EQ(begin("codes/markers.int16"), (std::vector<int>{1, 0, 1}));
    // Without Q, I alone isn't taken for both in turn; a pulse counts points.
    ASSERT_EQ(
        Convert("M7718C", {"--i", table + ":I", "--marker-start", "1", "--marker-length", "2"}), 0)
        << Err;
    EXPECT_EQ(Codes("codes/i.int16").size(), 200U);
    EXPECT_EQ(Codes("codes/i.int16")[1], 0);
    EXPECT_EQ(begin("codes/markers.int16"), (std::vector<int>{0, 1, 1}));
    EXPECT_EQ(Err, "");
    ASSERT_EQ(Convert("M7718C", {"--i", table, "--marker-length", "2"}), 0) << Err;
    EXPECT_EQ(begin("codes/markers.int16"), (std::vector<int>{1, 1, 0}));
    EXPECT_NE(Out.find("The marker pulse takes the place of the file's own"), std::string::npos);
}

TEST_F(ImportTest, ScalesOnlyWhenAsked) {
    const std::string table = File("wave.csv", Square());
    const auto first = [&](const std::vector<std::string>& options) {
        std::vector<std::string> words{"--i", table};
        words.insert(words.end(), options.begin(), options.end());
        EXPECT_EQ(Convert("M7718C", words), 0) << Err;
        return Codes("codes/i.int16")[0];
    };
    EXPECT_EQ(first({}), 16384);
    EXPECT_EQ(first({"--normalize"}), 32767);
    EXPECT_EQ(first({"--scale=-50"}), -16384);
    EXPECT_EQ(first({"--range", "1:60"}), -16384);
    EXPECT_EQ(Run({"info", table, "--normalize", "--json"}), 0) << Err;
    EXPECT_EQ(nlohmann::json::parse(Out)["figures"]["peakValue"], 1);
    EXPECT_EQ(Convert("M7718C", {"--i", File("big.csv", "I,Q\n0.5,1.5\n")}), 1);
    EXPECT_NE(
        Err.find("krv: The largest magnitude is 1.5, and full scale is 1. Nothing is clipped: "),
        std::string::npos)
        << Err;
    EXPECT_EQ(Report()["import"]["warnings"].size(), 1U);
}

TEST_F(ImportTest, OtherFilesGiveQAndMarkers) {
    const std::string i = File("a.csv", "I\n" + Ramp(60));
    const std::string q = File(
        "b.csv", "x;y\n" + [] {
            std::string lines;
            for (int k = 0; k < 60; ++k) {
                lines += "1;7\n";
            }
            return lines;
        }());
    File("m.txt", Ramp(15));
    ASSERT_EQ(Convert("M7718C", {"--i", i, "--q", q + ":y", "--marker-file", Path("m.txt")}), 0)
        << Err;
    EXPECT_EQ(Codes("codes/i.int16")[3], 7);
    EXPECT_EQ(Codes("codes/markers.int16")[14], 15);
    EXPECT_EQ(Convert("M7718C", {"--i", i, "--q", q}), 1);
    EXPECT_NE(Err.find("b.csv: It holds two columns."), std::string::npos) << Err;
    EXPECT_EQ(Convert("M7718C", {"--i", i, "--q", Path("m.txt")}), 1);
    EXPECT_NE(Err.find("m.txt: It holds 15 points with a full scale of 32768, the I file 60 "),
              std::string::npos)
        << Err;
}

TEST_F(ImportTest, WritesTheFilesThatTheDialogReads) {
    const std::string table = File("wave.csv", Square());
    ASSERT_EQ(Import({table}), 0) << Err;
    EXPECT_EQ(Content("out/waveI.txt").substr(0, 9), "0.5\n-0.5\n");
    EXPECT_EQ(Content("out/waveMarker.txt").substr(0, 4), "1\n0\n");
    EXPECT_TRUE(Report()["files"][1]["file"].get<std::string>().ends_with("out/waveQ.txt"));
    EXPECT_EQ(Report()["import"]["points"], 100);
    EXPECT_FALSE(Exists("out/waveI.txt.part"));
    ASSERT_EQ(Convert("M7718C", {"--i", Path("out/waveI.txt"), "--find-q", "--find-marker"}), 0)
        << Err;
    EXPECT_EQ(Codes("codes/i.int16")[0], 32767);

    ASSERT_EQ(Import({table, "--type", "16-bit", "--file-type", "little-endian"}), 0) << Err;
    ASSERT_EQ(Convert("M7718C", {"--i", Path("out/wave.bin"), "--type", "16-bit", "--file-type",
                                 "little-endian", "--marker-file", Path("out/waveMarker.bin")}),
              0)
        << Err;
    EXPECT_EQ(Content("codes/i.int16"), Content("out/wave.bin"));
    EXPECT_EQ(Codes("codes/markers.int16").size(), 100U);

    ASSERT_EQ(Import({table, "--type", "14-bit", "--file-type", "big-endian", "--normalize"}), 0)
        << Err;
    // The largest code, and the zero code less as much.
    EXPECT_EQ(Content("out/waveI.bin").substr(0, 4), std::string("\x3F\xFF\0\0", 4));
}

TEST_F(ImportTest, AReportNeverTellsOfAnEarlierRun) {
    const std::string table = File("wave.csv", Square());
    const auto expect = [&](int exitCode, const char* outcome, const char* error) {
        EXPECT_EQ(exitCode, outcome == std::string("done") ? 0 : error[0] == '-' ? 2 : 1) << Err;
        EXPECT_EQ(Report()["outcome"], outcome);
        const nlohmann::json said = Report()["error"];
        EXPECT_EQ((said.is_null() ? std::string() : said.get<std::string>()).find(error), 0U)
            << said;
    };
    const std::string range = "--range takes the first point";
    const std::string rate = "--resample-to takes a sample rate";
    expect(Import({table}), "done", "");
    EXPECT_EQ(Report()["files"].size(), 3U);
    expect(Import({table, "--range", "x"}), "failed", range.c_str());
    EXPECT_EQ(Report()["files"].size(), 0U);
    expect(Import({table}), "done", "");
    expect(Import({table + ":X"}), "failed", "");
    expect(Convert("M7718C", {"--i", table}), "done", "");
    expect(Convert("M7718C", {"--i", table, "--range", "x"}), "failed", range.c_str());
    expect(Convert("M7718C", {"--i", table}), "done", "");
    expect(Convert("M7718C", {"--i", table, "--resample-to", "0"}), "failed", rate.c_str());
    EXPECT_EQ(Run({"import", table, "--output", Path("new"), "--report", Path("new/report")}), 0);
    File("report", "the user's own");
    EXPECT_EQ(Convert("M7718C", {"--i", table, "--range", "x"}), 2);
    EXPECT_EQ(Content("report"), "the user's own");
    EXPECT_EQ(Run({"import", table, "--output", Path("out"), "--report", Path("out/waveQ.txt")}),
              2);
}

TEST_F(ImportTest, TakesTheUsersDecimalComma) {
    const std::string table = File("wave.csv", "Time,I,Q\n0,0.5,0\n1,-0.5,0\n2,0.5,0\n3,-0.5,0\n");
    UsersNumbers.decimalSeparator = ',';
    EXPECT_EQ(Import({table, "--resample-to", "1,5"}), 0) << Err;
    EXPECT_EQ(Report()["import"]["sampleRate"], 1.5);
    EXPECT_EQ(Import({table, "--resample-to", "0,0015 kHz"}), 0) << Err;
    EXPECT_EQ(Report()["import"]["sampleRate"], 1.5);
    EXPECT_EQ(Import({table, "--scale", "12,5"}), 0) << Err;
    EXPECT_EQ(Report()["import"]["peak"], 0.125);
}

TEST_F(ImportTest, StandardInputIsAFile) {
    const std::string samples = ReadFile(SampleFile("gnuradio_ci16.sigmf-data"));
    ASSERT_EQ(RunAtTerminal({"convert", "--model", "M7718C", "--output", Path("codes"), "--i", "-",
                             "--raw", "ci16"},
                            samples),
              0)
        << Err;
    EXPECT_EQ(Content("codes/i.int16"), samples);
    // Also where a file is called so, which no option makes.
    ASSERT_EQ(RunAtTerminal({"info", "-:Q,I", "--json"}, "I,Q\n1,2\n3,4\n"), 0) << Err;
    EXPECT_NE(Out.find("I from column 2 'Q'"), std::string::npos) << Out;
    EXPECT_EQ(RunAtTerminal({"import", "-", "--output", Path("out"), "--report", "-"}, Square()),
              2);
    EXPECT_NE(Err.find("--report takes a file, and - stands for standard input"), std::string::npos)
        << Err;
    const ScopeExit remove([] { std::filesystem::remove("-"); });
    std::ofstream("-") << "7\n8\n";
    ASSERT_EQ(RunAtTerminal({"import", "-", "--output", Path("out")}, Square()), 0) << Err;
    EXPECT_EQ(Content("out/stdinI.txt").substr(0, 11), "0.5\n-0.5\n0.");
}

// The library behind this reads a file by its name, and the copy that it is given goes again.
TEST_F(ImportTest, StandardInputMayBeAMatlabFile) {
    if (formats::MissingToReadMatlab() != nullptr) {
        GTEST_SKIP() << formats::MissingToReadMatlab();
    }
    std::filesystem::create_directory(Path("temporary"));
    const EnvironmentVariable folder("TMPDIR", Path("temporary"));
    for (const char* name : {"scipy_v4_int16_rows.mat", "octave_v7_complex_single.mat",
                             "matio_v73_complex_single.mat"}) {
        const std::string content = ReadFile(SampleFile(name));
        EXPECT_EQ(RunAtTerminal({"info", "-", "--json"}, content), 0) << name << ": " << Err;
        EXPECT_NE(Out.find("\"points\": 1000"), std::string::npos) << Out;
        EXPECT_EQ(RunAtTerminal({"info", "-"}, content.substr(0, 3000)), 1);
        EXPECT_TRUE(Err.starts_with("krv: -")) << Err;
    }
    EXPECT_TRUE(std::filesystem::is_empty(Path("temporary")));
}

// The figures of this file were taken by the program that wrote it.
TEST_F(ImportTest, InfoShowsTheFiguresOfAFile) {
    const std::string file = SampleFile("numpy_faults_ci16_le.iq");
    ASSERT_EQ(Run({"info", file, "--raw", "ci16_le", "--json"}), 0) << Err;
    const auto figures = nlohmann::json::parse(Out)["figures"];
    EXPECT_NEAR(figures["peak"], 1.251752, 1e-6);
    EXPECT_NEAR(figures["rms"], 1.107545, 1e-6);
    EXPECT_NEAR(figures["paprDb"], 1.0631, 1e-4);
    EXPECT_NEAR(figures["mean"]["i"], 0.049260, 1e-6);
    EXPECT_NEAR(figures["mean"]["q"], 0.029469, 1e-6);
    EXPECT_EQ(figures["clipped"], 744);
    EXPECT_NEAR(figures["wrapStep"], 1.312265, 1e-6);
    EXPECT_NEAR(figures["largestStep"], 0.077297, 1e-6);
    EXPECT_EQ(figures["codes"]["minimum"], -32768);
    ASSERT_EQ(Run({"info", SampleFile("gnuradio_stereo_float32.wav")}), 0) << Err;
    EXPECT_NE(
        Out.find("Duration:     1 ms at 1 MHz\nPeak:         -0.92 dBFS; the largest value of I or "
                 "Q is 0.9 of full scale\nRMS:          -1.87 dBFS\nPAPR:         0.96 dB of the "
                 "envelope"),
        std::string::npos)
        << Out;
    EXPECT_NE(Out.find("kHz hold 99 % of the power\n"), std::string::npos) << Out;
    EXPECT_EQ(Run({"info", "WAVE", "--address", "sim://M7718C"}), 1);
    EXPECT_NE(Err, "");
}

// What the instrument holds has the figures of the file that it came from, at its own sample clock.
TEST_F(ImportTest, InfoShowsTheFiguresOfWhatAnInstrumentHolds) {
    const RunningGenerator generator;
    const std::string address = generator.Address();
    const std::string file = SampleFile("gnuradio_ci16.sigmf-meta");
    ASSERT_EQ(Run({"download", "--address", address, "--i", file, "--name", "WAVE"}), 0) << Err;
    const auto figuresOf = [this](std::vector<std::string> arguments) {
        arguments.emplace_back("--json");
        EXPECT_EQ(Run(arguments), 0) << Err;
        return nlohmann::json::parse(Out)["figures"];
    };
    const auto sent = figuresOf({"info", file});
    const auto stored = figuresOf({"info", "WAVE", "--address", address});
    for (const char* name : {"points", "peak", "rms", "paprDb", "mean", "clipped", "codes",
                             "wrapStep", "largestStep", "gainImbalanceDb", "occupiedShare"}) {
        EXPECT_EQ(stored[name], sent[name]) << name;
    }
    EXPECT_EQ(stored["sampleRate"], 1e8);
    ASSERT_EQ(Run({"info", "WAVE", "--address", address}), 0) << Err;
    EXPECT_NE(Out.find("Duration:     10 us at 100 MHz\n"), std::string::npos) << Out;
}

TEST_F(ImportTest, PlotDrawsAFile) {
    const std::string file = File("wave.csv", Square());
    ASSERT_EQ(Run({"plot", file, "--output", Path("wave.svg")}), 0) << Err;
    EXPECT_NE(Content("wave.svg").find("wave.csv: 100 points</text>"), std::string::npos);
    ASSERT_EQ(Run({"plot", file, "--output", Path("wave.PNG"), "--dark", "--large"}), 0) << Err;
    // Twice 1200 by 800, in half a byte for each of at most 16 colours.
    EXPECT_EQ(Content("wave.PNG").substr(16, 10),
              std::string("\0\0\x09\x60\0\0\x06\x40\x04\x03", 10));
    ASSERT_EQ(Run({"plot", file, "--ascii"}), 0) << Err;
    EXPECT_NE(Out.find("\nI, from -1 to 1 of full scale\n"), std::string::npos) << Out;
    EXPECT_EQ(Run({"plot", file, "--output", Path("wave.gif")}), 2);
    EXPECT_EQ(Run({"plot", File("a.svg", Square()), "--output", Path("a.svg")}), 2);
    EXPECT_EQ(Content("a.svg"), Square());
}

TEST_F(ImportTest, SaysWhatCannotBeMeantOrRead) {
    const std::string table = File("wave.csv", Square());
    const std::string bad = File("bad.wav", std::string("RIFF\0\0\0\0WAVE", 12));
    struct Case {
        std::vector<std::string> words;
        int exitCode;
        const char* says;
    };
    const Case cases[] = {
        {{"--i", table, "--find-q"}, 2, "--find-q can't be used with "},
        {{"--i", table, "--raw", "ci12"}, 2, "--raw takes c or r for complex or real"},
        {{"--i", table, "--range", "5"}, 2, "--range takes the first point"},
        {{"--i", table, "--resample-to", "0"}, 2, "--resample-to takes a sample rate"},
        {{"--i", table, "--normalize", "--scale", "10"}, 2, "--normalize is the same as"},
        {{"--i", bad}, 1, "bad.wav, byte 12: The file ends without a data chunk.\n"},
        {{"--i", Path("none.wav:1")}, 1, ""},
        {{"--i", table + ":X"}, 1, "wave.csv: There is no column 'X'. There are column 1 'I', "},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(Convert("M7718C", each.words), each.exitCode) << each.says;
        EXPECT_NE(Err.find(each.says), std::string::npos) << Err;
    }
    EXPECT_EQ(Run({"import", table, "--output", Path("out"), "--file-type", "little-endian"}), 2);
    EXPECT_EQ(Run({"import", Path("none"), "--output", Path("out")}), 1);
    EXPECT_NE(Err.find("File not found"), std::string::npos) << Err;
    EXPECT_EQ(Run({"import", table, "--output", Path("out"), "--report", table}), 2);
    ASSERT_EQ(Run({"formats"}), 0);
    EXPECT_NE(Out.find("WAV, RF64 and BW64"), std::string::npos);
    EXPECT_EQ(Out.find("not by this build") != std::string::npos,
              std::ranges::any_of(formats::AllFormats(), [](const formats::Format& format) {
                  return format.lacks != nullptr;
              }));
}

}  // namespace
}  // namespace krv::tests
