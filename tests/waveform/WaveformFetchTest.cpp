#include "waveform/readers/WaveformFetch.h"

#include <gtest/gtest.h>

#include <new>
#include <string>
#include <vector>

#include "tests/waveform/RunFixture.h"

namespace krv::tests {

using namespace waveform;
namespace {

// Files chosen, markers from a pulse of no length.
class WaveformFetchTest : public RunFixture {
 protected:
    static constexpr const char* Confirm =
        " | Please confirm that the specified File Format is correct.";

    WaveformFetchTest() {
        plan.iSource = "i.txt";
        plan.qSource = "q.txt";
        plan.markerFile = "m.txt";
        Pulse("0", "0");
        dialog.SetProgressBar(1, 0, 1000, 100);
    }

    // --- what the user has chosen ---------------------------------------------------------------
    void IFile(const std::string& content) { Put("i.txt", content, data.i); }
    void QFile(const std::string& content) {
        Put("q.txt", content, data.q);
        plan.useQ = true;
    }
    void MarkerFile(const std::string& content) {
        Put("m.txt", content, data.markers);
        plan.markersFromFile = true;
    }
    void Pulse(const std::string& start, const std::string& length) {
        plan.markersFromFile = false;
        plan.markerStart = start;
        plan.markerLength = length;
    }

    // --- what happens ---------------------------------------------------------------------------
    bool Fetch() {
        counts.clear();
        return FetchWaveformData(plan, services, data);
    }
    // The only message that a failing fetch shows.
    std::string Failure() {
        desktop.MessageBoxes.Shown.clear();
        EXPECT_FALSE(Fetch());
        EXPECT_EQ(desktop.MessageBoxes.Shown.size(), 1U);
        return desktop.MessageBoxes.Shown.empty() ? "" : desktop.MessageBoxes.Shown.front();
    }
    int Opened() {
        const int opened = desktop.Files.OpenCount;
        desktop.Files.OpenCount = 0;
        return opened;
    }
    [[nodiscard]] std::string Values() const {
        return TextOf(data.i) + '/' + TextOf(data.q) + '/' + TextOf(data.markers);
    }
    [[nodiscard]] std::string Loaded() const {
        return std::string(data.i.loaded ? "I" : "-") + (data.q.loaded ? "Q" : "-") +
               (data.markers.loaded ? "M" : "-");
    }

