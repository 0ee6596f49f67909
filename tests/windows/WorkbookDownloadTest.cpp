// Downloads as users make them: from a workbook's cells and from files, through the dialogs, into a
// generator over TCP, whose memory is compared with what should have arrived.
#include <string>

#include "tests/windows/WorkbookSession.h"

namespace krv::tests {

using namespace bench;
using namespace windows;
namespace {

constexpr std::size_t Points = 200;
// Beyond the peak of one channel alone, so that both must have been scaled alike.
constexpr double Peak = 0.75;

Wave Tone(double amplitude, double phase) {
    Wave wave;
    for (std::size_t point = 0; point < Points; ++point) {
        // Of few digits, so that cells and files hold exactly the same numbers.
        wave.push_back(
            std::nearbyint(amplitude * std::cos(0.1 * static_cast<double>(point) + phase) * 4096) /
            4096);
    }
    return wave;
}

class WorkbookDownload : public WorkbookSession {
 protected:
    // Columns A, B and C: both channels of a tone, and markers.
    WorkbookDownload() {
        i = Tone(Peak, 0);
        q = Tone(0.5, 1);
        for (std::size_t point = 0; point < Points; ++point) {
            markers.push_back(static_cast<double>(point % 4));
        }
    }
    static std::string Column(char name) {
        return std::string(1, name) + "1:" + name + std::to_string(Points);
    }
    void WriteFile(const std::string& name, const Wave& wave) const {
        std::ofstream file(PathOf(name));
        file.precision(17);
        for (const double value : wave) {
            file << value << '\n';
        }
    }
    [[nodiscard]] std::string FileName(const std::string& name) const {
        return PathOf(name).string();
    }

    Wave i;
    Wave q;
    Wave markers;
};

TEST_F(WorkbookDownload, ArrivesInAGeneratorOfTheNewFamily) {
    StartGenerator("M7718C");
    OpenBook({i, q, markers});
    Connect();
    const Codes expected = InTurn(CodesOf(i, Peak, 32767.499, 0), CodesOf(q, Peak, 32767.499, 0));

    // The one range typed in, the other taken from the selection.
    const bench::UserWindow dialog = OpenDownloadOfCells(Column('A'), "");
    Book().Part("NameBox").Type(Column('B'));
    Book().Press(VK_RETURN);
    dialog.Part("CommandCaptureSelectionQ").Click();
    dialog.Part("textQRange").Expect("$B$1:$B$200");
    dialog.Part("textQNumberPoints").Expect("200");
    dialog.Part("TextMarkerStart").Type("10");
    dialog.Part("TextMarkerLength").Type("5");
    DownloadAs(dialog, "CELLS");
    EXPECT_EQ(Confirm(Complete), Complete);
    EXPECT_EQ(Stored("CELLS", "iq"), expected);
    Codes pulse(Points, 0);
    std::fill_n(pulse.begin() + 10, 5, std::int16_t{1});
    EXPECT_EQ(Stored("CELLS", "markers"), pulse);

    WriteFile("toneI.txt", i);
    WriteFile("toneQ.txt", q);
    WriteFile("toneMarker.txt", markers);
    dialog.Part("optFileFoldersSS").Click();
    dialog.Part("TextIFileName").Type(FileName("toneI.txt"));
    dialog.Part("TextQFileName").Expect(FileName("toneQ.txt"));
    dialog.Part("chkMarkerSource").Tick(true);
    dialog.Part("checkAutoFindMarker").Tick(true);
    dialog.Part("TextMarker").Expect(FileName("toneMarker.txt"));
    DownloadAs(dialog, "FILES");
    EXPECT_EQ(Confirm(Complete), Complete);
    EXPECT_EQ(Stored("FILES", "iq"), expected);
    EXPECT_EQ(Stored("FILES", "markers"), CodesOf(markers, 1, 1, 0));
    dialog.Part("textQSize").Expect("200");
    dialog.Part("TextMarkerFileNumPoints").Expect("200");
}

TEST_F(WorkbookDownload, ArrivesInAGeneratorOfTheOldFamily) {
    StartGenerator("M771XB");
    OpenBook({i, q, markers});
    Connect();
    // Half of full scale, I and Q apart, zero in the middle of 14 bits.
    const bench::UserWindow dialog = OpenDownloadOfCells(Column('A'), Column('B'));
    dialog.Part("TextScaleFactor").Type("50");
    DownloadAs(dialog, "HALF");
    EXPECT_EQ(Confirm(Complete), Complete);
    EXPECT_EQ(Stored("HALF", "i"), CodesOf(i, Peak, 8191.499 / 2, 8192));
    EXPECT_EQ(Stored("HALF", "q"), CodesOf(q, Peak, 8191.499 / 2, 8192));

    // The same cells again, validated only, leave the generator as it is.
    dialog.Part("TextDestinationName").Type("NOT_SENT");
    dialog.Part("CommandValidate").Click();
    EXPECT_EQ(Confirm("Estimated download time"),
              "Estimated download time, assuming\nLAN connection at 87500 bytes per second:\n"
              "3 seconds.");
    EXPECT_EQ(Stored("NOT_SENT", "i"), Codes{});
}

}  // namespace
}  // namespace krv::tests
