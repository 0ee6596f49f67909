#include "waveform/readers/WaveformFetch.h"

#include <memory>
#include <new>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/FakeExcel.h"
#include "tests/support/QuietAppConnection.h"
#include "tests/support/ScriptedDesktop.h"
#include "waveform/dialog/frmDataTransfer.h"
#include "waveform/readers/MarkerField.h"

namespace krv::tests {

using namespace waveform;
namespace {

using Texts = std::vector<std::string>;

class ExcelConnection final : public QuietAppConnection {
 public:
    explicit ExcelConnection(std::shared_ptr<ports::HostApplication> application)
        : m_application(std::move(application)) {}
    std::shared_ptr<ports::HostApplication> hostApp() override { return m_application; }

 private:
    std::shared_ptr<ports::HostApplication> m_application;
};

// The dialog as the validation leaves it: files chosen, markers from a pulse of no length.
class WaveformFetchTest : public ::testing::Test {
 protected:
    static constexpr const char* Confirm =
        " | Please confirm that the specified File Format is correct.";

    WaveformFetchTest() : Dialog(Desktop.Services()) {
        Dialog.AppConnection = std::make_shared<ExcelConnection>(Excel);
        Dialog.Load();
        Dialog.Caption = waveform::frmDataTransfer::Title;
        Dialog.cboFileTypeWF.Items = Texts{"ASCII", "Little", "Big"};
        Dialog.cboFileTypeWF.ListIndex = waveform::FileTypeIndex::Ascii;
        Dialog.optFileFolders.Value = true;
        Dialog.chkMarkerSource.Value = false;
        Dialog.TextMarkerStart.Text = "0";
        Dialog.TextMarkerLength.Text = "0";
        Overall().SetProgressBar(1, 0, 1000, 100);
    }

    // --- what the user has chosen ---------------------------------------------------------------
    void IFile(const std::string& content) { Name(Dialog.TextIFileName, "i.txt", content); }
    void QFile(const std::string& content) {
        Name(Dialog.TextQFileName, "q.txt", content);
        Dialog.Data.UseQData = true;
    }
    void MarkerFile(const std::string& content) {
        Dialog.chkMarkerSource.Value = true;
        Name(Dialog.TextMarker, "m.txt", content);
    }
    void Pulse(const std::string& start, const std::string& length) {
        Dialog.chkMarkerSource.Value = false;
        Dialog.TextMarkerStart.Text = start;
        Dialog.TextMarkerLength.Text = length;
    }
    void Type(int index) { Dialog.cboFileTypeWF.ListIndex = index; }

    // --- what happens ---------------------------------------------------------------------------
    bool Fetch() { return waveform::WaveformFetch(Dialog).Run(); }
    // The only message that a failing fetch shows.
    std::string Failure() {
        Desktop.MessageBoxes.Shown.clear();
        EXPECT_FALSE(Fetch());
        EXPECT_EQ(Desktop.MessageBoxes.Shown.size(), 1U);
        return Desktop.MessageBoxes.Shown.empty() ? "" : Desktop.MessageBoxes.Shown.front();
    }
    int Opened() {
        const int opened = Desktop.Files.OpenCount;
        Desktop.Files.OpenCount = 0;
        return opened;
    }
    static std::string Values(const SampleBuffer<double>& buffer) {
        std::string text;
        for (const double value : buffer.Span()) {
            text += (text.empty() ? "" : " ") + NumberToText(value);
        }
        return text;
    }
    [[nodiscard]] std::string Loaded() const {
        return std::string(Dialog.Data.IDataLoaded ? "I" : "-") +
               (Dialog.Data.QDataLoaded ? "Q" : "-") + (Dialog.Data.MarkerDataLoaded ? "M" : "-");
    }
    progress::frmCallback& Overall() { return Dialog.Callback1(); }

    ScriptedDesktop Desktop;
    std::shared_ptr<FakeExcel> Excel = std::make_shared<FakeExcel>();
    waveform::frmDataTransfer Dialog;

