// One user's day, as the example sessions tell it: from the first connection to the document that
// is opened again. The sessions hold what is seen; here is what must have come of it, in the
// generator and in the files.
#include <algorithm>
#include <map>

#include "bench/book/Workbook.h"
#include "bench/document/Document.h"
#include "bench/document/windows/PictureWindow.h"
#include "bench/session/windows/Session.h"
#include "bench/shared/windows/ShownPicture.h"
#include "common/MemoryPropertyBag.h"
#include "tests/windows/WorkbookSession.h"

namespace krv::tests {

using namespace bench;
using namespace windows;
namespace {

using bench::DocumentPicture;

constexpr double FullScale = 32767.499;

class WholeSession : public WorkbookSession {
 protected:
    WholeSession() {
        for (const auto& entry : std::filesystem::directory_iterator(Examples())) {
            std::filesystem::copy_file(entry.path(), PathOf(entry.path().filename().string()));
        }
        i = ReadWave("sineI.txt");
        q = ReadWave("sineQ.txt");
        std::ofstream cells(PathOf("wave.csv"));
        cells.precision(17);
        cells << "I,Q\n";
        for (std::size_t point = 0; point < i.size(); ++point) {
            cells << i[point] << ',' << q[point] << '\n';
        }
    }

    void Start(const std::wstring& program, const std::wstring& windowClass,
               const std::string& file) {
        const std::wstring name = file.empty() ? L"" : L"\"" + PathOf(file).wstring() + L"\"";
        m_program.emplace(program, windowClass, name + L" --screenshot-ready");
    }
    void Play(const std::string& name) const {
        std::ifstream file(Examples() / (name + ".session"));
        const std::string text{std::istreambuf_iterator<char>(file), {}};
        bench::Session session("", [](const std::string&) {});
        session.Run(
            bench::ReadSession(text, {{"ADDRESS", m_generator->Address()},
                                      {"FOLDER", PathOf("wave.csv").parent_path().string()}}));
    }
    // The session has closed its window.
    void ExpectEnded() {
        EXPECT_EQ(m_program->ExitCode(), 0U);
        m_program.reset();
    }
    [[nodiscard]] Wave ReadWave(const std::string& name) const {
        std::ifstream file(PathOf(name));
        return {std::istream_iterator<double>(file), {}};
    }
    // Both channels at a scale; 1 is full scale.
    [[nodiscard]] Codes Tone(double scale) const {
        return InTurn(CodesOf(i, 1, FullScale * scale, 0), CodesOf(q, 1, FullScale * scale, 0));
    }
    static std::map<std::string, Value> Properties(const std::optional<std::string>& contents) {
        MemoryPropertyBag bag;
        if (contents) {
            bag.SetContents(std::as_bytes(std::span(*contents)));
        }
        return {bag.Entries().begin(), bag.Entries().end()};
    }
    // The display's picture, in points at 96 pixels an inch.
    static void ExpectDisplay(const std::vector<DocumentPicture>& pictures) {
        ASSERT_EQ(pictures.size(), 1U);
        EXPECT_NEAR(pictures.front().size.width, 480, 0.1);
        EXPECT_NEAR(pictures.front().size.height, 240, 0.1);
    }

    const std::string SettingsQuery = "FREQ?;:POW?;:OUTP?;:ARB:SEL?;STAT?";
    Wave i;
    Wave q;

 private:
    static std::filesystem::path Examples() {
        return std::filesystem::path(KRV_SOURCE_DIR) / "examples";
    }
};

TEST_F(WholeSession, LeavesWhatItShouldInTheGeneratorAndInTheFiles) {
    StartGenerator("M7718C", {"bandwidth=2500"});
    Start(L"krvbook.exe", L"KrvBook", "wave.csv");
    Play("first-download");
    EXPECT_EQ(Stored("TONE_CELLS", "iq"), Tone(1));
    EXPECT_EQ(Stored("TONE_FILES", "iq"), Tone(1));
    EXPECT_EQ(Stored("TONE_FILES", "markers"), CodesOf(ReadWave("sineMarker.txt"), 1, 1, 0));
    EXPECT_EQ(Ask("ARB:SIZE? \"TONE_FILES\";:SYST:ERR?"), "2000,0,1000;0,\"No error\"");

    const std::string settings = "2.400000000E+09;-3.000000000E+00;1;\"TONE_FILES\";1";
    EXPECT_EQ(
        Ask("FREQ 2.4 GHz;:POW -3;:ARB:SEL \"TONE_FILES\";STAT ON;:OUTP ON;:" + SettingsQuery),
        settings);
    Play("capture-settings");
    EXPECT_NE(Ask("*RST;:" + SettingsQuery), settings);
    Play("restore-settings");
    EXPECT_EQ(Ask(SettingsQuery), settings);

    Play("screen-image");
    ExpectEnded();
    EXPECT_NEAR(bench::ShownPicture(Content("display.gif")).Width(), 480, 0.1);
    const auto book = bench::Workbook::Load(PathOf("tone.krvbook").string(), [](auto) {});
    ExpectDisplay(book->Pictures());
    EXPECT_EQ(book->Pictures().front().left, 3 * bench::CellSize::ColumnWidth);
    EXPECT_EQ(book->Pictures().front().top, 2 * bench::CellSize::RowHeight);
    auto kept = Properties(book->ControlProperties());
    EXPECT_EQ(kept["DataCWritten"], Value(std::int32_t{1}));
    EXPECT_EQ(kept["ioAddress"], Value(m_generator->Address()));

    EXPECT_EQ(Ask("*RST;:DIAG:FAUL \"error=-240,Hardware error\";:ARB:STAT?"), "0");
    Start(L"krvbook.exe", L"KrvBook", "tone.krvbook");
    Play("reopened-workbook");
    ExpectEnded();
    EXPECT_EQ(Stored("TONE_AGAIN", "iq"), Tone(-0.5));
    EXPECT_EQ(Ask(SettingsQuery), settings);

    Start(L"krvdoc.exe", L"KrvDoc", "");
    Play("document");
    ExpectEnded();
    EXPECT_EQ(Stored("TONE_DOCUMENT", "iq"), Tone(1));
    bench::ShownPictureMeter meter;
    const auto report = bench::Document::Load(PathOf("report.krvdoc").string(), meter, [](auto) {});
    EXPECT_EQ(report->Text(), "The tone as it was downloaded:");
    ExpectDisplay(report->Pictures());
    kept = Properties(report->ControlProperties());
    EXPECT_EQ(kept["DataCWritten"], Value(std::int32_t{2}));
    EXPECT_EQ(kept["ioAddress"], Value(m_generator->Address()));

    Start(L"krvdoc.exe", L"KrvDoc", "report.krvdoc");
    Play("reopened-document");
    ExpectEnded();
    EXPECT_EQ(Ask("SYST:REM?;:SYST:ERR?"), "0;0,\"No error\"");
}

}  // namespace
}  // namespace krv::tests