 private:
    // A new file, which the dialog has noticed.
    void Put(const std::string& name, const std::string& content, Channel& channel) {
        desktop.Files.Put(name, content);
        channel.Forget();
    }
};

TEST_F(WaveformFetchTest, ReadsEveryFileWithTheReaderOfTheFileType) {
    IFile("1 2 3");
    QFile("4\r\n5\r\n");
    MarkerFile("0 1 2 3");
    EXPECT_TRUE(Fetch());
    EXPECT_EQ(Values(), "1 2 3/4 5/0 1 2 3");
    EXPECT_EQ(counts, "I3 Q2 M4 ");
    EXPECT_EQ(Loaded(), "IQM");
    EXPECT_EQ(Of("["), Lines{});
    IFile("\x01\x02\xFF\xFF");
    QFile("\x03\x04");
    MarkerFile("\xFF\x02\x07\x07");
    plan.fileType = FileType::LittleEndian;
    EXPECT_TRUE(Fetch());
    EXPECT_EQ(Values(), "513 -1/1027/255 2");
    data = {};
    plan.fileType = FileType::BigEndian;
    EXPECT_TRUE(Fetch());
    EXPECT_EQ(Values(), "258 65535/772/255 2");
}

TEST_F(WaveformFetchTest, UnchangedFilesAreNotOpenedAgain) {
    IFile("1 2");
    QFile("3 4");
    MarkerFile("0 0");
    EXPECT_TRUE(Fetch());
    EXPECT_EQ(Opened(), 3);
    EXPECT_TRUE(Fetch());
    EXPECT_EQ(Opened(), 0);
    plan.useQ = false;
    desktop.Files.Entries["q.txt"].date = 9;
    EXPECT_TRUE(Fetch());
    EXPECT_EQ(Opened(), 0) << "a Q file that takes no part is not asked for its date";
    desktop.Files.Entries.erase("i.txt");
    EXPECT_TRUE(Fetch());
    EXPECT_EQ(Opened(), 0) << "what was read stays when the file has gone";
}

TEST_F(WaveformFetchTest, OneChangedFileDiscardsEverythingThatWasLoaded) {
    IFile("1 2");
    QFile("3 4");
    MarkerFile("0 0");
    EXPECT_TRUE(Fetch());
    for (const char* changed : {"i.txt", "q.txt", "m.txt"}) {
        Opened();
        desktop.Files.Entries[changed].content = "7 8 9";
        ++desktop.Files.Entries[changed].date;
        EXPECT_TRUE(Fetch());
        EXPECT_EQ(Opened(), 3) << changed;
        EXPECT_EQ(counts.substr(0, 8), "changed ");
        EXPECT_EQ(Loaded(), "IQM");
    }
    EXPECT_EQ(Values(), "7 8 9/7 8 9/7 8 9");
}

TEST_F(WaveformFetchTest, AFailingFileIsToldAndReadAgainWhileTheOthersStay) {
    const auto noNumbers = [](const std::string& file, int line) {
        return "[stop] Download: Error processing " + file +
               ".  The file does not appear to contain numeric ASCII data, separated by white "
               "space." +
               Confirm + " | Invalid data at line " + std::to_string(line) + " (OK)";
    };
    IFile("x");
    EXPECT_EQ(Failure(), noNumbers("I-File", 1));
    IFile("1 2");
    QFile("3 x");
    Opened();
    EXPECT_EQ(Failure(), noNumbers("Q-File", 2));
    EXPECT_EQ(Loaded(), "I--");
    EXPECT_EQ(Opened(), 2);
    QFile("3 4");
    MarkerFile("");
    EXPECT_EQ(Failure(), noNumbers("marker file", 1));
    EXPECT_EQ(Opened(), 2) << "only what failed is read again";
    EXPECT_EQ(Loaded(), "IQ-");
    plan.fileType = FileType::LittleEndian;
    IFile("1");
    EXPECT_EQ(
        Failure(),
        "[stop] Download: The I-File (i.txt) is 1 bytes in length. | Binary KRV DAC files must "
        "always contain an even number of bytes." +
            std::string(Confirm) + " (OK)");
}

TEST_F(WaveformFetchTest, AFileThatCannotBeReadIsNamed) {
    const std::string start = "[stop] Download: The I-File (i.txt) could not be read. | ";
    IFile("1");
    desktop.Files.Entries["i.txt"].unreadable = true;
    EXPECT_EQ(Failure(), start + "Permission denied: i.txt (OK)");
    desktop.Files.Entries.erase("i.txt");
    EXPECT_EQ(Failure(), start + "File not found: i.txt (OK)");
    IFile("1 2 3");
    desktop.Files.Entries["i.txt"].failAfter = 2;
    EXPECT_EQ(Failure(), start + "Device I/O error (OK)");
    desktop.Files.Entries["i.txt"].failAfter = SIZE_MAX;
    desktop.Screen.Then([] { throw std::bad_alloc(); });
    EXPECT_EQ(Failure(),
              "[stop] Download: There is not enough memory for the data of the I-File (i.txt). "
              "(OK)");
    EXPECT_EQ(Loaded(), "---");
}

TEST_F(WaveformFetchTest, AMarkerFileMustBeNamedAndExist) {
    IFile("1 2");
    MarkerFile("1");
    plan.markerFile = "";
    EXPECT_EQ(Failure(), "[!] Download: No marker file name specified (OK)");
    plan.markerFile = "none.txt";
    EXPECT_EQ(Failure(), "[!] Download: Invalid marker file name (OK)");
    EXPECT_EQ(Loaded(), "I--");
}

TEST_F(WaveformFetchTest, WithoutAMarkerFileAPulseIsBuiltOverThePoints) {
    IFile("1 2 3 4");
    Pulse(" 1 ", "2");
    EXPECT_TRUE(Fetch());
    EXPECT_EQ(TextOf(data.markers), "0 1 1 0 0");
    EXPECT_EQ(Loaded(), "I--");

    MarkerFile("5 6");
    EXPECT_TRUE(Fetch());
    Pulse("0", "0");
    EXPECT_TRUE(Fetch());
    EXPECT_EQ(TextOf(data.markers), "0 0 0 0 0");
    plan.markersFromFile = true;
    EXPECT_TRUE(Fetch());
    EXPECT_EQ(TextOf(data.markers), "5 6") << "the pulse must not pass for the file";
}

TEST_F(WaveformFetchTest, MarkerFieldsBeyondSixteenBitsAreRefusedByName) {
    IFile("1 2");
    Pulse("32767", "32767");
    EXPECT_TRUE(Fetch());
    EXPECT_EQ(data.pulse.start, 32767);
    struct Case {
        const char* start;
        const char* length;
        const char* message;
    };
    // Internal values are sent without a look at these fields by the validation.
    for (const Case& each : std::vector<Case>{
             {"32768", "0",
              "Overflow:  The Event Marker Starting Point must not be greater than 32767."},
             {"0", "1e400",
              "Overflow:  The Event Marker Number of Points must not be greater than 32767."},
             {"", "0", "The Event Marker Starting Point is not numeric."},
             {"0", "-1", "The Event Marker Number of Points must be a non-negative integer."}}) {
        Pulse(each.start, each.length);
        EXPECT_EQ(Failure(), std::string("[!] Download: ") + each.message + " (OK)");
    }
    Pulse("2.5", "-0.5");
    EXPECT_TRUE(Fetch());
    EXPECT_EQ(data.pulse.start, 2);
    EXPECT_EQ(data.pulse.length, 0);
}

TEST_F(WaveformFetchTest, ARangeThatNowMeansAnotherSheetIsAskedAbout) {
    plan.source = SourceKind::Cells;
    plan.iSource = plan.qSource = "A1:A4";
    plan.useQ = true;
    plan.iSheet = plan.qSheet = {"Book1", "Sheet1"};
    EXPECT_TRUE(Fetch());
    EXPECT_EQ(Of("["), Lines{});
    plan.qSheet = {"Book1", "Sheet7"};
    desktop.MessageBoxes.Answers = {ports::MessageAnswer::No};
    EXPECT_EQ(Failure(),
              "[!] Download: The Data Range A1:A4 was checked on sheet Sheet7 of Book1.  Now it "
              "stands for cells on sheet Sheet1 of Book1. |  | Do you want to continue? (Yes/No)");
    desktop.MessageBoxes.Answers = {ports::MessageAnswer::Yes};
    EXPECT_TRUE(Fetch());
    plan.qSheet = {};
    EXPECT_TRUE(Fetch()) << "a spreadsheet that doesn't name its sheets";
}

TEST_F(WaveformFetchTest, RangesAreResolvedAndTheirCellsLeftAlone) {
    plan.source = SourceKind::Cells;
    plan.iSource = "A1:A10";
    plan.qSource = "B1:B8";
    plan.useQ = true;
    Pulse("1", "1");
    EXPECT_TRUE(Fetch());
    EXPECT_EQ(data.iRange.count, 10);
    EXPECT_EQ(data.qRange.count, 8);
    EXPECT_EQ(data.iRange.cells->Address(), "$A$1:$A$10");
    EXPECT_EQ(data.markers.Count(), 11);
    EXPECT_EQ(dialog.Label1[1].Caption.Get(), "Fetching Q-Range Data...");
    EXPECT_EQ(desktop.Files.OpenCount, 0);
    plan.iSource = "A1:A!";
    EXPECT_EQ(
        Failure(),
        "[stop] Download: Excel reports a syntax error in the Data Range specification. | Method "
        "'Range' of object '_Application' failed (OK)");
}

}  // namespace
}  // namespace krv::tests