 private:
    void Name(forms::TextBox& box, const std::string& name, const std::string& content) {
        Desktop.Files.Put(name, content);
        box.Text = ' ' + name + ' ';
        Dialog.WatchFiles();
    }
};

TEST_F(WaveformFetchTest, reads_every_file_and_shows_its_count) {
    IFile("1 2 3");
    QFile("4\r\n5\r\n");
    MarkerFile("0 1 2 3");
    EXPECT_TRUE(Fetch());
    EXPECT_EQ(Values(Dialog.Data.IData), "1 2 3");
    EXPECT_EQ(Values(Dialog.Data.QData), "4 5");
    EXPECT_EQ(Values(Dialog.Data.MarkerData), "0 1 2 3");
    EXPECT_EQ(Dialog.Data.INumPoints, 3);
    EXPECT_EQ(Dialog.Data.QNumPoints, 2);
    EXPECT_EQ(Dialog.Data.MarkerNumPoints, 4);
    EXPECT_EQ(Dialog.textISize.Text.Get(), "3");
    EXPECT_EQ(Dialog.textQSize.Text.Get(), "2");
    EXPECT_EQ(Dialog.TextMarkerFileNumPoints.Text.Get(), "4");
    EXPECT_EQ(Loaded(), "IQM");
    EXPECT_EQ(Desktop.MessageBoxes.Shown, Texts{});
}

TEST_F(WaveformFetchTest, the_file_type_chooses_the_reader_for_all_three) {
    IFile("\x01\x02\xFF\xFF");
    QFile("\x03\x04");
    MarkerFile("\xFF\x02\x07\x07");
    Type(waveform::FileTypeIndex::LittleEndian);
    EXPECT_TRUE(Fetch());
    EXPECT_EQ(Values(Dialog.Data.IData) + '/' + Values(Dialog.Data.QData) + '/' +
                  Values(Dialog.Data.MarkerData),
              "513 -1/1027/255 2");
    IFile("\x01\x02\xFF\xFF");
    QFile("\x03\x04");
    Dialog.Data.IDataLoaded = Dialog.Data.QDataLoaded = Dialog.Data.MarkerDataLoaded = false;
    Type(waveform::FileTypeIndex::BigEndian);
    EXPECT_TRUE(Fetch());
    EXPECT_EQ(Values(Dialog.Data.IData) + '/' + Values(Dialog.Data.QData) + '/' +
                  Values(Dialog.Data.MarkerData),
              "258 65535/772/255 2");
}

TEST_F(WaveformFetchTest, unchanged_files_are_not_opened_again) {
    IFile("1 2");
    QFile("3 4");
    MarkerFile("0 0");
    EXPECT_TRUE(Fetch());
    EXPECT_EQ(Opened(), 3);
    EXPECT_TRUE(Fetch());
    EXPECT_EQ(Opened(), 0);
    Dialog.Data.UseQData = false;
    Desktop.Files.Entries["q.txt"].date = 9;
    EXPECT_TRUE(Fetch());
    EXPECT_EQ(Opened(), 0) << "a Q file that takes no part is not asked for its date";
    Desktop.Files.Entries.erase("i.txt");
    EXPECT_TRUE(Fetch());
    EXPECT_EQ(Opened(), 0) << "what was read stays when the file has gone";
}

TEST_F(WaveformFetchTest, one_changed_file_discards_everything_that_was_loaded) {
    IFile("1 2");
    QFile("3 4");
    MarkerFile("0 0");
    EXPECT_TRUE(Fetch());
    for (const char* changed : {"i.txt", "q.txt", "m.txt"}) {
        Opened();
        Desktop.Files.Entries[changed].content = "7 8 9";
        ++Desktop.Files.Entries[changed].date;
        EXPECT_TRUE(Fetch());
        EXPECT_EQ(Opened(), 3) << changed;
        EXPECT_EQ(Loaded(), "IQM");
    }
    EXPECT_EQ(Values(Dialog.Data.IData), "7 8 9");
    EXPECT_EQ(Dialog.textISize.Text.Get(), "3");
    EXPECT_EQ(Dialog.textQSize.Text.Get(), "3");
    EXPECT_EQ(Dialog.TextMarkerFileNumPoints.Text.Get(), "3");
}

TEST_F(WaveformFetchTest, a_failing_file_is_not_marked_loaded_and_the_others_stay) {
    IFile("1 2");
    QFile("3 x");
    EXPECT_EQ(Failure(),
              "[!] Download Waveform to KRV: Error processing Q-File.  The file does not appear to "
              "contain numeric ASCII data, separated by white space." +
                  std::string(Confirm) + " | Invalid data at line 2 (OK)");
    EXPECT_EQ(Loaded(), "I--");
    EXPECT_EQ(Opened(), 2);
    QFile("3 4");
    EXPECT_TRUE(Fetch());
    EXPECT_EQ(Opened(), 1) << "only what failed is read again";
    EXPECT_EQ(Loaded(), "IQ-");
}

TEST_F(WaveformFetchTest, tells_each_file_by_its_own_message) {
    IFile("x");
    EXPECT_EQ(Failure(),
              "[!] Download Waveform to KRV: Error processing I-File.  The file does not appear to "
              "contain numeric ASCII data, separated by white space." +
                  std::string(Confirm) + " | Invalid data at line 1 (OK)");
    IFile("1");
    MarkerFile("");
    EXPECT_EQ(Failure(),
              "[!] Download Waveform to KRV: Error processing marker file.  The file does not "
              "appear to contain numeric ASCII data, separated by white space." +
                  std::string(Confirm) + " | Invalid data at line 1 (OK)");
    Type(waveform::FileTypeIndex::LittleEndian);
    Dialog.Data.IDataLoaded = false;
    EXPECT_EQ(Failure(),
              "Download Waveform to KRV: The I-File (i.txt) is 1 bytes in length. | Binary KRV DAC "
              "files must always contain an even number of bytes." +
                  std::string(Confirm) + " (OK)");
    IFile("ab");
    Desktop.Files.Entries["i.txt"].reportedSize = 4;
    EXPECT_EQ(Failure(), "Download Waveform to KRV: Premature EOF reading I-File (OK)");
}

TEST_F(WaveformFetchTest, a_file_that_cannot_be_read_is_named) {
    IFile("1");
    Desktop.Files.Entries["i.txt"].unreadable = true;
    EXPECT_EQ(Failure(),
              "[stop] Download Waveform to KRV: The I-File (i.txt) could not be read. | Permission "
              "denied: i.txt (OK)");
    Desktop.Files.Entries.erase("i.txt");
    EXPECT_EQ(Failure(),
              "[stop] Download Waveform to KRV: The I-File (i.txt) could not be read. | File not "
              "found: i.txt (OK)");
    IFile("1 2 3");
    Desktop.Files.Entries["i.txt"].failAfter = 2;
    EXPECT_EQ(Failure(),
              "[stop] Download Waveform to KRV: The I-File (i.txt) could not be read. | Device I/O "
              "error (OK)");
    Desktop.Files.Entries["i.txt"].failAfter = SIZE_MAX;
    Desktop.Screen.Then([] { throw std::bad_alloc(); });
    EXPECT_EQ(Failure(),
              "[stop] Download Waveform to KRV: There is not enough memory for the data of the "
              "I-File (i.txt). (OK)");
    EXPECT_EQ(Loaded(), "---");
}

TEST_F(WaveformFetchTest, a_marker_file_must_be_named_and_exist) {
    IFile("1 2");
    MarkerFile("1");
    Dialog.TextMarker.Text = "  ";
    EXPECT_EQ(Failure(), "[!] Download Waveform to KRV: No marker file name specified (OK)");
    Dialog.TextMarker.Text = "none.txt";
    EXPECT_EQ(Failure(), "[!] Download Waveform to KRV: Invalid marker file name (OK)");
    EXPECT_EQ(Loaded(), "I--");
}

TEST_F(WaveformFetchTest, without_a_marker_file_a_pulse_is_built_over_the_points) {
    IFile("1 2 3 4");
    Pulse(" 1 ", "2");
    EXPECT_TRUE(Fetch());
    EXPECT_EQ(Values(Dialog.Data.MarkerData), "0 1 1 0 0");
    EXPECT_EQ(Loaded(), "I--");

    MarkerFile("5 6");
    EXPECT_TRUE(Fetch());
    Pulse("0", "0");
    EXPECT_TRUE(Fetch());
    EXPECT_EQ(Values(Dialog.Data.MarkerData), "0 0 0 0 0");
    Dialog.chkMarkerSource.Value = true;
    EXPECT_TRUE(Fetch());
    EXPECT_EQ(Values(Dialog.Data.MarkerData), "5 6") << "the pulse must not pass for the file";
}

TEST_F(WaveformFetchTest, marker_fields_beyond_sixteen_bits_are_refused_by_name) {
    IFile("1 2");
    const std::string title = "[!] Download Waveform to KRV: ";
    Pulse("32767", "32767");
    EXPECT_TRUE(Fetch());
    Pulse("32768", "0");
    EXPECT_EQ(Failure(), title +
                             "Overflow:  The Event Marker Starting Point must not be greater "
                             "than 32767. (OK)");
    Pulse("0", "1e400");
    EXPECT_EQ(Failure(), title +
                             "Overflow:  The Event Marker Number of Points must not be greater "
                             "than 32767. (OK)");
    // Not seen by the validation when internal values are sent.
    Pulse("", "0");
    EXPECT_EQ(Failure(), title + "The Event Marker Starting Point is not numeric. (OK)");
    Pulse("0", "-1");
    EXPECT_EQ(Failure(),
              title + "The Event Marker Number of Points must be a non-negative integer. (OK)");
    EXPECT_EQ(waveform::MarkerFieldValue("x", "2.5", {}), 2);
    EXPECT_EQ(waveform::MarkerFieldValue("x", "-0.5", {}), 0);
}

TEST_F(WaveformFetchTest, reading_moves_the_overall_bar_through_its_share) {
    IFile("1 2");
    EXPECT_TRUE(Fetch());
    EXPECT_EQ(Overall().ProgressBar1[0].Value, 500);
    EXPECT_EQ(Overall().Label1[1].Caption.Get(), "Reading I-File... (1 points)");

    Overall().SetProgressBar(1, 0, 1000, 100);
    QFile("x");
    EXPECT_FALSE(Fetch());
    EXPECT_EQ(Overall().ProgressBar1[0].Value, 300) << "the second of two slices was begun";
    Overall().SetProgressBar(2, 0, 10, 10);
    EXPECT_EQ(Overall().ProgressBar1[0].Value, 300) << "a failure has unlinked the bars";

    QFile("3");
    MarkerFile("0");
    Type(waveform::FileTypeIndex::Ascii);
    EXPECT_TRUE(Fetch());
    EXPECT_EQ(Overall().ProgressBar1[0].Value, 500);
}

TEST_F(WaveformFetchTest, a_cancel_ends_the_fetch_without_a_word) {
    std::string content;
    for (int line = 0; line < 5000; ++line) {
        content += "1\n";
    }
    IFile(content);
    MarkerFile("1");
    Desktop.Screen.Then([&] { Overall().CommandCancel.OnClick(); });
    EXPECT_FALSE(Fetch());
    EXPECT_EQ(Desktop.MessageBoxes.Shown, Texts{});
    EXPECT_EQ(Loaded(), "---");
    EXPECT_EQ(Dialog.Data.INumPoints, 0);
}

TEST_F(WaveformFetchTest, ranges_are_resolved_and_their_cells_left_alone) {
    Dialog.optSpreadsheet.Value = true;
    Dialog.textIRange.Text = " A1:A10 ";
    Dialog.Data.UseQData = true;
    Dialog.textQRange.Text = "B1:B8";
    Pulse("1", "1");
    EXPECT_TRUE(Fetch());
    EXPECT_EQ(Dialog.Data.IRangeCount, 10);
    EXPECT_EQ(Dialog.Data.QRangeCount, 8);
    EXPECT_EQ(Dialog.Data.IRange->Address(), "$A$1:$A$10");
    EXPECT_EQ(Dialog.Data.MarkerData.Size(), 11U);
    EXPECT_EQ(Overall().Label1[1].Caption.Get(), "Fetching Q-Range Data...");
    EXPECT_EQ(Desktop.Files.OpenCount, 0);
}

TEST_F(WaveformFetchTest, a_range_that_excel_refuses_is_told) {
    Dialog.optSpreadsheet.Value = true;
    Dialog.textIRange.Text = "A1:A!";
    const std::string message = Failure();
    EXPECT_EQ(
        message.rfind("[!] Download Waveform to KRV: Excel reports a syntax error in the Data "
                      "Range specification.",
                      0),
        0U)
        << message;
}

}  // namespace
}  // namespace krv::tests
