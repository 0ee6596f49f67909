#include "tests/waveform/DialogTest.h"

namespace krv::tests {

using namespace waveform;
namespace {

constexpr const char* NoSuchFile =
    "textISize 'Error' locked notab grey text:#0000A0 tip='File does not exist.'";
constexpr const char* NoCount =
    "textISize '' locked notab grey tip='Displays the number of I data points.'";

class FileWatchTest : public DialogTest {
 protected:
    // As a run leaves it that has read the I file.
    void MarkIFileRead(const std::string& name, std::int32_t points) {
        m_dialog.WatchFiles();
        m_dialog.Data.i = {.values = SampleBuffer<double>(static_cast<std::size_t>(points)),
                           .source = name,
                           .date = m_desktop.Files.DateLastModified(name),
                           .loaded = true};
        std::get<SampleBuffer<double>>(m_dialog.Data.i.values)
            .Resize(static_cast<std::size_t>(points));
        m_dialog.textISize.Text = std::to_string(points);
    }
};

TEST_F(FileWatchTest, WaitsAQuarterOfASecondAfterTheLastKey) {
    ShowInExcel();
    Run({
        {"type TextIFileName a", {"Timer1 every 250 ms"}},
        {"wait 249", {NoCount}},
        {"type TextIFileName ab", {NoCount}},
        {"wait 249", {NoCount}},
        {"wait 1", {NoSuchFile, "Timer1 stopped"}},
        // The next key brings the normal colour back, the next check the rest.
        {"type TextIFileName abc", {"textISize 'Error' locked notab grey"}},
        {"put abc", {}},
        {"wait 250", {NoCount}},
        {"type TextIFileName  abc  ", {}},
        {"wait 250", {NoCount}},
        // As copied from a file manager.
        {"type TextIFileName \"abc\"", {}},
        {"wait 250", {NoCount, "TextDestinationName 'abc' locked notab grey"}},
        {"type TextIFileName", {}},
        {"wait 250", {NoCount}},
    });
}

TEST_F(FileWatchTest, MarksEachChannelsMissingFile) {
    ShowInExcel();
    Run({
        {"click checkAutoFindQ", {}},
        {"click chkMarkerSource", {}},
        {"type TextQFileName q.txt", {}},
        {"type TextMarker m.txt", {"Timer1 every 250 ms"}},
        {"wait 250",
         {NoCount, "textQSize 'Error' locked notab grey text:#0000A0 tip='File does not exist.'",
          "TextMarkerFileNumPoints 'Error' locked notab grey text:#0000A0 tip='File does not "
          "exist.'"}},
        {"type TextMarker", {"TextMarkerFileNumPoints 'Error' locked notab grey"}},
        {"wait 250", {"TextMarkerFileNumPoints '' locked notab grey"}},
    });
}

TEST_F(FileWatchTest, KeepsWhatWasReadWhileNameAndDateStayTheSame) {
    m_desktop.Files.Put("a.txt", "1");
    m_desktop.Files.Put("b.txt", "1");
    ShowInExcel();
    m_dialog.TextIFileName.Text = "a.txt";
    MarkIFileRead("a.txt", 120);
    Run({
        {"type TextIFileName  a.txt ", {}},
        {"wait 250", {"textISize '120' locked notab grey"}},
        // Away and back: the data in memory is still the file's.
        {"delete a.txt", {}},
        {"type TextIFileName a.txt", {}},
        {"wait 250", {NoSuchFile}},
        {"put a.txt", {}},
        {"type TextIFileName a.txt ", {}},
        {"wait 250", {"textISize '120' locked notab grey"}},
        {"touch a.txt", {}},
        {"type TextIFileName a.txt", {}},
        {"wait 250", {NoCount}},
    });
    EXPECT_FALSE(m_dialog.Data.i.loaded);
    MarkIFileRead("a.txt", 120);
    Run({{"type TextIFileName b.txt", {"textISize '120' locked notab grey"}},
         {"wait 250", {NoCount}}});
    EXPECT_FALSE(m_dialog.Data.i.loaded);
    EXPECT_EQ(m_dialog.Data.i.Numbers()->Capacity(), 0U);
}

TEST_F(FileWatchTest, ForgetsAllFilesWhenTheFileTypeChanges) {
    m_desktop.Files.Put("a.bin", "1");
    ShowInExcel();
    m_dialog.TextIFileName.Text = "a.bin";
    MarkIFileRead("a.bin", 60);
    m_dialog.Data.q.loaded = m_dialog.Data.markers.loaded = true;
    m_dialog.textQSize.Text = m_dialog.TextMarkerFileNumPoints.Text = "60";
    Run({
        {"select cboWaveformType 1", {"textISize '60' locked notab grey"}},
        {"select cboFileTypeWF 1",
         {NoCount, "textQSize '' locked notab grey",
          "TextMarkerFileNumPoints '' locked notab grey"}},
    });
    EXPECT_FALSE(m_dialog.Data.i.loaded || m_dialog.Data.q.loaded || m_dialog.Data.markers.loaded);
    // A scalable waveform is text: going back changes the file type, too.
    MarkIFileRead("a.bin", 60);
    Run({{"select cboWaveformType 0", {NoCount}}});
}

TEST_F(FileWatchTest, PutsTheChosenPathIntoItsBox) {
    ShowInExcel();
    Run({
        {"click checkAutoFindQ", {}},
        {"click chkMarkerSource", {}},
        {"choose C:\\i.txt", {}},
        {"click cmdIBrowse",
         {"TextIFileName 'C:\\i.txt'", NoSuchFile, "TextDestinationName 'i' locked notab grey",
          "Timer1 stopped"}},
        {"choose C:\\q.txt", {}},
        {"click cmdQBrowse", {"TextQFileName 'C:\\q.txt'"}},
        {"choose C:\\m.txt", {}},
        {"click cmdMarkerBrowse", {"TextMarker 'C:\\m.txt'"}},
        {"choose", {}},
        {"type TextIFileName \"C:\\i.txt\"", {}},
        {"click cmdIBrowse", {}},
    });
    std::vector<std::string> titles;
    for (const auto& request : m_desktop.FileDialogs.Requests) {
        titles.push_back(request.title);
        EXPECT_EQ(request.filter,
                  "ASCII (*.asc;*.txt)|*.asc;*.txt|Binary (*.bin)|*.bin|All files (*.*)|*.*");
    }
    EXPECT_EQ(titles, (std::vector<std::string>{
                          "Browse for I - File Name", "Browse for Q - File Name",
                          "Browse for Marker File Name", "Browse for I - File Name"}));
    EXPECT_EQ(m_desktop.FileDialogs.Requests.back().fileName, "C:\\i.txt");
}

}  // namespace
}  // namespace krv::tests
