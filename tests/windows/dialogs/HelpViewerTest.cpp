#include <gtest/gtest.h>
#include <ole2.h>
#include <windows.h>

#include <string>

#include "windows/base/WideText.h"
#include "windows/desktop/CompiledHelp.h"
#include "windows/desktop/WindowsHelpViewer.h"

namespace krv::tests {
namespace {

// The file has one page, connect.html, and no contents.
std::string SampleFile() {
    std::string path = KRV_SOURCE_DIR "/tests/windows/dialogs/sample.chm";
    for (char& character : path) {
        character = character == '/' ? '\\' : character;
    }
    // Wine's name of what the programs were built on; Windows has one of its own.
    return path.front() == '\\' ? "Z:" + path : path;
}

TEST(WindowsHelpViewerTest, AMissingFileOpensNothing) {
    windows::WindowsHelpViewer viewer;
    for (const char* file : {"C:\\no such folder\\krvxltool.chm", "C:\\windows", ""}) {
        EXPECT_NO_THROW(viewer.ShowHelp(0, file, ports::HelpCommand::TableOfContents));
        EXPECT_NO_THROW(viewer.ShowTopic(0, file, "connect.html"));
    }
    EXPECT_EQ(GetModuleHandleW(L"hhctrl.ocx"), nullptr) << "loaded without need";
}

TEST(WindowsHelpViewerTest, KnowsAPageThatAFileLacks) {
    OleInitialize(nullptr);
    const std::wstring file = windows::ToWide(SampleFile());
    EXPECT_FALSE(windows::LacksTopic(file, L"connect.html"));
    EXPECT_TRUE(windows::LacksTopic(file, L"download.html"));
    EXPECT_FALSE(windows::LacksTopic(L"C:\\windows\\win.ini", L"download.html")) << "unknown";
}

TEST(WindowsHelpViewerTest, OpensAPageOrTheContents) {
    OleInitialize(nullptr);
    windows::WindowsHelpViewer viewer;
    HWND window = nullptr;
    for (const char* topic : {"connect.html", "download.html"}) {
        viewer.ShowTopic(0, SampleFile(), topic);
        window = FindWindowW(nullptr, L"Sample help");
        EXPECT_NE(window, nullptr) << topic;
    }
    DestroyWindow(window);
}

}  // namespace
}  // namespace krv::tests
