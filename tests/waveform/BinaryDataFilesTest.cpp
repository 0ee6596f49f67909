#include "waveform/readers/BinaryDataFiles.h"

#include <string>
#include <vector>

#include "tests/waveform/ReaderFixture.h"

namespace krv::tests {

using namespace waveform;
namespace {

using namespace std::string_literals;

class BinaryDataFilesTest : public ReaderFixture {
 protected:
    std::string ReadLittle() {
        return Outcome(
            [&] { return ReadBinaryDacFile(File, SampleFormat::LittleEndianSigned, Services()); });
    }
    std::string ReadBig() {
        return Outcome(
            [&] { return ReadBinaryDacFile(File, SampleFormat::BigEndianUnsigned, Services()); });
    }
    std::string ReadMarkers() {
        return Outcome([&] { return ReadBinaryMarkerFile(File, Services()); });
    }
    // A double of a file that has a size but holds nothing.
    void PutSize(std::int64_t bytes) { Files.Put("data", "").reportedSize = bytes; }
};

TEST_F(BinaryDataFilesTest, LittleEndianSamplesAreSignedAndBigEndianOnesAreNot) {
    for (const std::size_t blockBytes : {2U, 6U, 262144U}) {
        BlockBytes = blockBytes;
        Files.Put("data", "\xFF\xFF\x34\x12\x00\x80\xFF\x7F\x01\x00"s);
        EXPECT_EQ(ReadLittle(), "-1 4660 -32768 32767 1");
        Files.Put("data", "\xFF\xFF\x12\x34\x80\x00\x7F\xFF\x00\x01"s);
        EXPECT_EQ(ReadBig(), "65535 4660 32768 32767 1");
    }
    Files.Put("data", "");
    EXPECT_EQ(ReadLittle(), "");
}

TEST_F(BinaryDataFilesTest, MarkersAreTheBytesOfTheFirstHalf) {
    Files.Put("data", "\x00\x01\x0F\x80\xFF\x07zzzzzz"s);
    BlockBytes = 4;
    EXPECT_EQ(ReadMarkers(), "0 1 15 128 255 7");
}

TEST_F(BinaryDataFilesTest, AnOddSizeIsRefused) {
    Files.Put("data", std::string(1001, 'x'));
    const std::string refusal =
        " (data) is 1001 bytes in length. | Binary KRV DAC files must always contain an even "
        "number of bytes. | Please confirm that the specified File Format is correct.";
    EXPECT_EQ(ReadLittle(), "error 321: The I-File" + refusal);
    File.label = "Marker File";
    EXPECT_EQ(ReadMarkers(), "error 321: The Marker File" + refusal);
    EXPECT_EQ(Files.OpenCount, 0);
    EXPECT_TRUE(Progress.Messages.empty());
}

TEST_F(BinaryDataFilesTest, FilesOfOtherProgramsAreNoCodes) {
    const std::pair<std::string, const char*> cases[] = {
        {"RIFF\x24\0\0\0WAVEfmt "s, "a WAV file"},
        {"\x93NUMPY\x01\0"s, "a NumPy file"},
        {"MATLAB 5.0 MAT-file" + std::string(107, ' ') + "IM", "a MATLAB file"},
        {"PK\x03\x04"s, "a ZIP archive"},
        {"PK\x05\x06"s + std::string(18, '\0'), "an empty ZIP archive"},
        {"RIFX\0\0\0\x24WAVEfmt "s, "a WAV file with the high byte first"},
        {"\x1F\x8B\x08\x08\0\0"s, "a gzip archive"},
        {"\x89HDF\r\n\x1A\n"s, "an HDF5 file"},
        {"%PDF-1.7", "a PDF document"}};
    for (const auto& [content, look] : cases) {
        Files.Put("data", content);
        const std::string refusal =
            std::string("error 321: The I-File (data) looks like ") + look + ". | Binary KRV DAC ";
        EXPECT_EQ(ReadBig().substr(0, refusal.size()), refusal);
        EXPECT_EQ(ReadMarkers(), ReadLittle());
    }
    Files.Put("data", "RIFFRIFFRIFF");
    EXPECT_EQ(ReadLittle(), "18770 17990 18770 17990 18770 17990");
}

TEST_F(BinaryDataFilesTest, MoreThan64MegaPointsAreRefused) {
    const std::string refusal =
        "error 321: The I-File (data) appears to be 67108865 points in length. | This exceeds the "
        "maximum number of points supported. | Please confirm that the specified File Format is "
        "correct.";
    PutSize(134217730);
    EXPECT_EQ(ReadLittle(), refusal);
    EXPECT_EQ(ReadMarkers(), refusal);
    EXPECT_EQ(Files.OpenCount, 0);
    PutSize(134217728);
    EXPECT_EQ(ReadBig(), "error 62: Premature EOF reading I-File");
    EXPECT_EQ(Progress.Bar.front(), "0/134217728");
}

TEST_F(BinaryDataFilesTest, ShowsHowFarItIsAndCanBeCancelled) {
    Files.Put("data", std::string(40, 'x'), 5);
    BlockBytes = 16;
    ReadBig();
    EXPECT_EQ(Progress.Messages, std::vector<std::string>{"Reading I-File..."});
    EXPECT_EQ(Progress.Bar, (std::vector<std::string>{"0/40", "16/40", "32/40", "40/40"}));
    Progress.CancelAt = Progress.Questions + 2;
    EXPECT_EQ(ReadLittle(), "error 1001: Cancel Pressed");
}

TEST_F(BinaryDataFilesTest, AFileThatEndsEarlyFailsOrChangesIsNotTaken) {
    Files.Put("data", std::string(100, 'x')).reportedSize = 102;
    EXPECT_EQ(ReadLittle(), "error 62: Premature EOF reading I-File");
    File.label = "Marker File";
    Files.Entries["data"].reportedSize = 202;
    EXPECT_EQ(ReadMarkers(), "error 62: Premature EOF reading Marker File");
    Files.Entries["data"].reportedSize = 200;
    EXPECT_EQ(ReadMarkers().substr(0, 4), "120 ");

    BlockBytes = 10;
    Files.Put("data", std::string(100, 'x')).failAfter = 50;
    EXPECT_EQ(ReadLittle().substr(0, 9), "error 57:");
    Files.Put("data", std::string(100, 'x'));
    Progress.OnQuestion = [&] { ++Files.Entries["data"].date; };
    EXPECT_EQ(ReadLittle(),
              "error 75: The file was changed while it was being read.  Please try again.");
}

}  // namespace
}  // namespace krv::tests
