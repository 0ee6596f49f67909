#include "common/WholeFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/support/TemporaryFolder.h"

namespace krv::tests {
namespace {

std::string Write(const std::filesystem::path& target, std::string_view text) {
    return WriteWholeFile(target, std::as_bytes(std::span(text))).message();
}

TEST(WholeFile, IsThereWholeOrNotAtAll) {
    const TemporaryFolder folder;
    const std::string written = std::error_code().message();
    folder.Write("kept", "kept");
    folder.Write("a.part", "the user's own");
    std::filesystem::create_symlink(folder.At("kept"), folder.At("a"));
    EXPECT_EQ(Write(folder.At("a"), "first"), written);
    EXPECT_EQ(Write(folder.At("a"), "second"), written);
    EXPECT_EQ(folder.Content("a"), "second");
    EXPECT_EQ(folder.Content("kept"), "kept") << "a link isn't followed";
    EXPECT_EQ(folder.Content("a.part"), "the user's own");

    EXPECT_EQ(Write(folder.At("none") / "a", "lost"), "No such file or directory");
    std::filesystem::create_directory(folder.At("taken"));
    EXPECT_EQ(Write(folder.At("taken"), "lost"), "Is a directory");
    EXPECT_EQ(Write("/dev/full", "lost"), "No space left on device");
    EXPECT_EQ(Write("/dev/null", "gone"), written);
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
    {
        WholeFile never(folder.At("kept"));
        EXPECT_FALSE(never.Prepare({}));
    }
    EXPECT_EQ(folder.Content("kept"), "kept");
    EXPECT_EQ(folder.Names(), (std::set<std::string>{"a", "a.part", "kept", "taken"}));
}

}  // namespace
}  // namespace krv::tests
