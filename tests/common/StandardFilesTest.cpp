#include "common/files/StandardFiles.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#ifndef _WIN32
#include <sys/stat.h>
#include <unistd.h>
#endif

#include "common/Error.h"

namespace krv {
namespace {

namespace fs = std::filesystem;

// A folder of its own below the temporary one, gone afterwards.
class StandardFilesTest : public ::testing::Test {
 protected:
    StandardFilesTest()
        : m_folder(fs::temp_directory_path() /
                   ("krv-files-" + std::to_string(std::random_device()()))) {
        fs::create_directories(m_folder);
    }
    ~StandardFilesTest() override {
        std::error_code ignored;
        fs::remove_all(m_folder, ignored);
    }

    // The path of a name in UTF-8, in UTF-8.
    [[nodiscard]] std::string Path(const std::string& name) const {
        const auto text = (m_folder / std::u8string(name.begin(), name.end())).u8string();
        return {text.begin(), text.end()};
    }
    std::string Write(const std::string& name, const std::string& content) {
        std::ofstream(m_folder / std::u8string(name.begin(), name.end()), std::ios::binary)
            << content;
        return Path(name);
    }
    std::string ReadAll(const std::string& path, std::size_t block) {
        const auto file = Files.OpenToRead(path);
        std::string content;
        std::vector<std::byte> bytes(block);
        for (std::size_t count = block; count == block;) {
            count = file->Read(bytes);
            content.append(reinterpret_cast<const char*>(bytes.data()), count);
        }
        EXPECT_EQ(file->Read(bytes), 0U) << "the end stays the end";
        return content;
    }

    // "number: description" of what the operation throws.
    template <class Operation>
    static std::string ErrorOf(const Operation& operation) {
        try {
            operation();
        } catch (const Error& error) {
            return std::to_string(error.Number()) + ": " + error.Description();
        }
        return "no error";
    }
    // The error that size, date and opening all report.
    std::string CommonError(const std::string& path) {
        const std::string opening = ErrorOf([&] { Files.OpenToRead(path); });
        EXPECT_EQ(ErrorOf([&] { Files.FileSize(path); }), opening);
        EXPECT_EQ(ErrorOf([&] { Files.DateLastModified(path); }), opening);
        return opening;
    }

    StandardFiles Files;
    fs::path m_folder;
};

TEST_F(StandardFilesTest, reads_every_byte_as_it_is_in_blocks_of_any_size) {
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

TEST_F(StandardFilesTest, finds_names_in_every_script) {
    for (const char* name :
         {"plain.txt", "with blank.txt", "Gr\u00F6\u00DFe \u00E9.txt",
          "\u0441\u0438\u043D\u0443\u0441.txt", "\u6B63\u5F26.txt", "\U0001F600.txt"}) {
        const std::string path = Write(name, name);
        EXPECT_TRUE(Files.FileExists(path)) << name;
        EXPECT_EQ(Files.FileSize(path), std::string(name).size()) << name;
        EXPECT_EQ(ReadAll(path, 64), name);
    }
}

TEST_F(StandardFilesTest, a_missing_file_is_error_53_and_named) {
    for (const std::string& path :
         {Path("none.txt"), Path("none/none.txt"), Write("file.txt", "x") + "/below.txt"}) {
        EXPECT_FALSE(Files.FileExists(path)) << path;
        EXPECT_EQ(CommonError(path),
                  "53: File not found: \"" + path + "\".  Please check the name and the folder.");
    }
    for (const std::string path : {"", "\xFF\xFE.txt"}) {
        EXPECT_FALSE(Files.FileExists(path));
        EXPECT_EQ(CommonError(path).substr(0, 3), "53:");
    }
}

TEST_F(StandardFilesTest, a_folder_is_no_file) {
    const std::string path = Path("folder");
    fs::create_directory(m_folder / "folder");
    EXPECT_FALSE(Files.FileExists(path));
    EXPECT_EQ(CommonError(path).substr(0, 34 + path.size()),
              "75: Path/File access error: \"" + path + "\" is ");
}

TEST_F(StandardFilesTest, the_date_changes_with_the_file_and_only_then) {
    const std::string path = Write("data.txt", "1");
    const auto first = Files.DateLastModified(path);
    EXPECT_EQ(Files.DateLastModified(path), first);
    // A file may be written again right after it was read.
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    Write("data.txt", "2");
    EXPECT_NE(Files.DateLastModified(path), first);
}

#ifndef _WIN32
TEST_F(StandardFilesTest, pipes_and_devices_are_no_files_and_nobody_waits_for_them) {
    const std::string pipe = Path("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    for (const std::string& path : {pipe, std::string("/dev/zero")}) {
        EXPECT_FALSE(Files.FileExists(path)) << path;
        EXPECT_EQ(CommonError(path).substr(0, 3), "75:");
    }
}

TEST_F(StandardFilesTest, a_file_that_may_not_be_read_is_error_70) {
    const std::string path = Write("secret.txt", "1");
    ASSERT_EQ(chmod(path.c_str(), 0), 0);
    // The superuser may read everything, so somebody else tries.
    const bool isSuperuser = geteuid() == 0;
    constexpr uid_t Nobody = 65534;
    if (isSuperuser) {
        ASSERT_EQ(chmod(m_folder.c_str(), 0755), 0);
        ASSERT_EQ(seteuid(Nobody), 0);
    }
    const bool exists = Files.FileExists(path);
    const std::string error = ErrorOf([&] { Files.OpenToRead(path); });
    if (isSuperuser) {
        ASSERT_EQ(seteuid(0), 0);
    }
    EXPECT_TRUE(exists);
    EXPECT_EQ(error.substr(0, 22), "70: Permission denied:");
}

TEST_F(StandardFilesTest, a_failing_device_is_error_57) {
    // The kernel refuses to read address 0 of a process's memory.
    EXPECT_EQ(ErrorOf([&] { ReadAll("/proc/self/mem", 16); }).substr(0, 20),
              "57: Device I/O error");
}
#endif

}  // namespace
}  // namespace krv
