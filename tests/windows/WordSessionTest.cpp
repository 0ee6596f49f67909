// A user of krvdoc at work with the toolbar: what Word's kind of host offers, and what it doesn't.
#include <algorithm>

#include "tests/windows/WorkbookSession.h"

namespace krv::tests {

using namespace bench;
using namespace windows;
namespace {

using bench::UserWindow;

class WordSession : public WorkbookSession {
 protected:
    // Without its document saved, it ends with the fixture.
    void Start() {
        StartGenerator("M7718C");
        m_program.emplace(L"krvdoc.exe", L"KrvDoc", L" --screenshot-ready");
    }
    void TearDown() override {
        if (m_program) {
            Page().Close();
            EXPECT_EQ(m_program->ExitCode(), 0U);
            m_program.reset();
        }
    }
    [[nodiscard]] UserWindow Page() const {
        return bench::WindowOf("Document1 - krvdoc", Process());
    }
    void ConnectPage() {
        Page().Part("Connect").Click();
        const UserWindow dialog = bench::WindowOf(ConnectCaption, Process());
        dialog.Part("Edit").Type(m_generator->Address());
        dialog.Part("Connect").Click();
        dialog.Part("Connected to M7718C at " + m_generator->Address() + ".");
        dialog.Part("Close").Click();
        dialog.ExpectGone();
    }
    void WriteWave(const std::string& name, const Wave& wave) const {
        std::ofstream file(PathOf(name));
        for (const double value : wave) {
            file << value << '\n';
        }
    }
};

TEST_F(WordSession, DownloadsFilesAndOffersNoCells) {
    Start();
    ConnectPage();
    Wave wave(100);
    for (std::size_t point = 0; point < wave.size(); ++point) {
        wave[point] = static_cast<double>(point) / 99;
    }
    WriteWave("rampI.txt", wave);
    std::reverse(wave.begin(), wave.end());
    WriteWave("rampQ.txt", wave);

    Page().Part("PutData").Click();
    const UserWindow dialog = Download();
    EXPECT_FALSE(dialog.HasPart("textIRange"));
    EXPECT_FALSE(dialog.Part("optSpreadsheet").TakesInput());
    EXPECT_FALSE(dialog.Part("optFileFolders").TakesInput());
    dialog.Part("TextIFileName").Type(PathOf("rampI.txt").string());
    dialog.Part("TextQFileName").Expect(PathOf("rampQ.txt").string());
    DownloadAs(dialog, "RAMP");
    Confirm(Complete);
    dialog.Part("cmdCancel").Click();
    dialog.ExpectGone();
    const Codes codes = Stored("RAMP", "iq");
    ASSERT_EQ(codes.size(), 200U);
    EXPECT_EQ(codes.front(), 0);
    EXPECT_EQ(codes[1], 32767);
    EXPECT_EQ(codes.back(), 0);
}

TEST_F(WordSession, BringsSettingsBack) {
    Start();
    ConnectPage();
    EXPECT_EQ(Ask("FREQ 2GHz;POW -7;:OUTP ON;:SYST:ERR?"), "0,\"No error\"");
    Page().Part("Settings").Click();
    const UserWindow dialog = bench::WindowOf("Capture/Restore Settings", Process());
    dialog.Part("Edit").Type("carrier");
    dialog.Part("Capture").Click();
    dialog.Part("Captured \"carrier\".");
    EXPECT_EQ(Ask("*RST;:OUTP?"), "0");
    dialog.Part("Restore").Click();
    EXPECT_TRUE(bench::WaitUntil([&] { return Ask("OUTP?") == "1"; }));
    dialog.Part("Close").Click();
    dialog.ExpectGone();
    EXPECT_EQ(Ask("FREQ?;POW?;:OUTP?;:SYST:ERR?"),
              "2.000000000E+09;-7.000000000E+00;1;0,\"No error\"");
    Page()
        .Part("Connected")
        .Expect("Connected to M7718C Signal Generator at " + m_generator->Address());
}

}  // namespace
}  // namespace krv::tests
