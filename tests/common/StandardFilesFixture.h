// StandardFilesFixture: the files of this system, in a folder of their own.
#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "common/files/StandardFiles.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/TemporaryFolder.h"

namespace krv::tests {

class StandardFilesFixture : public ::testing::Test {
 protected:
    [[nodiscard]] std::string Path(const std::string& name) const { return m_folder.PathOf(name); }
    std::string Write(const std::string& name, const std::string& content) const {
        return m_folder.Write(name, content);
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
    // The error that size, date and opening all report.
    std::string CommonError(const std::string& path) {
        const std::string opening = ErrorOf([&] { return Files.OpenToRead(path); });
        EXPECT_EQ(ErrorOf([&] { return Files.FileSize(path); }), opening);
        EXPECT_EQ(ErrorOf([&] { return Files.DateLastModified(path); }), opening);
        return opening;
    }

    files::StandardFiles Files;
    TemporaryFolder m_folder;
};

}  // namespace krv::tests
