#include "tests/common/StandardFilesFixture.h"

#include <chrono>
#include <filesystem>
#include <string>
#include <thread>

namespace krv::tests {

using namespace files;
namespace {

using StandardFilesTest = StandardFilesFixture;

TEST_F(StandardFilesTest, ReadsEveryByteAsItIsInBlocksOfAnySize) {
    std::string content = "a\r\nb\n\x1A\x1A";
    content += std::string("\0\xFF\xEF\xBB\xBF", 5);
    for (int count = 0; count < 5000; ++count) {
        content += static_cast<char>(count * 7);
    }
    const std::string path = Write("data.bin", content);
    EXPECT_EQ(Files.FileSize(path), content.size());
    for (const std::size_t block : {1U, 2U, 7U, 4096U, 5012U, 262144U}) {
        EXPECT_EQ(ReadAll(path, block), content) << block;
    }
    EXPECT_EQ(ReadAll(Write("empty.txt", ""), 16), "");
}

TEST_F(StandardFilesTest, FindsNamesInEveryScript) {
    for (const char* name :
         {"plain.txt", "with blank.txt", "Gr\u00F6\u00DFe \u00E9.txt",
          "\u0441\u0438\u043D\u0443\u0441.txt", "\u6B63\u5F26.txt", "\U0001F600.txt"}) {
        const std::string path = Write(name, name);
        EXPECT_TRUE(Files.FileExists(path)) << name;
        EXPECT_EQ(Files.FileSize(path), std::string(name).size()) << name;
        EXPECT_EQ(ReadAll(path, 64), name);
    }
}

TEST_F(StandardFilesTest, AMissingFileIsError53AndNamed) {
    for (const std::string& path :
         {Path("none.txt"), Path("none/none.txt"), Write("file.txt", "x") + "/below.txt"}) {
        EXPECT_FALSE(Files.FileExists(path)) << path;
        EXPECT_EQ(CommonError(path),
                  "53 File not found: \"" + path + "\".  Please check the name and the folder.");
    }
    for (const std::string path : {"", "\xFF\xFE.txt"}) {
        EXPECT_FALSE(Files.FileExists(path));
        EXPECT_EQ(CommonError(path).substr(0, 3), "53 ");
    }
}

TEST_F(StandardFilesTest, AFolderIsNoFile) {
    const std::string path = Path("folder");
    std::filesystem::create_directory(m_folder.At("folder"));
    EXPECT_FALSE(Files.FileExists(path));
    EXPECT_EQ(CommonError(path).substr(0, 33 + path.size()),
              "75 Path/File access error: \"" + path + "\" is ");
}

TEST_F(StandardFilesTest, TheDateChangesWithTheFileAndOnlyThen) {
    const std::string path = Write("data.txt", "1");
    const auto first = Files.DateLastModified(path);
    EXPECT_EQ(Files.DateLastModified(path), first);
    // A file may be written again right after it was read.
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    Write("data.txt", "2");
    EXPECT_NE(Files.DateLastModified(path), first);
}

}  // namespace
}  // namespace krv::tests
