// StandardFilesFixture: a folder of its own below the temporary one, gone afterwards.
#pragma once

#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "common/Error.h"
#include "common/files/StandardFiles.h"

namespace krv::tests {

namespace fs = std::filesystem;

class StandardFilesFixture : public ::testing::Test {
 protected:
    StandardFilesFixture()
        : m_folder(fs::temp_directory_path() /
                   ("krv-files-" + std::to_string(std::random_device()()))) {
        fs::create_directories(m_folder);
    }
    ~StandardFilesFixture() override {
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

    files::StandardFiles Files;
    fs::path m_folder;
};

}  // namespace krv::tests
