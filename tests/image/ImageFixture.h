// ImageFixture: the screen-image command between doubles of host, server and desktop, with one log
// for what they are asked.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "image/ScreenImageTransfer.h"
#include "tests/support/FakeExcelHost.h"
#include "tests/support/FakeSuite.h"
#include "tests/support/FakeWordHost.h"
#include "tests/support/ScriptedDesktop.h"

namespace krv::tests {

class FakeResolution final : public ports::ScreenResolution {
 public:
    ports::PixelsPerInch Pixels{96, 96};
    ports::DeviceContext Asked = 0;
    ports::PixelsPerInch Of(ports::DeviceContext context) override {
        Asked = context;
        return Pixels;
    }
};

class PictureProcess final : public ports::Process {
 public:
    std::uint32_t Id() override { return 1234; }
    std::string TemporaryFolder() override { return "C:\\TEMP\\"; }
};

class LoggingRemoval final : public ports::FileRemoval {
 public:
    explicit LoggingRemoval(CallLog& log) : m_log(log) {}
    void ClearAttributes(const std::string& path) override { m_log.Note("normal " + path); }
    void Delete(const std::string& path) override { m_log.Note("delete " + path); }

 private:
    CallLog& m_log;
};

class ImageTest : public ::testing::Test {
 protected:
    CallLog log;
    ScriptedDesktop desk;
    FakeSuite suite{log};
    std::shared_ptr<FakeExcelHost> excel = std::make_shared<FakeExcelHost>(log);
    FakeResolution resolution;
    PictureProcess process;
    LoggingRemoval removal{log};
    image::ScreenImageTransfer transfer{{desk.Screen, desk.MessageBoxes, desk.FileDialogs,
                                         desk.Screen, resolution, process, removal}};

    // The dialog, once it has been shown.
    image::frmGetScreenImage& Dialog() {
        return dynamic_cast<image::frmGetScreenImage&>(*desk.Screen.LastShown);
    }

    // What the user does in the dialog; the command that shows it follows.
    void Place() {
        desk.Screen.Then([this] {
            desk.Screen.Click(Dialog().picturePlacement);
            desk.Screen.Click(Dialog().okButton);
        });
    }
    void SaveTo(std::optional<std::string> file) {
        desk.FileDialogs.Choice = std::move(file);
        desk.Screen.Then([this] {
            desk.Screen.Click(Dialog().saveToFile);
            desk.Screen.Click(Dialog().okButton);
        });
    }
    void Cancel() {
        desk.Screen.Then([this] { desk.Screen.Click(Dialog().cancelButton); });
    }

    // What was asked of host and server meanwhile.
    std::string GetImage() {
        log.Take();
        transfer.TransferToExcel(excel, suite.Server, 77);
        EXPECT_TRUE(desk.Screen.ScriptIsDone());
        return log.Take();
    }
    std::string Boxes() { return desk.MessageBoxes.TakeShown(); }
    std::string Shows() {
        std::string text;
        for (const std::string& show : std::exchange(desk.Screen.Shows, {})) {
            text += (text.empty() ? "" : "; ") + show.substr(0, show.find(' '));
        }
        return text;
    }
};

}  // namespace krv::tests
