// The second look at what would be sent, from the download dialog.
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "common/forms/Controls.h"
#include "tests/waveform/DialogTest.h"
#include "waveform/dialog/WaveformPreview.h"

namespace krv::tests {
namespace {

// Notes each show as "SOURCE for WINDOW: FIRST CODES".
class NotedPreview final : public waveform::WaveformPreview {
 public:
    explicit NotedPreview(std::vector<std::string>& shown) : m_shown(shown) {}

    void Show(const waveform::DacCodes& codes, const std::string& source,
              ports::WindowHandle owner) override {
        const auto i = codes.i.Span();
        m_shown.push_back(source + " for " + std::to_string(owner) + ": " + std::to_string(i[0]) +
                          " " + std::to_string(i[1]) + " of " + std::to_string(i.size()));
    }

 private:
    std::vector<std::string>& m_shown;
};

class DialogPreview : public DialogTest {
 protected:
    std::vector<std::string> m_shown;
    waveform::frmDataTransfer m_form{m_desktop.Services(), &m_running,
                                     std::make_unique<NotedPreview>(m_shown)};

    DialogPreview() {
        m_form.AppConnection = m_host;
        m_form.instrServer = m_server;
        m_form.applicationHWND = 77;
        m_form.checkAutoFindQ.Value = false;
        m_form.ShowModeless();
        m_desktop.Screen.Activate(m_form);
    }
    // The boxes that a click on the button shows.
    std::string BoxesOf(forms::CommandButton& button) {
        m_desktop.Screen.Click(button);
        return m_desktop.MessageBoxes.TakeShown();
    }
    static std::string Values(int count) {
        std::string text;
        for (int k = 0; k < count; ++k) {
            text += k % 2 == 0 ? "0.5\r\n" : "-0.25\r\n";
        }
        return text;
    }
};

TEST_F(DialogPreview, TheButtonComesBehindAllOthersAndOnlyWithAPreview) {
    std::string without;
    std::string with;
    for (const forms::Control* control : m_dialog.Controls()) {
        without += control->Name() + ' ';
    }
    for (const forms::Control* control : m_form.Controls()) {
        with += control->Name() + ' ';
    }
    EXPECT_EQ(with, without + "cmdPreview ");
}

TEST_F(DialogPreview, ShowsTheCodesThatADownloadWouldSend) {
    m_desktop.Files.Put("C:\\data\\wave.txt", Values(120));
    m_form.TextIFileName.Text = "C:\\data\\wave.txt";
    EXPECT_EQ(BoxesOf(*m_form.cmdPreview), "");
    EXPECT_EQ(m_shown, std::vector<std::string>{"wave.txt for 77: 32767 -16384 of 120"});
    // Nothing is sent, nothing is estimated, and the next download reads nothing anew.
    EXPECT_TRUE(m_form.Data.i.loaded);
    for (const std::string& call : m_server->Calls) {
        EXPECT_EQ(call.find("Download"), std::string::npos) << call;
    }

    // The file has changed since.
    m_desktop.Files.Put("C:\\data\\wave.txt", "1\r\n" + Values(121), 2);
    EXPECT_EQ(BoxesOf(*m_form.cmdPreview), "");
    EXPECT_EQ(m_shown.back(), "wave.txt for 77: 32767 16384 of 122");
}

TEST_F(DialogPreview, SaysWhatValidatingSaysAndThenShowsNothing) {
    std::int64_t date = 0;
    for (const std::string& content : {std::string(), Values(4), std::string("1 x 2")}) {
        m_form.TextIFileName.Text = content.empty() ? "" : "wave.txt";
        m_desktop.Files.Put("wave.txt", content, ++date);
        const std::string validated = BoxesOf(m_form.CommandValidate);
        EXPECT_NE(validated, "");
        EXPECT_EQ(BoxesOf(*m_form.cmdPreview), validated);
    }
    m_desktop.Files.Put("wave.txt", Values(120), ++date);
    m_form.TextScaleFactor.Text = "150";
    const std::string validated = BoxesOf(m_form.CommandValidate);
    EXPECT_EQ(BoxesOf(*m_form.cmdPreview), validated);
    EXPECT_TRUE(m_shown.empty());
}

}  // namespace
}  // namespace krv::tests
